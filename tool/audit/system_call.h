// Makes system calls without the C library. They do not change errno. Results are negative for errors.
//
// If an audit library needs a C library, the dynamic loader gives it one of its own: at the start of each
// process it maps and relocates one more file. An audit library without a C library saves that cost.
#pragma once

#include <fcntl.h>
#include <stddef.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>

namespace ckscribe {

#if defined(__x86_64__)
inline long SystemCall(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0, long f = 0) {
    register long r10 asm("r10") = d;
    register long r8 asm("r8") = e;
    register long r9 asm("r9") = f;
    long result;
    asm volatile("syscall"
                 : "=a"(result)
                 : "a"(number), "D"(a), "S"(b), "d"(c), "r"(r10), "r"(r8), "r"(r9)
                 : "rcx", "r11", "memory");
    return result;
}
#elif defined(__aarch64__)
inline long SystemCall(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0, long f = 0) {
    register long x8 asm("x8") = number;
    register long x0 asm("x0") = a;
    register long x1 asm("x1") = b;
    register long x2 asm("x2") = c;
    register long x3 asm("x3") = d;
    register long x4 asm("x4") = e;
    register long x5 asm("x5") = f;
    asm volatile("svc 0" : "+r"(x0) : "r"(x8), "r"(x1), "r"(x2), "r"(x3), "r"(x4), "r"(x5) : "memory");
    return x0;
}
#else
#error "System calls of this processor are not known here; build without the audit library."
#endif

inline int OpenFile(const char* path, int flags) {
    return static_cast<int>(
        SystemCall(SYS_openat, AT_FDCWD, reinterpret_cast<long>(path), flags | O_CLOEXEC, 0));
}

inline void CloseFile(int descriptor) { SystemCall(SYS_close, descriptor); }

inline long ReadFile(int descriptor, void* buffer, size_t size) {
    return SystemCall(SYS_read, descriptor, reinterpret_cast<long>(buffer), static_cast<long>(size));
}

inline long WriteFile(int descriptor, const void* text, size_t size) {
    return SystemCall(SYS_write, descriptor, reinterpret_cast<long>(text), static_cast<long>(size));
}

inline bool StatusOf(int descriptor, struct stat& status) {
    return SystemCall(SYS_fstat, descriptor, reinterpret_cast<long>(&status)) == 0;
}

inline bool StatusOf(const char* path, struct stat& status) {
    return SystemCall(SYS_newfstatat, AT_FDCWD, reinterpret_cast<long>(path), reinterpret_cast<long>(&status),
                      0) == 0;
}

// Maps the whole file for reading. Returns null on failure.
inline const void* MapFile(int descriptor, size_t size) {
    const long address =
        SystemCall(SYS_mmap, 0, static_cast<long>(size), PROT_READ, MAP_PRIVATE, descriptor, 0);
    return address < 0 && address > -4096 ? nullptr : reinterpret_cast<const void*>(address);
}

inline void UnmapFile(const void* address, size_t size) {
    SystemCall(SYS_munmap, reinterpret_cast<long>(address), static_cast<long>(size));
}

inline long ProcessNumber() { return SystemCall(SYS_getpid); }

}  // namespace ckscribe
