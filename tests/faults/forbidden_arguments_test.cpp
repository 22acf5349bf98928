// Every function is called through the library and without it, with arguments that PKCS#11 forbids or
// allows to be absent. An application that lives without the library lives with it, gets the same result,
// and finds its memory as the target left it. Every call has its two records.

#include <dlfcn.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>

#include "tests/faults/application.h"
#include "tests/faults/guarded_call.h"
#include "tests/faults/log_records.h"
#include "tests/file_text.h"

namespace {

struct Result {
    CK_RV rv;
    const char* name;  // as ParseLog gives it
};
constexpr Result kRefusals[] = {{CKR_ARGUMENTS_BAD, "CKR_ARGUMENTS_BAD"},
                                {CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"},
                                {CKR_DEVICE_ERROR, "CKR_DEVICE_ERROR"},
                                {0x8000BEEF, "CKR_UNKNOWN 0x8000beef"}};
constexpr Result kSuccess = {CKR_OK, "CKR_OK"};

// No caller means these lengths and counts: they just miss the right one, or a multiple of them overflows.
constexpr CK_ULONG kWildLengths[] = {~CK_ULONG{0},      100000, CK_ULONG{1} << 61, (CK_ULONG{1} << 61) + 3,
                                     CK_ULONG{1} << 63, 12};

// A Variant is one way to make a call, in place of the lawful one. `before` changes the call. `inside` is
// what the target does to the call's memory. `last` is what becomes of the memory before the target returns.
// Each may be empty.
struct Variant {
    std::string name;
    std::function<void(GuardedCall&)> before;
    std::function<void(GuardedCall&)> inside;
    std::function<void(GuardedCall&)> last;
};

// `target` says what the target does, and keeps what it saw. The target runs on the test's thread.
struct {
    const Variant* variant = nullptr;
    GuardedCall* call = nullptr;
    GuardedPages* pages = nullptr;
    CK_RV rv = CKR_OK;
    std::vector<CK_ULONG> words;
    std::string memory;
} target;

CK_RV ScriptedAnswer(const char*, const TargetWord* words, std::size_t count) {
    target.words.assign(words, words + count);
    if (target.variant->inside) target.variant->inside(*target.call);
    target.memory = target.pages->Contents();
    if (target.variant->last) target.variant->last(*target.call);
    return target.rv;
}

// A SharedNote lets the parent know what a child died of.
class SharedNote {
public:
    SharedNote()
        : text(static_cast<char*>(
              mmap(nullptr, kSize, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANON, -1, 0))) {}
    ~SharedNote() { munmap(text, kSize); }
    void Set(const std::string& note) { std::snprintf(text, kSize, "%s", note.c_str()); }
    const char* Text() const { return text; }

private:
    static constexpr std::size_t kSize = 512;
    char* text;
};

class ForbiddenArguments : public FaultsTest, public testing::WithParamInterface<const char*> {
protected:
    // A Variants function makes the variants of a function's call from a lawful call.
    using Variants = std::function<std::vector<Variant>(const GuardedCall& lawful)>;

    // Calls every function with every variant and result.
    void ExpectSameAsWithoutUs(const Variants& variants, const std::vector<Result>& results) {
        Set("NewFormat", GetParam());
        EXPECT_TRUE(Survives([&] {
            LeaveNoCore();
            targetAnswer = ScriptedAnswer;
            Library library;
            void* const direct = dlopen(SCRIPTED_TARGET, RTLD_NOW | RTLD_LOCAL);
            ASSERT_NE(nullptr, direct);
            for (const FunctionArguments& function : ArgumentsOfFunctions()) {
                const Functions functions = {
                    reinterpret_cast<AnyFunction*>(dlsym(direct, function.function.c_str())),
                    library.Exported<AnyFunction>(function.function.c_str())};
                CheckFunction(function, functions, variants, results);
            }
        })) << note.Text();
    }

    static Variant Lawful() { return {"", {}, {}, {}}; }

private:
    struct Functions {
        AnyFunction* direct;
        AnyFunction* logged;
    };

    void CheckFunction(const FunctionArguments& function, const Functions& functions,
                       const Variants& variants, const std::vector<Result>& results) {
        std::error_code missing;
        const std::uintmax_t size = std::filesystem::file_size(LogPath(), missing);
        logSize = missing ? 0 : size;
        std::vector<std::string> expectedResults;
        const std::vector<Variant> all = variants(GuardedCall(function, pages));
        for (const Variant& variant : all) {
            for (const Result& result : results) {
                note.Set(function.function + ": " + variant.name + ", " + result.name);
                SCOPED_TRACE(note.Text());
                CheckCall(function, functions, variant, result.rv);
                const bool isAnswered = function.function != "C_GetFunctionStatus";
                expectedResults.push_back(isAnswered ? result.name : "CKR_FUNCTION_NOT_SUPPORTED");
            }
        }
        note.Set(function.function + ": log");
        if (function.function == "CA_GetFunctionList") expectedResults.clear();  // never logged
        CheckLog(expectedResults);
    }

    void CheckCall(const FunctionArguments& function, const Functions& functions, const Variant& variant,
                   CK_RV rv) {
        const std::string& name = function.function;
        note.Set(std::string(note.Text()) + ", without the library");
        const CK_RV direct = Call(function, functions.direct, variant, rv);
        ASSERT_EQ(rv, direct);
        const std::vector<CK_ULONG> words = target.words;

        note.Set(name + ": " + variant.name + ", " + std::to_string(rv));
        target.words.clear();
        const CK_RV logged = Call(function, functions.logged, variant, rv);
        if (name == "C_GetFunctionStatus") {
            EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, logged);  // whatever the target says
        } else if (name == "CA_GetFunctionList" && words[0] == 0) {
            EXPECT_EQ(CKR_DATA_INVALID, logged);  // the target is not asked
        } else {
            EXPECT_EQ(rv, logged);
            ASSERT_EQ(words.size(), target.words.size());
            for (std::size_t i = 0; i < std::min<std::size_t>(words.size(), 20); ++i)
                EXPECT_EQ(words[i], target.words[i]) << "argument " << i;
        }
    }

    // Makes the call, and checks that nobody but the target changed its memory.
    CK_RV Call(const FunctionArguments& function, AnyFunction* called, const Variant& variant, CK_RV rv) {
        GuardedCall call(function, pages);
        if (variant.before) variant.before(call);
        target.variant = &variant;
        target.call = &call;
        target.pages = &pages;
        target.rv = rv;
        target.memory = pages.Contents();
        const CK_RV result = call.Make(called);
        if (variant.last) pages.Open();
        EXPECT_TRUE(target.memory == pages.Contents()) << "memory of the application was changed";
        return result;
    }

    void CheckLog(const std::vector<std::string>& results) const {
        const ParsedLog log = ParseLog(FileText(LogPath(), logSize));
        EXPECT_EQ("", log.remainder);
        ASSERT_EQ(2 * results.size(), log.records.size());
        for (std::size_t i = 0; i < results.size(); ++i) {
            EXPECT_TRUE(log.records[2 * i].isStart);
            EXPECT_FALSE(log.records[2 * i + 1].isStart);
            EXPECT_EQ(log.records[2 * i].function, log.records[2 * i + 1].function);
            EXPECT_EQ(results[i], log.records[2 * i + 1].result);
        }
    }

    GuardedPages pages;
    SharedNote note;
    // The log has this size before the calls of a function. Emptying the log each time would take long.
    std::uintmax_t logSize = 0;
};

std::vector<Result> Refusals() { return {std::begin(kRefusals), std::end(kRefusals)}; }

std::vector<Result> AllResults() {
    std::vector<Result> results = Refusals();
    results.push_back(kSuccess);
    return results;
}

using Places = std::vector<Place> GuardedCall::*;

// Adds one variant for each place, in which the place holds another word.
void AddVariants(std::vector<Variant>& variants, const GuardedCall& lawful, Places places,
                 const std::string& what, const std::function<CK_ULONG(CK_ULONG)>& other) {
    for (std::size_t i = 0; i < (lawful.*places).size(); ++i) {
        variants.push_back({(lawful.*places)[i].name + what,
                            [=](GuardedCall& call) {
                                const Place& place = (call.*places)[i];
                                place.Set(other(place.Get()));
                            },
                            {},
                            {}});
    }
}

void AddVariants(std::vector<Variant>& variants, const GuardedCall& lawful, Places places,
                 const std::string& what, CK_ULONG word) {
    AddVariants(variants, lawful, places, what, [word](CK_ULONG) { return word; });
}

CK_ULONG EndOfPage(CK_ULONG address) { return (address / GuardedPages::kPage + 1) * GuardedPages::kPage; }

}  // namespace

TEST_P(ForbiddenArguments, PointersAreNull_CallLivesOn) {
    ExpectSameAsWithoutUs(
        [](const GuardedCall& lawful) {
            std::vector<Variant> variants = {Lawful()};
            AddVariants(variants, lawful, &GuardedCall::pointers, " is null", 0);
            AddVariants(variants, lawful, &GuardedCall::functionLists, " is null", 0);
            // The loop goes from the last to the first: words inside a structure come before the pointer to
            // it.
            variants.push_back({"every pointer is null",
                                [](GuardedCall& call) {
                                    std::for_each(call.pointers.rbegin(), call.pointers.rend(),
                                                  [](const Place& pointer) { pointer.Set(0); });
                                },
                                {},
                                {}});
            return variants;
        },
        AllResults());
}

TEST_P(ForbiddenArguments, PointersLeadToNoMemory_CallLivesOn) {
    ExpectSameAsWithoutUs(
        [](const GuardedCall& lawful) {
            std::vector<Variant> variants;
            AddVariants(variants, lawful, &GuardedCall::pointers, " points behind memory", EndOfPage);
            AddVariants(variants, lawful, &GuardedCall::pointers, " points to one byte",
                        [](CK_ULONG address) { return EndOfPage(address) - 1; });
            AddVariants(variants, lawful, &GuardedCall::pointers, " is no address",
                        [](CK_ULONG) { return CK_ULONG{1} << 63; });
            AddVariants(variants, lawful, &GuardedCall::pointers, " is all ones",
                        [](CK_ULONG) { return ~CK_ULONG{0}; });
            return variants;
        },
        AllResults());
}

TEST_P(ForbiddenArguments, LengthsGoBeyondTheMemory_CallLivesOn) {
    ExpectSameAsWithoutUs(
        [](const GuardedCall& lawful) {
            std::vector<Variant> variants = {Lawful()};
            for (const CK_ULONG length : kWildLengths) {
                AddVariants(variants, lawful, &GuardedCall::inputLengths, " is " + std::to_string(length),
                            length);
            }
            return variants;
        },
        AllResults());
}

TEST_P(ForbiddenArguments, CountsAreNotSetAfterARefusal_CallLivesOn) {
    ExpectSameAsWithoutUs(
        [](const GuardedCall& lawful) {
            std::vector<Variant> variants;
            for (const CK_ULONG length : kWildLengths) {
                const std::string value = std::to_string(length);
                AddVariants(variants, lawful, &GuardedCall::outputLengths, " was " + value, length);
                for (std::size_t i = 0; i < lawful.outputLengths.size(); ++i) {
                    variants.push_back({lawful.outputLengths[i].name + " becomes " + value,
                                        {},
                                        [=](GuardedCall& call) { call.outputLengths[i].Set(length); },
                                        {}});
                }
            }
            return variants;
        },
        Refusals());
}

TEST_P(ForbiddenArguments, MemoryGoesDuringARefusedCall_CallLivesOn) {
    ExpectSameAsWithoutUs(
        [](const GuardedCall&) {
            return std::vector<Variant>{{"memory goes", {}, {}, &GuardedCall::CloseEverything}};
        },
        Refusals());
}

// A successful call may lose its input, too, after the target has taken what it needs.
TEST_P(ForbiddenArguments, InputGoesDuringACall_CallLivesOn) {
    ExpectSameAsWithoutUs(
        [](const GuardedCall&) {
            return std::vector<Variant>{{"input goes", {}, {}, &GuardedCall::CloseInputs}};
        },
        AllResults());
}

INSTANTIATE_TEST_SUITE_P(Formats, ForbiddenArguments, testing::Values("0", "1"),
                         [](const auto& info) { return *info.param == '1' ? "New" : "Old"; });
