// Says how this library reaches its thread-local objects.
#pragma once

#include <stdlib.h>  // says which C library this is

// An object with this attribute is part of every thread from the beginning: access needs no call and no
// memory. A C library must keep room for libraries that are loaded late; elsewhere dlopen refuses such a
// library.
#if defined(__GLIBC__) || defined(__FreeBSD__)
#define CKSCRIBE_INITIAL_EXEC [[gnu::tls_model("initial-exec")]]
#else
#define CKSCRIBE_INITIAL_EXEC
#endif
