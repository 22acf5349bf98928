// This target library answers a few functions with CKR_OK, also before it is initialised. Macros make
// variants of it that go wrong.

#include <p11-kit/pkcs11.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#define EXPORTED extern "C" __attribute__((visibility("default")))
#ifdef LIST_ONLY
#define FUNCTION extern "C" __attribute__((visibility("hidden")))
#else
#define FUNCTION EXPORTED
#endif

namespace {

void Fill(CK_UTF8CHAR* text, std::size_t size, const char* with) {
    std::memset(text, ' ', size);
    std::memcpy(text, with, std::strlen(with));
}

}  // namespace

#ifdef CRASHES
__attribute__((constructor)) static void Crash() { std::abort(); }
#endif
#ifdef HANGS
__attribute__((constructor)) static void Hang() {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, nullptr);
    for (;;) pause();
}
#endif
#ifdef PRINTS
__attribute__((constructor)) static void Print() {
    std::puts("Loading the fake target.");
    std::fflush(stdout);
}
#endif
#ifdef STARTS_PROCESS
// The new process lives on, and holds all descriptors of this one. This process goes on when the new one has
// written down its number.
__attribute__((constructor)) static void StartProcess() {
    int ends[2];
    char said;
    if (pipe(ends) != 0 || fork() != 0) {
        close(ends[1]);
        if (read(ends[0], &said, 1) != 0) std::abort();
        close(ends[0]);
        return;
    }
    FILE* const file = std::fopen(std::getenv("FILE_FOR_PROCESS_NUMBER"), "w");
    std::fprintf(file, "%d", getpid());
    std::fclose(file);
    close(ends[1]);
    for (;;) pause();
}
#endif
#ifdef STARTS_LIBRARY
EXPORTED void CkLogSpecialInitialize();
#endif
#ifdef LACKS_SYMBOL
EXPORTED void symbol_that_nobody_defines();
EXPORTED void Needs() { symbol_that_nobody_defines(); }
#endif

FUNCTION CK_RV C_Initialize(void*) {
#ifdef FAILS_TO_INITIALIZE
    return CKR_DEVICE_ERROR;
#else
    return CKR_OK;
#endif
}
FUNCTION CK_RV C_Finalize(void*) { return CKR_OK; }
FUNCTION CK_RV C_GetInfo(CK_INFO* info) {
#ifdef STARTS_LIBRARY
    CkLogSpecialInitialize();
#endif
    *info = {};
    info->cryptokiVersion = {2, 40};
    Fill(info->manufacturerID, sizeof info->manufacturerID, "The Makers");
    Fill(info->libraryDescription, sizeof info->libraryDescription, "Fake target");
    info->libraryVersion = {3, 7};
    return CKR_OK;
}
FUNCTION CK_RV C_OpenSession(CK_SLOT_ID, CK_FLAGS, void*, CK_NOTIFY, CK_SESSION_HANDLE* session) {
    *session = 5;
    return CKR_OK;
}
FUNCTION CK_RV C_Logout(CK_SESSION_HANDLE) { return CKR_OK; }
FUNCTION CK_RV C_DestroyObject(CK_SESSION_HANDLE, CK_OBJECT_HANDLE) { return CKR_OK; }
FUNCTION CK_RV C_SignFinal(CK_SESSION_HANDLE, CK_BYTE*, CK_ULONG* size) {
    *size = 0;
    return CKR_OK;
}

#ifndef NO_LIST
EXPORTED CK_RV C_GetFunctionList(CK_FUNCTION_LIST** list) {
    static CK_FUNCTION_LIST functions;
    functions.version = {2, 40};
    functions.C_Initialize = C_Initialize;
    functions.C_Finalize = C_Finalize;
    functions.C_GetInfo = C_GetInfo;
    functions.C_OpenSession = C_OpenSession;
    functions.C_Logout = C_Logout;
    functions.C_DestroyObject = C_DestroyObject;
    functions.C_SignFinal = C_SignFinal;
    *list = &functions;
    return CKR_OK;
}
#endif
