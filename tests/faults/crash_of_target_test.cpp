// A target dies inside a call. The log then says what the target was asked to do.

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"

namespace {

CK_RV Segfault(const char*, const TargetWord*, std::size_t) {
    std::raise(SIGSEGV);
    return CKR_OK;
}
CK_RV ReadUnmappedMemory(const char*, const TargetWord*, std::size_t) {
    volatile char* const page =
        static_cast<char*>(mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    return static_cast<CK_RV>(*page);
}
CK_RV Abort(const char*, const TargetWord*, std::size_t) { std::abort(); }
CK_RV Kill(const char*, const TargetWord*, std::size_t) {
    kill(getpid(), SIGKILL);
    return CKR_OK;
}
CK_RV LeaveAtOnce(const char*, const TargetWord*, std::size_t) { _exit(7); }
CK_RV Leave(const char*, const TargetWord*, std::size_t) { std::exit(8); }

// A LastCall is the call in which the target ends the process, with what its start record says.
struct LastCall {
    void (*make)(Library& library);
    const char* function;
    const char* newChildren;
    const char* oldChildren;
    const char* eventFunction;
    const char* eventChildren;
};

const LastCall kLastCalls[] = {
    {[](Library& library) {
         CK_BYTE parameter[] = {'v', 'a', 'l', 'u', 'e'};
         CK_MECHANISM mechanism = {CKM_RSA_PKCS, parameter, sizeof parameter};
         library->C_SignInit(4321, &mechanism, 8765);
     },
     "Sign_Init", "Sesn=4321 Mech=(CKM_RSA_PKCS,\"value\") Obj=8765 ",
     "\n   SessionHandle(0x10e1);\n   MechanismCKM_RSA_PKCS,Value(SimpleText\"value\"));\n"
     "   ObjectHandle(0x223d);",
     "SignInit", "=4321  =8765 "},
    {[](Library& library) { library.Exported<CK_RV(CK_ULONG, CK_ULONG)>("CA_HAInit")(4321, 8765); }, "HAInit",
     "Sesn=4321 Obj=8765 ", "\n   SessionHandle(0x10e1);\n   ObjectHandle(0x223d);", "HAInit",
     "=4321 =8765 "},
    {[](Library& library) {
         CK_FUNCTION_LIST* list = nullptr;
         library->C_GetFunctionList(&list);
     },
     "GetFunctionList", "", "", "GetFunctionList", ""},
};

class CrashOfTarget : public FaultsTest {
protected:
    // Makes each of the calls in either format, in processes whose target ends them by `death`.
    // `isExpected` judges the status.
    template <class Expected>
    void Die(TargetAnswer* death, const Expected& isExpected) {
        for (const char* const isNewFormat : {"1", "0"}) {
            Set("NewFormat", isNewFormat);
            for (const LastCall& call : kLastCalls) {
                SearchAndRemove(LogPath());
                const int status = StatusOf([&call, death] {
                    LeaveNoCore();
                    for (const int signal : {SIGSEGV, SIGABRT}) std::signal(signal, SIG_DFL);
                    Library library;
                    library->C_Logout(1);
                    targetAnswer = death;
                    call.make(library);
                });
                EXPECT_TRUE(isExpected(status)) << Ending(status);
                ExpectTheStartRecord(call, *isNewFormat == '1' ? call.newChildren : call.oldChildren);
            }
        }
    }

    void ExpectTheStartRecord(const LastCall& call, const char* children) {
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        ASSERT_EQ(log.records.size(), 3U) << Log();
        EXPECT_TRUE(log.records[2].isStart);
        EXPECT_EQ(log.records[2].function, AreEventsTested() ? call.eventFunction : call.function);
        EXPECT_EQ(log.records[2].children, AreEventsTested() ? call.eventChildren : children);
    }
};

TEST_F(CrashOfTarget, TargetDiesOfASegmentationFault_StartRecordIsInTheLog) {
    // The address sanitizer ends the process in its own way.
    const auto isExpected = [](int status) {
        return CKSCRIBE_IS_SANITIZED ? status != 0 : WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV;
    };
    Die(Segfault, isExpected);
    Die(ReadUnmappedMemory, isExpected);
}

TEST_F(CrashOfTarget, TargetAborts_StartRecordIsInTheLog) {
    Die(Abort, [](int status) { return WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT; });
}

TEST_F(CrashOfTarget, TargetKillsTheProcess_StartRecordIsInTheLog) {
    Die(Kill, [](int status) { return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL; });
}

TEST_F(CrashOfTarget, TargetExits_StartRecordIsInTheLog) {
    Die(LeaveAtOnce, [](int status) { return WIFEXITED(status) && WEXITSTATUS(status) == 7; });
    Die(Leave, [](int status) { return WIFEXITED(status) && WEXITSTATUS(status) == 8; });
}

}  // namespace
