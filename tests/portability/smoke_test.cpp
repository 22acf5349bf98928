// smoke_test LIBRARY TARGET new|old tests the library in a fresh process, over a target of a few functions.
// It loads the library, calls it with good and with forbidden arguments, and unloads it. Several threads, a
// thread that is cancelled and a forked child call it. Every result and the number of records must be right.
// The test prints what is not.

#include <dlfcn.h>
#include <p11-kit/pkcs11.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int kThreads = 4;
constexpr int kCallsOfAThread = 500;

void* library = nullptr;
bool isNewFormat = false;

void Demand(bool isTrue, const char* sentence) {
    if (isTrue) return;
    std::fprintf(stderr, "smoke_test: %s\n", sentence);
    std::_Exit(EXIT_FAILURE);
}

template <class Function>
Function* Exported(const char* name) {
    void* const address = dlsym(library, name);
    Demand(address != nullptr, name);
    return reinterpret_cast<Function*>(address);
}

void WriteConfiguration(const std::string& directory, const char* target) {
    std::ofstream(directory + "/Wendrafil.conf")
        << "CkLog2 = {\n   LibUNIX64 = " << target << ";\n   Enabled = 1;\n   NewFormat = " << isNewFormat
        << ";\n   Announce = 0;\n   File = " << directory << "/log.txt;\n   Error = " << directory
        << "/error.txt;\n}\n";
}

std::string Contents(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
    return count;
}

// Makes one call with two records. The signature is the data, turned around.
void SignOnce() {
    static const auto sign =
        Exported<CK_RV(CK_SESSION_HANDLE, CK_BYTE*, CK_ULONG, CK_BYTE*, CK_ULONG*)>("C_Sign");
    CK_BYTE data[] = {'s', 'm', 'o', 'k', 'e'};
    CK_BYTE signature[8] = {};
    CK_ULONG length = sizeof signature;
    Demand(sign(7, data, sizeof data, signature, &length) == CKR_OK, "C_Sign fails");
    Demand(length == sizeof data && std::memcmp(signature, "ekoms", length) == 0,
           "C_Sign gives another signature");
}

void CallWithForbiddenArguments() {
    const auto create =
        Exported<CK_RV(CK_SESSION_HANDLE, CK_ATTRIBUTE*, CK_ULONG, CK_OBJECT_HANDLE*)>("C_CreateObject");
    auto* const nowhere = reinterpret_cast<CK_ATTRIBUTE*>(16);
    CK_OBJECT_HANDLE object = 0;
    Demand(create(7, nowhere, 3, &object) == CKR_ATTRIBUTE_VALUE_INVALID, "a bad pointer changes the result");
    Demand(create(7, nullptr, ~0UL, nullptr) == CKR_ATTRIBUTE_VALUE_INVALID,
           "a null pointer changes the result");
}

void CallVendorFunction() {
    const auto getFpv = Exported<CK_RV(CK_SLOT_ID, CK_ULONG*)>("CA_GetFPV");
    CK_ULONG value = 0;
    Demand(getFpv(3, &value) == CKR_OK && value == 103, "CA_GetFPV gives another value");
}

void CallFromThreads() {
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([] {
            for (int call = 0; call < kCallsOfAThread; ++call) SignOnce();
        });
    }
    for (std::thread& thread : threads) thread.join();
}

void* WaitForEvent(void*) {
    int type = 0;
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, &type);
    CK_SLOT_ID slot = 0;
    Exported<CK_RV(CK_FLAGS, CK_SLOT_ID*, void*)>("C_WaitForSlotEvent")(0, &slot, nullptr);
    return nullptr;
}

// The thread makes logged calls without a pause: a cancellation must reach it there, too.
void* SignForEver(void*) {
    int type = 0;
    pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, &type);
    for (;;) SignOnce();
}

void CancelThread(void* (*body)(void*), const char* sentence) {
    pthread_t thread;
    Demand(pthread_create(&thread, nullptr, body, nullptr) == 0, "no thread");
    usleep(50'000);
    pthread_cancel(thread);
    void* result = nullptr;
    pthread_join(thread, &result);
    Demand(result == PTHREAD_CANCELED, sentence);
}

void CallFromChild() {
    const pid_t child = fork();
    if (child == 0) {
        SignOnce();
        std::_Exit(EXIT_SUCCESS);
    }
    int status = -1;
    waitpid(child, &status, 0);
    Demand(status == 0, "the forked child fails");
}

}  // namespace

int main(int argc, char** argv) {
    Demand(argc == 4, "usage: smoke_test LIBRARY TARGET new|old");
    isNewFormat = std::strcmp(argv[3], "new") == 0;
    char directory[] = "/tmp/ckscribe-smoke.XXXXXX";
    Demand(mkdtemp(directory) != nullptr, "no directory");
    WriteConfiguration(directory, argv[2]);
    setenv("WendrafilConfigurationPath", directory, 1);

    library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) std::fprintf(stderr, "%s\n", dlerror());
    Demand(library != nullptr, "the library cannot be loaded");

    Demand(Exported<CK_RV(void*)>("C_Initialize")(nullptr) == CKR_OK, "C_Initialize fails");
    // No number of a record reads like this PIN.
    CK_UTF8CHAR pin[] = {'Q', '!', 'Z', '~'};
    Demand(Exported<CK_RV(CK_SESSION_HANDLE, CK_USER_TYPE, CK_UTF8CHAR*, CK_ULONG)>("C_Login")(
               7, CKU_USER, pin, sizeof pin) == CKR_PIN_INCORRECT,
           "C_Login changes the result");
    CallWithForbiddenArguments();
    CallVendorFunction();
    CallFromThreads();
    CallFromChild();
    const std::string log = Contents(std::string(directory) + "/log.txt");
    const std::size_t starts = Count(log, isNewFormat ? ":STRT" : ", Start)");
    const std::size_t ends = Count(log, isNewFormat ? ":FINI" : ", End, ");
    constexpr std::size_t kExpected = 1 + 1 + 2 + 1 + kThreads * kCallsOfAThread + 1;
    if (starts != kExpected || ends != kExpected)
        std::fprintf(stderr, "%zu starts, %zu ends, expected %zu\n", starts, ends, kExpected);
    Demand(starts == kExpected && ends == kExpected, "records are missing");
    Demand(Count(log, "Q!Z~") == 0, "the log shows the PIN");
    Demand(Contents(std::string(directory) + "/error.txt").empty(), "the error file is not empty");

    CancelThread(WaitForEvent, "a thread that waits in the target is not cancelled");
    CancelThread(SignForEver, "a thread that makes calls is not cancelled");
    SignOnce();
    Demand(Exported<CK_RV(void*)>("C_Finalize")(nullptr) == CKR_OK, "C_Finalize fails");
    Demand(dlclose(library) == 0, "the library cannot be unloaded");

    for (const char* name : {"/log.txt", "/error.txt", "/Wendrafil.conf"})
        unlink((std::string(directory) + name).c_str());
    rmdir(directory);
    std::puts("well");
    return EXIT_SUCCESS;
}
