#include "front/dynamic_loading.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstring>

#include "host/standard_output.h"

int LoadDynamicLibrary(const char* path, void** handle) {
    if (path == nullptr || handle == nullptr) return 0;
    void* const loaded = dlopen(path, RTLD_NOW);
    if (loaded == nullptr) return 0;
    *handle = loaded;
    return 1;
}

int UnloadDynamicLibrary(void* handle) {
    dlclose(handle);
    return 1;
}

int LoadDynamicFunctionSilent(void* handle, const char* name, void** address, unsigned silent) {
    if (name == nullptr || address == nullptr) return 0;
    *address = dlsym(handle, name);
    if (*address != nullptr) return 1;
    if (silent == 0) ckscribe::AnnounceMissingFunction(name);
    return 0;
}

void ckscribe::AnnounceMissingFunction(const char* name) {
    char line[300];
    const int length = std::snprintf(line, sizeof line, "Failed to load function '%.270s'.\n", name);
    ckscribe::WriteToStandardOutput({line, static_cast<std::size_t>(length)});
}

int RetrieveLastErrorString(char* buffer, std::size_t size, std::size_t* length) {
    if (buffer == nullptr || length == nullptr) return 0;
    const char* text = dlerror();
    if (text == nullptr) text = "Error during dlerror() call";
    const std::size_t textLength = std::strlen(text);
    if (size > textLength) {
        std::memcpy(buffer, text, textLength + 1);
        *length = textLength;
        return 1;
    }
    if (size != 0) {
        std::memcpy(buffer, text, size);
        buffer[size - 1] = '\0';
    }
    *length = size;
    return 1;
}
