// Calls of the vendor's functions get to the target with every word that the caller gave, whatever the
// records know of it. The target's result comes back.
#include <sys/mman.h>

#include <algorithm>
#include <map>

#include "tests/calls/every_function.h"

namespace {

// These arguments are booleans: only one byte counts, and only that byte goes on.
const std::map<std::string, std::size_t> kBooleans = {{"CA_SetMofN", 0},
                                                      {"CA_CloneAsTargetInit", 5},
                                                      {"CA_CloneAsSource", 5},
                                                      {"CA_CloneAsTarget", 7},
                                                      {"CA_SIMExtract", 8}};

constexpr CK_RV kResults[] = {CKR_OK, CKR_BUFFER_TOO_SMALL, CKR_PIN_INCORRECT, 0x80000999,
                              0xFEDCBA9876543210};

class VendorForwarding : public EveryFunction {
protected:
    void ForwardsEveryWordAndResult() {
        Restart();
        for (const std::string& function : kVendorFunctions) {
            for (const CK_RV result : kResults) ForwardsEveryWord(function, result);
        }
    }

    // Returns a word of its own for each place, function and result. None is an address that can be read.
    CallWords DistinctWords() {
        CallWords words;
        for (TargetWord& word : words) word = 0x8181828380000001 + 0x0101 * ++wordsMade;
        return words;
    }

    static std::vector<TargetWord> ExpectedInTarget(const std::string& function, const CallWords& words) {
        std::vector<TargetWord> expected(words.begin(), words.end());
        const auto boolean = kBooleans.find(function);
        if (boolean != kBooleans.end()) expected[boolean->second] &= 0xFF;
        return expected;
    }

    void ExpectReceived(const std::string& function, const std::vector<TargetWord>& expected) {
        ASSERT_EQ(1u, script.received.size()) << function;
        ReceivedCall received = script.received.front();
        script.received.clear();
        EXPECT_EQ(function, received.function);
        ASSERT_EQ(kTargetWords, received.words.size());
        received.words.resize(expected.size());
        EXPECT_EQ(expected, received.words) << function;
    }

private:
    void ForwardsEveryWord(const std::string& function, CK_RV result) {
        CallWords words = DistinctWords();
        void* list = nullptr;
        if (function == "CA_GetFunctionList") words[0] = reinterpret_cast<TargetWord>(&list);
        script.result = result;
        EXPECT_EQ(result, CallWith(function, words)) << function;
        ExpectReceived(function, ExpectedInTarget(function, words));
    }

    TargetWord wordsMade = 0;
};

// A StackOf is a stack on which a call finds these words where a caller pushes arguments. A caller that
// pushes fewer has its own variables there.
class StackOf {
public:
    explicit StackOf(const std::vector<TargetWord>& words) : count(words.size()) {
        stack = static_cast<TargetWord*>(
            mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        EXPECT_NE(MAP_FAILED, static_cast<void*>(stack));
        std::copy(words.begin(), words.end(), Top());
    }
    ~StackOf() { munmap(stack, kSize); }
    StackOf(const StackOf&) = delete;
    StackOf& operator=(const StackOf&) = delete;

    // Calls a function with one argument, and with zero in the other registers for arguments.
    CK_RV Call(void* function, TargetWord argument) {
        CK_RV result;
        TargetWord* const top = Top();
        asm volatile(
            "xor %%esi, %%esi\n\t"
            "xor %%edx, %%edx\n\t"
            "xor %%ecx, %%ecx\n\t"
            "xor %%r8d, %%r8d\n\t"
            "xor %%r9d, %%r9d\n\t"
            "mov %%rsp, %%rbx\n\t"
            "mov %[top], %%rsp\n\t"
            "call *%[function]\n\t"
            "mov %%rbx, %%rsp"
            : "=a"(result), "+D"(argument)
            : [top] "r"(top), [function] "r"(function)
            : "rbx", "rcx", "rdx", "rsi", "r8", "r9", "r10", "r11", "xmm0", "xmm1", "xmm2", "xmm3", "xmm4",
              "xmm5", "xmm6", "xmm7", "xmm8", "xmm9", "xmm10", "xmm11", "xmm12", "xmm13", "xmm14", "xmm15",
              "memory", "cc");
        return result;
    }

    std::vector<TargetWord> Words() { return {Top(), Top() + count}; }

private:
    TargetWord* Top() { return stack + (kSize / sizeof(TargetWord) - kTargetWords); }

    static constexpr std::size_t kSize = 1 << 20;
    TargetWord* stack;
    const std::size_t count;
};

}  // namespace

TEST_F(VendorForwarding, NewFormatIsLogged_EveryWordAndResultIsForwarded) { ForwardsEveryWordAndResult(); }

TEST_F(VendorForwarding, OldFormatIsLogged_EveryWordAndResultIsForwarded) {
    Set("NewFormat", "0");
    ForwardsEveryWordAndResult();
}

TEST_F(VendorForwarding, LoggingIsDisabled_EveryWordAndResultIsForwarded) {
    Set("Enabled", "0");
    ForwardsEveryWordAndResult();
    EXPECT_EQ("", Log());
}

TEST_F(VendorForwarding, MaskLogsNothing_EveryWordAndResultIsForwarded) {
    Set("LoggingMask", "NONE");
    ForwardsEveryWordAndResult();
    EXPECT_EQ("", Log());
}

TEST_F(VendorForwarding, LevelLogsSome_EveryWordAndResultIsForwarded) {
    Set("LoggingLevel", "ADMIN");
    ForwardsEveryWordAndResult();
}

TEST_F(VendorForwarding, LevelLogsNone_EveryWordAndResultIsForwarded) {
    Set("LoggingLevel", "MODIFY");
    ForwardsEveryWordAndResult();
    EXPECT_EQ("", Log());
}

TEST_F(VendorForwarding, ArgumentIsABoolean_LowestByteIsForwarded) {
    Load();
    for (const auto& [function, place] : kBooleans) {
        for (const TargetWord byte : {0x00UL, 0x01UL, 0x02UL, 0x80UL, 0xFFUL}) {
            CallWords words = DistinctWords();
            words[place] = 0xABCDEF0123456700 | byte;
            script.result = CKR_OK;
            CallWith(function, words);
            words[place] = byte;
            ExpectReceived(function, {words.begin(), words.end()});
        }
    }
}

// The words that a caller did not push are its own variables. They go on as they are, and stay as they are.
TEST_F(VendorForwarding, CallReturns_StackOfTheCallerIsUntouched) {
    for (const char* level : {"everything", "DESTROY"}) {
        Set("LoggingLevel", level);
        Restart();
        for (const std::string& function : Without(kVendorFunctions, {"CA_GetFunctionList"})) {
            CallWords words = DistinctWords();
            std::fill_n(words.begin(), 6, 0);
            words[0] = 0x51;
            const std::vector<TargetWord> pushed(words.begin() + 6, words.end());
            StackOf stack(pushed);
            script.result = 0x80000999;
            EXPECT_EQ(0x80000999u, stack.Call(ExportedAddress(function.c_str()), 0x51)) << function;
            EXPECT_EQ(pushed, stack.Words()) << function;
            ExpectReceived(function, ExpectedInTarget(function, words));
        }
    }
}
