// This program loads PKCS#11 modules for the tests of `ckscribe run`:
//
//     application VERB [MODULE...]
//
// It says on standard output what it sees, and ends with 0 if all went as it should.

#include <dlfcn.h>
#include <fcntl.h>
#include <p11-kit/pkcs11.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace {

[[noreturn]] void Fail(const std::string& why) {
    std::printf("FAILED: %s\n", why.c_str());
    std::exit(99);
}

CK_FUNCTION_LIST* Load(const char* module) {
    void* const handle = dlopen(module, RTLD_NOW);
    if (handle == nullptr) Fail(dlerror());
    const auto get = reinterpret_cast<CK_C_GetFunctionList>(dlsym(handle, "C_GetFunctionList"));
    CK_FUNCTION_LIST* list = nullptr;
    if (get == nullptr || get(&list) != CKR_OK) Fail(std::string("no function list from ") + module);
    return list;
}

void CountSlots(const char* module) {
    CK_FUNCTION_LIST* const list = Load(module);
    CK_ULONG count = 0;
    if (list->C_Initialize(nullptr) != CKR_OK || list->C_GetSlotList(CK_FALSE, nullptr, &count) != CKR_OK)
        Fail(std::string("no slots from ") + module);
    std::printf("%lu slots\n", count);
    list->C_Finalize(nullptr);
}

CK_RV Sign(CK_FUNCTION_LIST* list, const char* text) {
    std::string data = text;
    CK_BYTE signature[5];
    CK_ULONG size = sizeof signature;
    return list->C_Sign(31, reinterpret_cast<CK_BYTE*>(data.data()), data.size(), signature, &size);
}

void SignInThreads(const char* module) {
    CK_FUNCTION_LIST* const list = Load(module);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([list] {
            for (int call = 0; call < 250; ++call)
                if (Sign(list, "well") != CKR_OK) Fail("a signature");
        });
    for (std::thread& each : threads) each.join();
}

// Forks a child that signs and ends, and another that becomes this program anew and counts slots.
void ForkAndExecute(const char* self, const char* module) {
    CK_FUNCTION_LIST* const list = Load(module);
    Sign(list, "mother");
    std::fflush(stdout);
    if (fork() == 0) {
        Sign(list, "son");
        _exit(0);
    }
    if (fork() == 0) {
        execl(self, self, "slots", module, nullptr);
        _exit(98);
    }
    int status = 0;
    while (wait(&status) > 0)
        if (status != 0) Fail("a child");
}

// Ends the process at once, and leaves a process in a session of its own that signs a little later.
void LeaveADaemon(const char* module, const char* signedText) {
    if (fork() != 0) return;
    setsid();
    usleep(400'000);
    Sign(Load(module), signedText);
    _exit(0);
}

void SayWhatIsInherited() {
    for (char** each = environ; *each != nullptr; ++each) std::printf("environment %s\n", *each);
    for (int descriptor = 0; descriptor < 256; ++descriptor)
        if (fcntl(descriptor, F_GETFD) >= 0) std::printf("descriptor %d\n", descriptor);
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    for (int signal = 1; signal < 32; ++signal) {
        struct sigaction action;
        sigaction(signal, nullptr, &action);
        std::printf("signal %d %s %s\n", signal, action.sa_handler == SIG_IGN ? "ignored" : "default",
                    sigismember(&mask, signal) == 1 ? "blocked" : "open");
    }
    std::printf("group %d\n", getpgrp() == getpid());
}

// Does what a server does that begins as root. Such a server loads something else at run time, and the module
// as another user.
void BecomeNobody() {
    constexpr unsigned kNobody = 65534;
    dlopen("/no/such/library.so", RTLD_NOW);
    if (setgid(kNobody) != 0 || setuid(kNobody) != 0) Fail("to become another user");
}

volatile std::sig_atomic_t interrupts = 0;

void SurviveAnInterrupt() {
    struct sigaction action = {};
    action.sa_handler = [](int) { interrupts = interrupts + 1; };
    sigaction(SIGTERM, &action, nullptr);
    std::printf("ready\n");
    std::fflush(stdout);
    while (interrupts == 0) usleep(1000);
    std::printf("interrupted\n");
}

}  // namespace

int main(int count, char** words) {
    if (count < 2) return 97;
    const std::string verb = words[1];
    for (int i = 2; i < count; ++i) {
        if (verb == "slots") CountSlots(words[i]);
        if (verb == "threads") SignInThreads(words[i]);
        if (verb == "fork") ForkAndExecute(words[0], words[i]);
        if (verb == "daemon") LeaveADaemon(words[i], "daemon");
        if (verb == "crashing-daemon") LeaveADaemon(words[i], "crash");
        if (verb == "crash") Sign(Load(words[i]), "crash");
        if (verb == "error" && Sign(Load(words[i]), "error") != CKR_DEVICE_ERROR) Fail("an error");
        if (verb == "hang") {
            CK_SLOT_ID slot = 0;
            Load(words[i])->C_WaitForSlotEvent(0, &slot, nullptr);
        }
        if (verb == "dropped") {
            BecomeNobody();
            CountSlots(words[i]);
        }
        if (verb == "dropped-after-loading") {
            if (dlopen(words[i], RTLD_NOW) == nullptr) Fail(dlerror());
            BecomeNobody();
            CountSlots(words[i]);
        }
        if (verb == "cleared") {
            clearenv();
            CountSlots(words[i]);
        }
    }
    if (verb == "inherited") SayWhatIsInherited();
    if (verb == "interrupted") SurviveAnInterrupt();
    return verb == "seven" ? 7 : 0;
}
