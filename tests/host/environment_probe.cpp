// This program prints what a process may believe of its environment: the value of the named variable, or
// "(none)".

#include <cstdio>

#include "host/environment.h"

// A search for leaks traces the process, which a set-user-ID program does not allow.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options() {
    return "detect_leaks=0";
}

int main(int, char** argv) {
    const char* value = ckscribe::TrustedEnvironment(argv[1]);
    std::puts(value != nullptr ? value : "(none)");
}
