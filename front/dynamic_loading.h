// These functions use the dynamic loader and return 1 for success and 0 for failure. Any thread may call
// them.
#pragma once

#include <cstddef>

// Calls dlopen with RTLD_NOW. Sets `*handle` only on success. Null arguments fail.
int LoadDynamicLibrary(const char* path, void** handle);

// Calls dlclose. Always returns 1.
int UnloadDynamicLibrary(void* handle);

// Calls dlsym. A symbol that is not there sets `*address` to null and is announced on standard output, unless
// `silent` is not 0. Null `name` or `address` fail.
int LoadDynamicFunctionSilent(void* handle, const char* name, void** address, unsigned silent);

// Copies what the loader says of its latest failure, or "Error during dlerror() call" if it says nothing.
// `size` is the size of the buffer and counts the terminator. If the text and its terminator fit, `*length`
// becomes the length of the text. Otherwise `size` - 1 characters and a terminator are copied. COMPAT:
// `*length` becomes `size` then. Null arguments fail.
int RetrieveLastErrorString(char* buffer, std::size_t size, std::size_t* length);

namespace ckscribe {

// Prints "Failed to load function 'NAME'." and a line feed on standard output. Prints only the first 270
// characters of a longer name.
void AnnounceMissingFunction(const char* name);

}  // namespace ckscribe
