// The sanitizers ask these functions for their options in every test program. Without sanitizers nothing
// calls them.

#define SANITIZER_OPTIONS extern "C" __attribute__((visibility("default"))) const char*

// An allocation that cannot be had fails as it does without a sanitizer.
//
// A cancelled thread leaves its frames marked as in use: nothing unwinds the marks with them. Whatever runs
// there later, the sanitizer's own functions too, would meet those marks. Therefore variables live on a stack
// of the sanitizer's, as the search for their use after a return has it, and threads have no signal stack.
SANITIZER_OPTIONS __asan_default_options() {
    return "allocator_may_return_null=1:detect_stack_use_after_return=1:use_sigaltstack=0";
}

// A process whose other threads are in calls ends at once. As a default the sanitizer lets such a process go
// on for a second.
SANITIZER_OPTIONS __tsan_default_options() { return "allocator_may_return_null=1:atexit_sleep_ms=0"; }
