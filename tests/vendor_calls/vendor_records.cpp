#include "tests/vendor_calls/vendor_records.h"

#include <utility>

namespace {

// On x86-64 every function takes words like these, whatever its prototype. It ignores words that it has no
// parameter for. No record needs more of them.
constexpr std::size_t kMostWords = 20;

template <std::size_t>
using AnyWord = TargetWord;

template <std::size_t... i>
CK_RV CallWithWords(void* function, const std::array<TargetWord, kMostWords>& words,
                    std::index_sequence<i...>) {
    return reinterpret_cast<CK_RV (*)(AnyWord<i>...)>(function)(words[i]...);
}

}  // namespace

void Put(CK_BYTE* place, std::string_view text) { *std::copy(text.begin(), text.end(), place) = '\0'; }

VendorCallTest::VendorCallTest(LogFormat format_) : format(format_) {
    Set("NewFormat", format == LogFormat::kNew ? "1" : "0");
    Load();
}

CK_BYTE* VendorCallTest::TextAt(std::uintptr_t address, std::string_view text) {
    CK_BYTE* const place = At<CK_BYTE>(address);
    Put(place, text);
    return place;
}

void VendorCallTest::Starts(const std::string& inNewFormat, const std::string& inOldFormat) {
    startChildren = format == LogFormat::kNew ? inNewFormat : inOldFormat;
}

void VendorCallTest::Ends(const Results& results, const std::string& inNewFormat,
                          const std::string& inOldFormat) {
    for (const Result& result : results)
        ExpectRecords(result, format == LogFormat::kNew ? inNewFormat : inOldFormat);
}

std::string VendorCallTest::StartRecordWith(const std::string& children) const {
    const std::string name = function.substr(3);
    if (format == LogFormat::kNew) return "\n\n10:15:30 <id>:STRT" + name + " {" + children + "}";
    return "\nCommand(" + name + ", None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026\n" +  //
           "\n{" + children + "\n}";
}

std::string VendorCallTest::EndRecordWith(const Result& result, const std::string& children) const {
    const std::string name = function.substr(3);
    const std::string rv = result.name;
    if (format == LogFormat::kNew) {
        const std::string shown = result.value == CKR_OK ? rv : "***" + rv + "***";
        return "\n10:15:30 <id>:FINI" + name + " " + shown + "12345clks {" + children + "}";
    }
    return "\nCommand(" + name + ", None, End, " + rv +
           ") PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026\n // 250 clock cycles" +  //
           "\n{" + children + "\n}";
}

void VendorCallTest::ExpectRecords(const Result& result, const std::string& endChildren) {
    SCOPED_TRACE(result.name);
    Restart();
    before();
    script.result = result.value;
    EXPECT_EQ(result.value, MakeCall());
    EXPECT_EQ(WithIds(StartRecordWith(startChildren) + EndRecordWith(result, endChildren)), Log());
    ExpectCallInTarget();
    seenResults.insert(result.value);
}

CK_RV VendorCallTest::MakeCall() {
    std::array<TargetWord, kMostWords> all = {};
    std::copy(words.begin(), words.end(), all.begin());
    return CallWithWords(ExportedAddress(function.c_str()), all, std::make_index_sequence<kMostWords>());
}

void VendorCallTest::ExpectCallInTarget() const {
    ASSERT_EQ(1u, script.received.size());
    const ReceivedCall& received = script.received.front();
    EXPECT_EQ(function, received.function);
    EXPECT_EQ(words,
              std::vector<TargetWord>(received.words.begin(),
                                      received.words.begin() + static_cast<std::ptrdiff_t>(words.size())));
}

std::string VendorCallTest::CaseName() const {
    const std::string test = testing::UnitTest::GetInstance()->current_test_info()->name();
    return test.substr(0, test.find('/'));
}

void VendorCallTest::TearDown() {
    if (!CaseName().starts_with("CA_")) return;
    EXPECT_EQ(CaseName(), function);
    for (const Result& result : kEveryResult) EXPECT_EQ(1u, seenResults.count(result.value)) << result.name;
}

INSTANTIATE_TEST_SUITE_P(Log, VendorRecords, testing::Values(LogFormat::kNew, LogFormat::kOld), FormatName);
