// The target finds errno and the signal mask as the application left them, and the application finds them
// as the target left them.

#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

#include "tests/faults/application.h"

namespace {

constexpr int kErrorOfApplication = 4711;
constexpr int kErrorOfTarget = 815;

const char* const kEveryFunction[] = {
#define C_EVERY_ROW(Name, ...) "C_" #Name,
#define CA_EVERY_ROW(Name) "CA_" #Name,
#include "functions/functions.def"
};

std::string SignalMask() {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    std::string members;
    for (int signal = 1; signal < NSIG; ++signal) members += sigismember(&mask, signal) == 1 ? '1' : '0';
    return members;
}

void SetSignalMask(std::initializer_list<int> signals) {
    sigset_t mask;
    sigemptyset(&mask);
    for (const int signal : signals) sigaddset(&mask, signal);
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
}

// The target stores in `found` what it found.
struct Found {
    bool isCalled = false;
    int error = 0;
    std::string mask;
} found;
CK_RV result = CKR_OK;

CK_RV LookAroundAndChange(const char*, const TargetWord*, std::size_t) {
    found = {true, errno, SignalMask()};
    SetSignalMask({SIGUSR2, SIGXFSZ});
    errno = kErrorOfTarget;
    return result;
}

// The call has enough nulls for every function. A function never looks behind its last argument.
template <std::size_t... i>
CK_RV CallWithNulls(void* function, std::index_sequence<i...>) {
    return reinterpret_cast<CK_RV (*)(decltype(TargetWord{i})...)>(function)((TargetWord{i} * 0)...);
}

class ErrnoAndSignalMask : public FaultsTest {
protected:
    // Calls a function with nulls for arguments. Expects errno and signal mask to pass in both directions.
    static void ExpectThatTheyPass(const Library& library, const char* function, bool reachesTarget = true) {
        void* const address = library.Address(function);
        SetSignalMask({SIGUSR1, SIGPIPE});
        const std::string maskOfApplication = SignalMask();
        found = {};
        errno = kErrorOfApplication;
        CallWithNulls(address, std::make_index_sequence<kTargetWords>());
        const int error = errno;
        const std::string mask = SignalMask();
        SetSignalMask({});

        EXPECT_EQ(found.isCalled, reachesTarget) << function;
        if (!found.isCalled) {
            EXPECT_EQ(error, kErrorOfApplication) << function;
            EXPECT_EQ(mask, maskOfApplication) << function;
            return;
        }
        EXPECT_EQ(found.error, kErrorOfApplication) << function;
        EXPECT_EQ(found.mask, maskOfApplication) << function;
        EXPECT_EQ(error, kErrorOfTarget) << function;
        SetSignalMask({SIGUSR2, SIGXFSZ});
        EXPECT_EQ(mask, SignalMask()) << function;
        SetSignalMask({});
    }

    // Returns whether a call with nulls reaches the target. Two functions do not: the library answers
    // C_GetFunctionStatus itself, and CA_GetFunctionList without a place for the list.
    static bool ReachesTarget(std::string_view function) {
        return function != "C_GetFunctionStatus" && function != "CA_GetFunctionList";
    }

    // Lets every function fail once and succeed once, except the one whose success promises a list.
    static void ExpectThatTheyPassEveryFunction() {
        targetAnswer = LookAroundAndChange;
        const Library library;
        for (const CK_RV answer : {CKR_FUNCTION_FAILED, CKR_OK}) {
            result = answer;
            for (const char* const function : kEveryFunction) {
                if (answer == CKR_OK && std::string_view(function) == "C_GetFunctionList") continue;
                ExpectThatTheyPass(library, function, ReachesTarget(function));
            }
        }
    }
};

TEST_F(ErrnoAndSignalMask, CallIsLogged_ErrnoAndSignalMaskAreTheTargets) {
    EXPECT_TRUE(Survives(ExpectThatTheyPassEveryFunction));
    EXPECT_NE(Log(), "");
    Set("NewFormat", "0");
    EXPECT_TRUE(Survives(ExpectThatTheyPassEveryFunction));
}

TEST_F(ErrnoAndSignalMask, CallIsNotLogged_ErrnoAndSignalMaskAreTheTargets) {
    Set("LoggingMask", "none");
    EXPECT_TRUE(Survives(ExpectThatTheyPassEveryFunction));
    Set("LoggingMask", "ALL_FUNC");
    Set("LoggingLevel", "DESTROY");
    EXPECT_TRUE(Survives(ExpectThatTheyPassEveryFunction));
    Set("Enabled", "0");
    EXPECT_TRUE(Survives(ExpectThatTheyPassEveryFunction));
    EXPECT_EQ(Log().find("Logout"), std::string::npos);
}

TEST_F(ErrnoAndSignalMask, LogFails_ErrnoAndSignalMaskAreTheTargets) {
    for (const std::string& log : {std::string("/dev/full"), directory.File("missing/calls.log")}) {
        Set("File", log);
        EXPECT_TRUE(Survives(ExpectThatTheyPassEveryFunction)) << log;
    }
}

TEST_F(ErrnoAndSignalMask, NoTarget_ErrnoAndSignalMaskStay) {
    Set("LibUNIX64", directory.File("missing.so"));
    EXPECT_TRUE(Survives([] {
        const Library library;
        for (const char* const function : kEveryFunction) ExpectThatTheyPass(library, function, false);
    }));
}

TEST_F(ErrnoAndSignalMask, NoConfiguration_ErrnoAndSignalMaskStay) {
    EXPECT_TRUE(Survives([this] {
        targetAnswer = LookAroundAndChange;
        const Library library;
        ExpectThatTheyPass(library, "C_Logout");
        unlink(ConfigurationPath().c_str());
        for (int i = 0; i < 300; ++i) ExpectThatTheyPass(library, "C_Logout");
    }));
}

// The host starts and stops the library. A call starts it again.
TEST_F(ErrnoAndSignalMask, LibraryStartsAndStops_ErrnoAndSignalMaskStay) {
    EXPECT_TRUE(Survives([] {
        const Library library;
        SetSignalMask({SIGUSR1, SIGPIPE});
        const std::string mask = SignalMask();
        for (int i = 0; i < 3; ++i) {
            for (const char* const function : {"CkLogSpecialInitialize", "CkLogSpecialFinalize"}) {
                errno = kErrorOfApplication;
                library.Exported<void()>(function)();
                EXPECT_EQ(errno, kErrorOfApplication) << function;
                EXPECT_EQ(SignalMask(), mask) << function;
            }
        }
        targetAnswer = LookAroundAndChange;
        ExpectThatTheyPass(library, "C_Logout");
    }));
}

}  // namespace
