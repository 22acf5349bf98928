// This library of the application makes a call when it is unloaded or the process ends.

extern "C" void CallFromDestructor();

namespace {
__attribute__((destructor)) void Call() { CallFromDestructor(); }
}  // namespace
