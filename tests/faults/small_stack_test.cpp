// Threads have stacks as small as the system allows. A call fits into what the application has left of its
// stack.

#include <limits.h>
#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>

#include "tests/faults/application.h"
#include "tests/faults/guarded_call.h"
#include "tests/faults/log_records.h"

namespace {

// The sanitizers need far more for themselves.
constexpr std::size_t kForSanitizer = CKSCRIBE_IS_SANITIZED ? 2 * 1024 * 1024 : 0;
const std::size_t kSmallestStack = static_cast<std::size_t>(PTHREAD_STACK_MIN) + kForSanitizer;
constexpr std::size_t kStackOfFirstCall = 64 * 1024 + kForSanitizer;

constexpr std::size_t kPage = 4096;

// A Stack has a page below it that nobody may touch.
class Stack {
public:
    explicit Stack(std::size_t size)
        : size(size),
          memory(static_cast<char*>(
              mmap(nullptr, kPage + size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {
        mprotect(memory, kPage, PROT_NONE);
    }
    ~Stack() { munmap(memory, kPage + size); }
    Stack(const Stack&) = delete;
    Stack& operator=(const Stack&) = delete;

    void Run(void* (*work)(void*), void* argument) {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        ASSERT_EQ(pthread_attr_setstack(&attributes, memory + kPage, size), 0);
        pthread_t thread;
        ASSERT_EQ(pthread_create(&thread, &attributes, work, argument), 0);
        ASSERT_EQ(pthread_join(thread, nullptr), 0);
        pthread_attr_destroy(&attributes);
    }

private:
    std::size_t size;
    char* memory;
};

struct Call {
    AnyFunction* function;
    const GuardedCall* arguments;
    CK_RV result;

    static void* Make(void* call) {
        Call& self = *static_cast<Call*>(call);
        self.result = self.arguments->Make(self.function);
        return nullptr;
    }
};

class SmallStack : public FaultsTest, public testing::WithParamInterface<const char*> {
protected:
    SmallStack() { Set("NewFormat", GetParam()); }
};

// Calls every function with all that its records can show.
TEST_P(SmallStack, SmallestStack_IsEnoughForEveryCall) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library.Exported<void()>("CkLogSpecialInitialize")();
        for (const FunctionArguments& function : ArgumentsOfFunctions()) {
            GuardedPages pages;
            const GuardedCall arguments(function, pages);
            Call call = {library.Exported<AnyFunction>(function.function.c_str()), &arguments, 1};
            Stack stack(kSmallestStack);
            stack.Run(Call::Make, &call);
            EXPECT_EQ(call.result,
                      function.function == "C_GetFunctionStatus" ? CKR_FUNCTION_NOT_SUPPORTED : CKR_OK)
                << function.function;
        }
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        const std::size_t logged = ArgumentsOfFunctions().size() - 1;  // all but CA_GetFunctionList
        EXPECT_EQ(log.records.size(), 2 * logged);
    }));
}

TEST_P(SmallStack, StackOf64KiB_IsEnoughForTheFirstCallOfAProcess) {
    for (const char* const name : {"C_Sign", "CA_HAInit", "C_GetFunctionList"}) {
        EXPECT_TRUE(Survives([name] {
            Library library;
            const auto& functions = ArgumentsOfFunctions();
            const auto function = std::find_if(functions.begin(), functions.end(),
                                               [name](const auto& each) { return each.function == name; });
            GuardedPages pages;
            const GuardedCall arguments(*function, pages);
            Call call = {library.Exported<AnyFunction>(name), &arguments, 1};
            Stack stack(kStackOfFirstCall);
            stack.Run(Call::Make, &call);
            EXPECT_EQ(call.result, CKR_OK);
        })) << name;
    }
    EXPECT_EQ(ParseLog(Log()).records.size(), 6U);
}

TEST_P(SmallStack, LogIsLostInTheCall_SmallestStackIsEnoughForTheLineInTheErrorFile) {
    EXPECT_TRUE(Survives([this] {
        Library library;
        library->C_Logout(1);
        std::filesystem::rename(LogPath(), LogPath() + ".old");
        std::filesystem::create_directory(LogPath());
        for (int descriptor = 3; descriptor < 2000; ++descriptor) close(descriptor);
        usleep(20'000);  // the log's descriptor is looked at again by then
        Stack stack(kSmallestStack);
        stack.Run(
            [](void* api) -> void* {
                (*static_cast<Library*>(api))->C_Logout(2);
                return nullptr;
            },
            &library);
    }));
    EXPECT_NE(Errors().find("Lost " + KindOfFile() + " "), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(, SmallStack, testing::Values("0", "1"),
                         [](const testing::TestParamInfo<const char*>& info) {
                             return *info.param == '1' ? "InTheNewFormat" : "InTheOldFormat";
                         });

}  // namespace
