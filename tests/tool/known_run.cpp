// This application makes the same calls once for each format of log. Its target is the scripted one.
//
//     known_run LIBRARY TARGET FOLDER
//
// FOLDER gets new.log, old.log and events.jsonl. One more run leaves both.log and both.jsonl there. Beside
// each run the application writes NAME.calls: a line of JSON for each call that it made. Handles, data and
// random bytes differ from run to run.
//
// In each run eight processes work at once, each with a main thread and two more. The last process ends
// within a call. A run with one process, which calls each exported function once and hands on only zeros,
// leaves every-new.log, every-old.log and every-events.jsonl.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/calls/scripted_target.h"

namespace {

constexpr int kProcesses = 8;
constexpr CK_SLOT_ID kSlot = 4;
constexpr CK_RV kNamelessResult = 0x80000999;

// A Run has the place of its notes, and the values that differ from run to run.
struct Run {
    std::string path;        // of the run's notes
    CK_ULONG handles = 0;    // the first handle
    unsigned char byte = 0;  // what vectors, signatures and random bytes are made of
    bool isLastProcess = false;
};
Run run;

void Note(const char* function, const std::string& rv) {
    static const int notes = open(run.path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    std::string line = "{\"function\":\"";
    line += function;
    line += "\",\"process\":" + std::to_string(getpid()) + ",\"rv\":" + rv + "}\n";
    if (write(notes, line.data(), line.size()) != static_cast<ssize_t>(line.size())) std::abort();
}

// --- The target

template <class Pointed>
Pointed* PointerIn(TargetWord word) {
    return reinterpret_cast<Pointed*>(word);
}

CK_RV AnswerOpenSession(const TargetWord* words) {
    static std::atomic<CK_ULONG> next{0};
    *PointerIn<CK_ULONG>(words[4]) = run.handles + next++;
    return CKR_OK;
}

CK_RV AnswerGetSlotList(const TargetWord* words) {
    auto* const slots = PointerIn<CK_ULONG>(words[1]);
    *PointerIn<CK_ULONG>(words[2]) = 2;
    if (slots != nullptr) slots[0] = 1, slots[1] = kSlot;
    return CKR_OK;
}

CK_RV AnswerGetMechanismList(const TargetWord* words) {
    auto* const mechanisms = PointerIn<CK_ULONG>(words[1]);
    *PointerIn<CK_ULONG>(words[2]) = 2;
    mechanisms[0] = CKM_RSA_PKCS, mechanisms[1] = CKM_AES_CBC;
    return CKR_OK;
}

CK_RV AnswerGetTokenInfo(const TargetWord* words) {
    auto* const info = PointerIn<CK_TOKEN_INFO>(words[1]);
    std::memset(info, ' ', sizeof *info);
    std::memcpy(info->label, "accounts", 8);
    std::memcpy(info->serialNumber, "0123456789abcdef", 16);
    info->flags = CKF_RNG | CKF_TOKEN_INITIALIZED;
    return CKR_OK;
}

CK_RV AnswerFindObjects(const TargetWord* words) {
    PointerIn<CK_ULONG>(words[1])[0] = run.handles + 30;
    *PointerIn<CK_ULONG>(words[3]) = 1;
    return CKR_OK;
}

CK_RV AnswerGetAttributeValue(const TargetWord* words) {
    auto* const attributes = PointerIn<CK_ATTRIBUTE>(words[2]);
    std::memcpy(attributes[0].pValue, "signing key", 11);
    attributes[0].ulValueLen = 11;
    attributes[1].ulValueLen = CK_UNAVAILABLE_INFORMATION;
    return CKR_ATTRIBUTE_SENSITIVE;
}

// Returns bytes of that size, or only the size.
CK_RV AnswerBytes(TargetWord bytes, TargetWord size, std::size_t count) {
    if (bytes != 0) std::memset(PointerIn<char>(bytes), run.byte + 3, count);
    *PointerIn<CK_ULONG>(size) = count;
    return CKR_OK;
}

CK_RV Answer(const std::string& function, const TargetWord* words) {
    if (function == "C_GetSlotList") return AnswerGetSlotList(words);
    if (function == "C_GetMechanismList") return AnswerGetMechanismList(words);
    if (function == "C_GetTokenInfo") return AnswerGetTokenInfo(words);
    if (function == "C_OpenSession") return AnswerOpenSession(words);
    if (function == "C_Login") return words[3] == 3 ? CKR_PIN_INCORRECT : CKR_OK;
    if (function == "C_FindObjects") return AnswerFindObjects(words);
    if (function == "C_GetAttributeValue") return AnswerGetAttributeValue(words);
    if (function == "C_Encrypt") return AnswerBytes(words[3], words[4], 16);
    if (function == "C_Sign") return words[2] == 20 ? CKR_DEVICE_ERROR : AnswerBytes(words[3], words[4], 32);
    if (function == "C_GenerateRandom") std::memset(PointerIn<char>(words[1]), run.byte + 5, words[2]);
    if (function == "C_Logout") return kNamelessResult;
    if (function == "C_DigestInit") {
        Note("C_DigestInit", "null");
        _exit(0);
    }
    return CKR_OK;
}

bool answersNothing = false;

// --- The application

void* library = nullptr;

void* Find(const char* name) { return dlsym(library, name); }
#define CALL(Name, ...) Note(#Name, std::to_string(reinterpret_cast<CK_##Name>(Find(#Name))(__VA_ARGS__)))

void Sign(CK_SESSION_HANDLE session, CK_ULONG lastSize) {
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    unsigned char data[32];
    std::memset(data, 0xd7, sizeof data);
    for (const CK_ULONG size : {CK_ULONG{32}, CK_ULONG{31}, lastSize}) {
        unsigned char signature[32];
        CK_ULONG signatureSize = sizeof signature;
        CALL(C_SignInit, session, &mechanism, run.handles + 30);
        // Memory that a call does not touch must be the same in each run.
        std::memset(signature, run.byte, sizeof signature);
        CALL(C_Sign, session, data, size, signature, &signatureSize);
    }
}

// Both threads live at once, because only such threads have different numbers. One works after the other: the
// old format has no threads, and the order of calls is to be the same in each run.
void SignInTwoThreads(CK_SESSION_HANDLE session) {
    std::barrier turns(2);
    std::thread one([&] {
        Sign(session, 30);
        turns.arrive_and_wait();
        turns.arrive_and_wait();
    });
    std::thread other([&] {
        turns.arrive_and_wait();
        Sign(session + 1, 20);
        turns.arrive_and_wait();
    });
    one.join();
    other.join();
}

void FindKey(CK_SESSION_HANDLE session) {
    CK_OBJECT_CLASS keyClass = CKO_PRIVATE_KEY;
    CK_BBOOL isOnToken = CK_TRUE;
    char label[] = "signing key";
    unsigned char id[] = {0x0a, 0xff};
    CK_ATTRIBUTE search[] = {{CKA_CLASS, &keyClass, sizeof keyClass},
                             {CKA_TOKEN, &isOnToken, 1},
                             {CKA_LABEL, label, 11},
                             {CKA_ID, id, 2}};
    CK_OBJECT_HANDLE found[10];
    CK_ULONG count = 0;
    CALL(C_FindObjectsInit, session, search, 4);
    CALL(C_FindObjects, session, found, 10, &count);
    CALL(C_FindObjectsFinal, session);
    char read[20];
    CK_ATTRIBUTE wanted[] = {{CKA_LABEL, read, sizeof read}, {CKA_PRIVATE_EXPONENT, nullptr, 0}};
    CALL(C_GetAttributeValue, session, found[0], wanted, 2);
}

void Encrypt(CK_SESSION_HANDLE session) {
    unsigned char vector[16];
    unsigned char data[16];
    std::memset(vector, run.byte + 9, sizeof vector);
    std::memset(data, 0xdb, sizeof data);
    CK_MECHANISM mechanism = {CKM_AES_CBC, vector, sizeof vector};
    CK_ULONG size = 0;
    unsigned char encrypted[16];
    CALL(C_EncryptInit, session, &mechanism, run.handles + 31);
    CALL(C_Encrypt, session, data, sizeof data, nullptr, &size);
    CALL(C_Encrypt, session, data, sizeof data, encrypted, &size);
    CALL(C_GenerateRandom, session, encrypted, sizeof encrypted);
}

void MakeCalls() {
    CK_ULONG slots[4];
    CK_ULONG slotCount = 4;
    CK_MECHANISM_TYPE mechanisms[4];
    CK_ULONG mechanismCount = 4;
    CK_TOKEN_INFO info;
    CK_SESSION_HANDLE session = 0;
    CK_SESSION_HANDLE other = 0;
    unsigned char pin[] = {'4', '7', '1', '1'};
    CALL(C_Initialize, nullptr);
    CALL(C_GetSlotList, CK_BBOOL{CK_TRUE}, nullptr, &slotCount);
    CALL(C_GetSlotList, CK_BBOOL{CK_TRUE}, slots, &slotCount);
    CALL(C_GetTokenInfo, kSlot, &info);
    CALL(C_GetMechanismList, kSlot, mechanisms, &mechanismCount);
    CALL(C_OpenSession, kSlot, CK_FLAGS{CKF_SERIAL_SESSION}, nullptr, nullptr, &session);
    CALL(C_OpenSession, kSlot, CK_FLAGS{CKF_SERIAL_SESSION}, nullptr, nullptr, &other);
    CALL(C_Login, session, CKU_USER, pin, 3);
    CALL(C_Login, session, CKU_USER, pin, 4);
    FindKey(session);
    Encrypt(session);
    SignInTwoThreads(session);
    CALL(C_Logout, session);
    if (run.isLastProcess) {
        CK_MECHANISM mechanism = {CKM_SHA_1, nullptr, 0};
        CALL(C_DigestInit, session, &mechanism);
    }
    CALL(C_CloseSession, session);
    CALL(C_CloseSession, other);
    CALL(C_Finalize, nullptr);
}

// Every function takes such words on the machines that run this test, whatever its prototype.
template <std::size_t>
using WordAt = TargetWord;

template <std::size_t... i>
CK_RV CallWithZeros(void* function, std::index_sequence<i...>) {
    return reinterpret_cast<CK_RV (*)(WordAt<i>...)>(function)(WordAt<i>{0}...);
}

void CallEveryFunction() {
    answersNothing = true;
    static const char* const kNames[] = {
#define C_EVERY_ROW(Name, ...) "C_" #Name,
#define CA_EVERY_ROW(Name) "CA_" #Name,
#include "functions/functions.def"
    };
    for (const char* const name : kNames) {
        const std::string text = name;
        // The library itself answers the question for the list.
        if (text == "C_GetFunctionList" || text == "CA_GetFunctionList") continue;
        const CK_RV rv = CallWithZeros(Find(name), std::make_index_sequence<20>());
        Note(name, std::to_string(rv));
    }
}

// --- The runs

void Load(const char* path) {
    library = dlopen(path, RTLD_NOW);
    if (library != nullptr) return;
    std::fprintf(stderr, "%s\n", dlerror());
    std::exit(1);
}

// A process that waits for something that never comes must end, too.
pid_t Fork() {
    const pid_t child = fork();
    if (child == 0) alarm(120);
    return child;
}

// Returns how many of the children did not end well.
int WaitFor(const std::vector<pid_t>& children) {
    int failed = 0;
    for (const pid_t child : children) {
        int status = 0;
        if (waitpid(child, &status, 0) != child || status != 0) ++failed;
    }
    return failed;
}

[[noreturn]] void MakeCallsInProcesses() {
    std::vector<pid_t> children;
    for (int i = 1; i < kProcesses; ++i) {
        const pid_t child = Fork();
        if (child == 0) {
            run.isLastProcess = i == kProcesses - 1;
            MakeCalls();
            _exit(0);
        }
        children.push_back(child);
    }
    MakeCalls();
    _exit(WaitFor(children));
}

struct Kind {
    const char* name;
    const char* keys;
    bool isEveryFunction;
};
constexpr Kind kKinds[] = {
    {"new", "Enabled = 1; NewFormat = 1; File = @/new.log;", false},
    {"old", "Enabled = 1; NewFormat = 0; File = @/old.log;", false},
    {"events", "Enabled = 0; Events = @/events.jsonl;", false},
    {"both", "Enabled = 1; NewFormat = 1; File = @/both.log; Events = @/both.jsonl;", false},
    {"every-new", "Enabled = 1; NewFormat = 1; File = @/every-new.log;", true},
    {"every-old", "Enabled = 1; NewFormat = 0; File = @/every-old.log;", true},
    {"every-events", "Enabled = 0; Events = @/every-events.jsonl;", true},
};

void WriteConfiguration(const std::string& folder, const std::string& target, const Kind& kind) {
    std::string keys = kind.keys;
    for (std::size_t at = keys.find('@'); at != keys.npos; at = keys.find('@')) keys.replace(at, 1, folder);
    for (std::size_t at = keys.find("; "); at != keys.npos; at = keys.find("; "))
        keys.replace(at, 2, ";\n   ");
    std::ofstream(folder + "/Wendrafil.conf")
        << "CkLog2 = {\n   LibUNIX64 = " << target << ";\n   Error = " << folder
        << "/error.log;\n   Announce = 0;\n   " << keys << "\n}\n";
}

}  // namespace

CK_RV AnswerCall(const char* function, const TargetWord* arguments, std::size_t) {
    return answersNothing ? CKR_OK : Answer(function, arguments);
}
void TargetIsLoaded() {}
void TargetIsUnloaded() {}

int main(int count, char** words) {
    if (count != 4) return 2;
    const std::string folder = words[3];
    setenv("WendrafilConfigurationPath", folder.c_str(), 1);
    int failed = 0;
    for (const Kind& kind : kKinds) {
        WriteConfiguration(folder, words[2], kind);
        run.path = folder + '/' + kind.name + ".calls";
        run.handles += 1000;
        run.byte = static_cast<unsigned char>(run.byte + 20);
        const pid_t child = Fork();
        if (child == 0) {
            Load(words[1]);
            if (!kind.isEveryFunction) MakeCallsInProcesses();
            CallEveryFunction();
            _exit(0);
        }
        failed += WaitFor({child});
    }
    return failed;
}
