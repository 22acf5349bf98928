// This application may have more rights than its caller: raised_privileges_probe LIBRARY [drop]
//
// It makes one call of the library and prints lines. One line says whether the system says that the process
// has rights its caller lacks (1 or 0). Each other line names a configuration file that is opened. With
// "drop" the application gives up those rights before the call.

#include <dlfcn.h>
#include <fcntl.h>
#include <p11-kit/pkcs11.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <string_view>

#if defined(__FreeBSD__)
static bool IsSecure() { return issetugid() != 0; }
#else
#include <sys/auxv.h>
static bool IsSecure() { return getauxval(AT_SECURE) != 0; }
#endif

#define EXPORTED extern "C" __attribute__((visibility("default")))

// A search for leaks traces the process, which a set-user-ID program does not allow.
EXPORTED const char* __asan_default_options() { return "detect_leaks=0"; }

// The library opens its files through this function.
EXPORTED int open(const char* path, int access, ...) {
    va_list rest;
    va_start(rest, access);
    const mode_t mode = (access & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(rest, int)) : 0;
    va_end(rest);
    if (std::string_view(path).ends_with("/Wendrafil.conf")) std::puts(path);
    return openat(AT_FDCWD, path, access, mode);
}

int main(int count, char** arguments) {
    std::printf("%d\n", IsSecure() ? 1 : 0);
    if (count > 2 && (setgid(getgid()) != 0 || setuid(getuid()) != 0)) return 2;
    void* const library = dlopen(arguments[1], RTLD_NOW);
    if (library == nullptr) return 3;
    const auto logout = reinterpret_cast<CK_C_Logout>(dlsym(library, "C_Logout"));
    logout(1);
    return 0;
}
