// Prints what a process may believe of its environment: the value of the variable that is named, or "(none)".

#include <cstdio>

#include "util/environment.h"

int main(int, char** argv) {
    const char* value = TrustedEnvironment(argv[1]);
    std::puts(value != nullptr ? value : "(none)");
}
