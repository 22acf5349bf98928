// The dynamic loader, in functions that give 1 for success and 0 for failure.
#pragma once

#include <cstddef>

// dlopen with RTLD_NOW. `*handle` is set on success alone; null arguments fail.
int LoadDynamicLibrary(const char* path, void** handle);

// dlclose; always 1.
int UnloadDynamicLibrary(void* handle);

// dlsym. `*address` receives null for a symbol that is not there, which is announced on standard output
// unless `silent` is non-zero. Null `name` or `address` fail.
int LoadDynamicFunctionSilent(void* handle, const char* name, void** address, unsigned silent);

// The line on standard output, without the end of a name of more than 270 characters.
void AnnounceMissingFunction(const char* name);

// The loader's text about the latest failure, or "Error during dlerror() call" when it has none. `size`
// counts the terminator. A text that leaves room for it is copied and `*length` becomes its length; of any
// other, `size` bytes are copied, the last made NUL, and `*length` becomes `size`; kept, a text of `size`
// characters loses its last. Null arguments fail.
int RetrieveLastErrorString(char* buffer, std::size_t size, std::size_t* length);
