// The key "Events" names a file. These tests say which file it is, and which calls leave events in it.
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

#include <cerrno>
#include <ctime>

#include "tests/calls/call_data.h"
#include "tests/calls/library_test.h"
#include "tests/noexcept_of_system.h"

namespace {

int questionsForTheDate = 0;

}  // namespace

// If the library asked for the date, its questions would come to this function.
extern "C" __attribute__((visibility("default"))) std::tm* gmtime_r(const std::time_t* time,
                                                                    std::tm* result) NOEXCEPT_OF_SYSTEM {
    static const auto systems =
        reinterpret_cast<std::tm* (*)(const std::time_t*, std::tm*)>(dlsym(RTLD_NEXT, "gmtime_r"));
    ++questionsForTheDate;
    return systems(time, result);
}

namespace {

class EventsFile : public LibraryTest {
protected:
    EventsFile() {
        Set("Enabled", "0");
        Set("Events", EventsPath());
    }

    static std::size_t Count(const std::string& text, const std::string& part) {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
        return count;
    }

    // Returns the text behind `key` in the last line that has it.
    static std::string Last(const std::string& events, const std::string& key) {
        const std::size_t from = events.rfind(key) + key.size();
        return events.substr(from, events.find_first_of(",}", from) - from);
    }

    // Does `work` in a forked child, and returns the child's number.
    template <class Work>
    static pid_t InChild(const Work& work) {
        const pid_t child = fork();
        if (child == 0) {
            work();
            _exit(0);
        }
        int status = 1;
        EXPECT_EQ(child, waitpid(child, &status, 0));
        EXPECT_EQ(0, status);
        return child;
    }

    bool Exists(const std::string& name) const { return std::filesystem::exists(directory.File(name)); }
};

}  // namespace

TEST_F(EventsFile, KeyIsAbsent_NoEventsFileIsMade) {
    Unset("Events");
    Load();
    api.C_Logout(81);
    EXPECT_FALSE(Exists("events.jsonl"));
    EXPECT_EQ("", Errors());
}

TEST_F(EventsFile, KeyIsEmpty_NoEventsFileIsMade) {
    Set("Events", "");
    Load();
    api.C_Logout(81);
    EXPECT_EQ("", Errors());
    EXPECT_EQ("", Log());
}

TEST_F(EventsFile, NoCallIsMade_NoEventsFileIsMade) {
    Load();
    EXPECT_FALSE(Exists("events.jsonl"));
}

TEST_F(EventsFile, TextLogIsOff_EventsFileHasBothEventsOfACall) {
    Load();
    api.C_Logout(81);
    EXPECT_EQ(1u, Count(Events(), R"({"event":"start",)"));
    EXPECT_EQ(1u, Count(Events(), R"({"event":"end",)"));
    EXPECT_EQ("", Log());
}

TEST_F(EventsFile, TextLogIsOn_EventsFileStandsBesideIt) {
    Set("Enabled", "1");
    Load();
    api.C_Logout(81);
    EXPECT_EQ(2u, Count(Events(), "\n"));
    EXPECT_EQ(WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }\n10:15:30 <id>:FINILogout CKR_OK12345clks {}"),
              Log());
}

TEST_F(EventsFile, NameIsRelative_EventsFileLiesInTheDirectoryOfTheStart) {
    Set("Events", "relative.jsonl");
    Load();
    api.C_Logout(81);
    EXPECT_TRUE(Exists("relative.jsonl"));
}

TEST_F(EventsFile, NameHoldsPercentSigns_TheyStandForTheProcessAndThemselves) {
    Set("Events", directory.File("%p-%%p-%x-%p%"));
    Load();
    api.C_Logout(81);
    const std::string process = std::to_string(getpid());
    EXPECT_TRUE(Exists(process + "-%p-%x-" + process + "%"));
}

TEST_F(EventsFile, EventsFileCannotBeOpened_ErrorFileHasOneLine) {
    Set("Events", directory.File("missing/events.jsonl"));
    Load();
    EXPECT_EQ(CKR_OK, api.C_Logout(81));
    EXPECT_EQ(CKR_OK, api.C_Logout(81));
    EXPECT_EQ(1u,
              Count(Errors(), "Could not open events file " + directory.File("missing/events.jsonl") + "."));
    EXPECT_EQ(1u, Count(Errors(), "\n"));
}

TEST_F(EventsFile, FileModeIsSet_EventsFileHasThesePermissions) {
    Set("FileMode", "0640");
    Load();
    api.C_Logout(81);
    struct stat status = {};
    ASSERT_EQ(0, stat(EventsPath().c_str(), &status));
    EXPECT_EQ(0640u, status.st_mode & 0777);
}

TEST_F(EventsFile, MaskNamesClasses_EventsFileHasOnlyTheirCalls) {
    Set("LoggingMask", "GEN_FUNC");
    Load();
    api.C_Logout(81);
    EXPECT_EQ("", Events());
    api.C_Finalize(nullptr);
    EXPECT_EQ(2u, Count(Events(), R"("function":"C_Finalize")"));
}

TEST_F(EventsFile, LevelIsSet_EventsFileHasOnlyItsCommands) {
    Set("LoggingLevel", "DESTROY");
    Load();
    api.C_Logout(81);
    Exported<CK_RV(CK_SLOT_ID)>("CA_Restart")(7);
    EXPECT_EQ("", Events());
    api.C_DestroyObject(81, 98);
    EXPECT_EQ(2u, Count(Events(), R"("function":"C_DestroyObject")"));
}

TEST_F(EventsFile, OnlyTheEndIsLogged_EventHasANumberAndNoInput) {
    Set("LoggingMask", "GEN_FUNC");
    Load();
    script.answer = [this, isOuter = true]() mutable {
        if (!isOuter) return;
        isOuter = false;
        Set("LoggingMask", "ALL_FUNC");
        WriteConfiguration();
        for (int i = 0; i < 600; ++i) api.C_Logout(82);
    };
    api.C_CloseSession(81);
    const std::string events = Events();
    const std::size_t last = events.rfind(R"({"event":)");
    ASSERT_NE(events.npos, last);
    const std::string line = events.substr(last);
    EXPECT_TRUE(line.starts_with(R"({"event":"end",)")) << line;
    EXPECT_NE(line.npos,
              line.find(R"("function":"C_CloseSession","rv":0,"result":"CKR_OK","in":[],"out":[]})"));
    EXPECT_EQ(0u, Count(events, R"("function":"C_CloseSession","session")"));
}

TEST_F(EventsFile, LibraryStopsAndStarts_CountOfCallsGoesOn) {
    Load();
    api.C_Logout(81);
    api.C_Logout(81);
    const std::string run = Last(Events(), R"("run":)");
    Exported<void()>("CkLogSpecialFinalize")();
    api.C_Logout(81);
    EXPECT_EQ("3", Last(Events(), R"("call":)"));
    EXPECT_EQ(run, Last(Events(), R"("run":)"));
}

TEST_F(EventsFile, CallLeavesNoEvent_ItIsNotCounted) {
    Set("LoggingMask", "SESSION_FUNC");
    Load();
    api.C_Logout(81);
    api.C_Finalize(nullptr);
    api.C_Logout(81);
    EXPECT_EQ("2", Last(Events(), R"("call":)"));
}

TEST_F(EventsFile, ProcessForks_ChildCountsInItsOwnRun) {
    Load();
    api.C_Logout(81);
    const std::string run = Last(Events(), R"("run":)");
    const pid_t child = InChild([this] { api.C_Logout(82); });
    const std::string events = Events();
    EXPECT_NE(run, Last(events, R"("run":)"));
    EXPECT_EQ("1", Last(events, R"("call":)"));
    EXPECT_EQ(std::to_string(child), Last(events, R"("pid":)"));
    EXPECT_EQ(std::to_string(child), Last(events, R"("tid":)"));
    api.C_Logout(81);
    EXPECT_EQ("2", Last(Events(), R"("call":)"));
    EXPECT_EQ(run, Last(Events(), R"("run":)"));
}

TEST_F(EventsFile, NameHoldsTheProcess_ForkedChildWritesItsOwnFile) {
    Set("Events", "events-%p.jsonl");
    Load();
    api.C_Logout(81);
    const std::string parents = "events-" + std::to_string(getpid()) + ".jsonl";
    const pid_t quiet = InChild([] {});
    EXPECT_FALSE(Exists("events-" + std::to_string(quiet) + ".jsonl"));
    const pid_t child = InChild([this] {
        std::filesystem::current_path("/");
        api.C_Logout(82);
    });
    EXPECT_EQ(2u, Count(Contents(directory.File(parents)), "\n"));
    EXPECT_EQ(2u, Count(Contents(directory.File("events-" + std::to_string(child) + ".jsonl")), "\n"));
}

TEST_F(EventsFile, ChildInheritsACall_CallKeepsRunAndNumber) {
    Set("HideData", "0");
    Load();
    api.C_Logout(81);
    pid_t child = 0;
    script.answer = [&] { child = fork(); };
    std::string part(2000, 'x');
    api.C_DigestUpdate(81, reinterpret_cast<CK_BYTE_PTR>(part.data()), part.size());
    if (child == 0) _exit(0);
    ASSERT_EQ(child, waitpid(child, nullptr, 0));
    const std::string events = Events();
    EXPECT_EQ(1u, Count(events, R"({"event":"start")") - 1);
    EXPECT_EQ(2u, Count(events, R"("call":2,"function":"C_DigestUpdate","rv":0)"));
    EXPECT_EQ(5u, Count(events, R"("run":)" + Last(events, R"("run":)")));
    EXPECT_EQ(3u, Count(events, part));
    EXPECT_EQ(1u, Count(events, R"("pid":)" + std::to_string(child)));
}

// The new start says what may be in the file from then on.
TEST_F(EventsFile, LibraryStartsAgainDuringACallAndHidesData_EndEventShowsNoDataOfTheInput) {
    for (const std::size_t length : {20U, 2000U}) {
        Set("HideData", "0");
        Restart();
        ClearEvents();
        script.answer = [this, isOuter = true]() mutable {
            if (!isOuter) return;
            isOuter = false;
            Set("HideData", "1");
            WriteConfiguration();
            Exported<void()>("CkLogSpecialFinalize")();
            api.C_Logout(82);
        };
        // A target that a call is inside of stays loaded for the rest of its process.
        InChild([this, length] {
            auto part = Bytes(std::string(length, 'd'));
            api.C_DigestUpdate(81, part.data(), part.size());
        });
        EXPECT_EQ(2u, Count(Events(), R"("function":"C_DigestUpdate")"));
        EXPECT_EQ(1u, Count(Events(), R"("text":"ddd)"));
    }
}

TEST_F(EventsFile, ClocksFail_ApplicationReadsTheErrnoOfTheTarget) {
    Load();
    api.C_Logout(81);
    int atEntry = 0;
    script.answer = [&atEntry] {
        atEntry = errno;
        errno = 4711;
    };
    clockError = EPERM;
    errno = 4712;
    api.C_Logout(82);
    const int atReturn = errno;
    clockError = 0;
    EXPECT_EQ(4712, atEntry);
    EXPECT_EQ(4711, atReturn);
    EXPECT_EQ(4u, Count(Events(), R"("function":"C_Logout")"));
}

// The C library's function takes a lock. A forked child may find it locked for ever.
TEST_F(EventsFile, EventIsWritten_TheCLibraryIsNotAskedForTheDate) {
    Load();
    questionsForTheDate = 0;
    api.C_Logout(81);
    EXPECT_EQ(2u, Count(Events(), R"("time":"2026-11-15T07:15:30.123456789Z")"));
    EXPECT_EQ(0, questionsForTheDate);
    const std::time_t now = 0;
    std::tm date{};
    gmtime_r(&now, &date);
    EXPECT_EQ(1, questionsForTheDate);
}

#ifdef __linux__
// Sandboxes allow their threads few system calls.
TEST_F(EventsFile, SignalsToThreadsAreForbidden_EveryEndEventHasItsLongInput) {
    Load();
    constexpr int kDepth = 40;
    InChild([this] {
        sock_filter filter[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_tgkill, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog program = {std::size(filter), filter};
        if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
            prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
            _exit(1);
        // Names of mechanisms make the input long.
        std::vector<CK_MECHANISM_TYPE> mechanisms(40, CKM_SHA256_RSA_PKCS);
        CK_ATTRIBUTE allowed = {CKA_ALLOWED_MECHANISMS, mechanisms.data(),
                                mechanisms.size() * sizeof(CK_MECHANISM_TYPE)};
        script.answer = [&, depth = 1]() mutable {
            if (depth < kDepth) api.C_FindObjectsInit(static_cast<CK_SESSION_HANDLE>(++depth), &allowed, 1);
        };
        api.C_FindObjectsInit(1, &allowed, 1);
    });
    EXPECT_EQ(kDepth, static_cast<int>(Count(Events(), R"({"event":"start",)")));
    EXPECT_EQ(kDepth, static_cast<int>(Count(Events(), R"({"event":"end",)")));
}
#endif
