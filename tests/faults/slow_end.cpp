// This library takes its time at the end of the process, after the loader has run the destructors of all
// libraries. Functions that are registered before the program starts are called last.

extern "C" int __cxa_atexit(void (*function)(void*), void* argument, void* library);
extern "C" void WaitForMoreCalls();

namespace {

__attribute__((constructor)) void Register() {
    __cxa_atexit([](void*) { WaitForMoreCalls(); }, nullptr, nullptr);
}

}  // namespace
