// How the sanitizers run in every test program; without them these functions stay uncalled.

#define SANITIZER_OPTIONS extern "C" __attribute__((visibility("default"))) const char*

// An allocation that cannot be had fails as it does without a sanitizer. No signal stack: a cancelled thread
// leaves its frames marked as in use, and the clean-up of such a stack at its end would meet those marks.
SANITIZER_OPTIONS __asan_default_options() { return "allocator_may_return_null=1:use_sigaltstack=0"; }
SANITIZER_OPTIONS __tsan_default_options() { return "allocator_may_return_null=1"; }
