// A test that replaces a function of the C library must declare it as the system's header does. glibc
// declares its functions `noexcept` for C++; FreeBSD and musl do not.
#pragma once

#include <climits>  // defines __GLIBC__ where it is glibc's

#ifdef __GLIBC__
#define NOEXCEPT_OF_SYSTEM noexcept
#else
#define NOEXCEPT_OF_SYSTEM
#endif
