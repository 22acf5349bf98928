// The coroutines of an application have stacks of their own. A stack may end right above its outermost
// function, and nobody may touch the memory that begins there.

#include <sys/mman.h>
#include <ucontext.h>

#include "tests/faults/application.h"
#include "tests/faults/arguments_of_functions.h"
#include "tests/faults/log_records.h"

namespace {

using SixWords = CK_RV(TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord);

constexpr std::size_t kPage = 4096;
constexpr std::size_t kSize = CKSCRIBE_IS_SANITIZED ? 512 * kPage : 64 * kPage;

ucontext_t application;
ucontext_t coroutine;
SixWords* function = nullptr;
CK_RV result = 0;

// This is the outermost function of the coroutine.
void Call() { result = function(0, 0, 0, 0, 0, 0); }

// A Stack lies between two pages that nobody may touch.
class Stack {
public:
    Stack() : memory(static_cast<char*>(mmap(nullptr, kSize + 2 * kPage, PROT_NONE, kFlags, -1, 0))) {
        mprotect(memory + kPage, kSize, PROT_READ | PROT_WRITE);
    }
    ~Stack() { munmap(memory, kSize + 2 * kPage); }
    Stack(const Stack&) = delete;
    Stack& operator=(const Stack&) = delete;

    // Calls `called` from a coroutine, and returns its result. `unused` bytes at the end of the stack stay
    // free.
    CK_RV RunCall(SixWords* called, std::size_t unused) {
        function = called;
        result = 0x4711;
        getcontext(&coroutine);
        coroutine.uc_stack.ss_sp = memory + kPage;
        coroutine.uc_stack.ss_size = kSize - unused;
        coroutine.uc_link = &application;
        makecontext(&coroutine, Call, 0);
        swapcontext(&application, &coroutine);
        return result;
    }

private:
    static constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS;
    char* memory;
};

CK_RV AnswerWithNumber(const char*, const TargetWord*, std::size_t) { return 0x1234; }

class Coroutine : public FaultsTest {
protected:
    static constexpr std::size_t kMostArguments = 20;

    static std::vector<std::string> VendorFunctions(std::size_t mostArguments) {
        std::vector<std::string> names;
        for (const FunctionArguments& each : ArgumentsOfFunctions()) {
            const bool isVendors = each.function.starts_with("CA_") && each.function != "CA_GetFunctionList";
            if (isVendors && each.arguments.size() <= mostArguments) names.push_back(each.function);
        }
        return names;
    }

    // Calls each function from the outermost function of a coroutine, with six zeros. Expects each call to
    // reach the target.
    static void ExpectThatTheyReachTheTarget(const std::vector<std::string>& functions) {
        EXPECT_TRUE(Survives([&] {
            Library library;
            library.Exported<void()>("CkLogSpecialInitialize")();
            targetAnswer = AnswerWithNumber;
            Stack stack;
            for (const std::string& name : functions) {
                EXPECT_EQ(stack.RunCall(library.Exported<SixWords>(name.c_str()), 0), 0x1234U) << name;
            }
        }));
    }
};

TEST_F(Coroutine, StackEndsAboveTheCaller_EveryVendorFunctionReachesTheTarget) {
    Set("LoggingMask", "GEN_FUNC");  // records would follow arguments that nobody gave
    ExpectThatTheyReachTheTarget(VendorFunctions(kMostArguments));
    EXPECT_EQ(VendorFunctions(kMostArguments).size(), 226U);
}

TEST_F(Coroutine, StackEndsAboveTheCaller_VendorFunctionsWithUpToSixArgumentsAreLogged) {
    const std::vector<std::string> functions = VendorFunctions(6);
    EXPECT_GT(functions.size(), 100U);
    ExpectThatTheyReachTheTarget(functions);
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.remainder, "");
    EXPECT_EQ(log.records.size(), 2 * functions.size());
}

// The words that the target gets are those on the stack, as far as the stack goes, and 0 behind its end.
TEST_F(Coroutine, StackEndsWithinTheWords_WordsBehindItsEndAreZero) {
    static std::vector<TargetWord> words;
    EXPECT_TRUE(Survives([] {
        Library library;
        library.Exported<void()>("CkLogSpecialInitialize")();
        targetAnswer = [](const char*, const TargetWord* arguments, std::size_t) {
            words.assign(arguments, arguments + 20);
            return CK_RV{5};
        };
        Stack stack;
        EXPECT_EQ(stack.RunCall(library.Exported<SixWords>("CA_PerformSelfTest"), 0), 5U);
        ASSERT_EQ(words.size(), 20U);
        EXPECT_EQ(words[19], 0U);
        EXPECT_EQ(words[18], 0U);
    }));
}

TEST_F(Coroutine, StackEndsAboveTheCaller_VendorListIsHandedOut) {
    EXPECT_TRUE(Survives([] {
        Library library;
        Stack stack;
        static void* list = nullptr;
        static SixWords* getList = library.Exported<SixWords>("CA_GetFunctionList");
        const auto ask = [](TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord) {
            return getList(reinterpret_cast<TargetWord>(&list), 0, 0, 0, 0, 0);
        };
        EXPECT_EQ(stack.RunCall(ask, 0), CKR_OK);
        EXPECT_NE(list, nullptr);
    }));
}

// If the page behind is readable, too, the target gets the caller's words.
TEST_F(Coroutine, WordsGoOnToAReadablePage_TargetGetsAllWords) {
    using EveryWord =
        CK_RV(TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord,
              TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord,
              TargetWord, TargetWord, TargetWord, TargetWord);
    static std::vector<TargetWord> words;
    static EveryWord* everyWord = nullptr;
    EXPECT_TRUE(Survives([] {
        Library library;
        everyWord = library.Exported<EveryWord>("CA_PerformSelfTest");
        targetAnswer = [](const char*, const TargetWord* arguments, std::size_t) {
            words.assign(arguments, arguments + 20);
            return CK_RV{6};
        };
        const auto call = [](TargetWord, TargetWord, TargetWord, TargetWord, TargetWord, TargetWord) {
            return everyWord(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20);
        };
        Stack stack;
        // At some of these places the words lie on two pages.
        for (std::size_t unused = 0; unused < 2 * kPage; unused += 16) {
            words.clear();
            EXPECT_EQ(stack.RunCall(call, unused), 6U);
            ASSERT_EQ(words, (std::vector<TargetWord>{1,  2,  3,  4,  5,  6,  7,  8,  9,  10,
                                                      11, 12, 13, 14, 15, 16, 17, 18, 19, 20}))
                << unused;
        }
    }));
}

}  // namespace
