// A target that dies inside a call: what it was asked to do stands in the log.

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

class CrashOfTarget : public FaultsTest {
protected:
    // A call of C_SignInit whose target ends the process by `death`, and the log of it.
    void Die(TargetAnswer* death) {
        status = StatusOf([death] {
            LeaveNoCore();
            for (const int signal : {SIGSEGV, SIGABRT}) std::signal(signal, SIG_DFL);
            Library library;
            library->C_Logout(1);
            targetAnswer = death;
            CK_BYTE parameter[] = {'v', 'a', 'l', 'u', 'e'};
            CK_MECHANISM mechanism = {CKM_RSA_PKCS, parameter, sizeof parameter};
            library->C_SignInit(4321, &mechanism, 8765);
        });
    }

    void ExpectTheStartRecord() {
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        ASSERT_EQ(log.records.size(), 3U) << Log();
        EXPECT_TRUE(log.records[2].isStart);
        EXPECT_EQ(log.records[2].function, "Sign_Init");
        EXPECT_EQ(log.records[2].children, "Sesn=4321 Mech=(CKM_RSA_PKCS,\"value\") Obj=8765 ");
    }

    int status = -1;
};

TEST_F(CrashOfTarget, BySegmentationFault) {
    for (TargetAnswer* const death : {&Segfault, &ReadUnmappedMemory}) {
        unlink(LogPath().c_str());
        Die(death);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGSEGV) << Ending(status);
#endif
        ExpectTheStartRecord();
    }
}

TEST_F(CrashOfTarget, ByAbort) {
    Die(Abort);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT) << Ending(status);
    ExpectTheStartRecord();
}

TEST_F(CrashOfTarget, ByKill) {
    Die(Kill);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << Ending(status);
    ExpectTheStartRecord();
}

TEST_F(CrashOfTarget, ByExit) {
    Die(LeaveAtOnce);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7) << Ending(status);
    ExpectTheStartRecord();

    unlink(LogPath().c_str());
    Die(Leave);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 8) << Ending(status);
    ExpectTheStartRecord();
}

TEST_F(CrashOfTarget, InTheOldFormat) {
    Set("NewFormat", "0");
    Die(LeaveAtOnce);
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.remainder, "");
    ASSERT_EQ(log.records.size(), 3U) << Log();
    EXPECT_TRUE(log.records[2].isStart);
    EXPECT_EQ(log.records[2].function, "Sign_Init");
    EXPECT_EQ(log.records[2].children,
              "\n   SessionHandle(0x10e1);\n   MechanismCKM_RSA_PKCS,Value(SimpleText\"value\"));\n"
              "   ObjectHandle(0x223d);");
}

}  // namespace
