#include "tests/vendor_calls/vendor_records.h"

#include <nlohmann/json.hpp>
#include <sstream>
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

// Returns the kinds of the children of a record: what stands before the first bracket on lines of the first
// depth.
std::vector<std::string> KindsInOldFormat(const std::string& children) {
    std::vector<std::string> kinds;
    std::istringstream lines(children);
    for (std::string line; std::getline(lines, line);) {
        const bool isChild = line.starts_with("   ") && line[3] != ' ' && line[3] != '{' && line[3] != '}';
        if (!isChild) continue;
        kinds.push_back(line.substr(3, line.find_first_of("(;") - 3));
        if (kinds.back().starts_with("ByteBoolean")) kinds.back() = "ByteBoolean";
        if (kinds.back().starts_with("MechanismCKM_")) kinds.back() = "Mechanism";
        // Values stand on the line of the child in front of them.
        for (std::size_t at = line.find(";Value("); at != line.npos; at = line.find(";Value(", at + 1))
            kinds.push_back("Value");
    }
    return kinds;
}

// Returns the kinds of the children of an event. A PIN counts as a byte string, as in records.
std::vector<std::string> KindsInEvent(const nlohmann::json& children) {
    std::vector<std::string> kinds;
    for (const nlohmann::json& child : children) {
        const std::string kind = child.at("kind");
        kinds.push_back(kind == "PIN" ? "ByteString" : kind);
    }
    return kinds;
}

}  // namespace

void Put(CK_BYTE* place, std::string_view text) { *std::copy(text.begin(), text.end(), place) = '\0'; }

VendorCallTest::VendorCallTest(LogFormat format_) : format(format_) {
    Set("NewFormat", format == LogFormat::kNew ? "1" : "0");
    Set("Events", EventsPath());
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
    WriteFile(EventsPath(), "");
    Restart();
    before();
    script.result = result.value;
    EXPECT_EQ(result.value, MakeCall());
    EXPECT_EQ(WithIds(StartRecordWith(startChildren) + EndRecordWith(result, endChildren)), Log());
    ExpectCallInTarget();
    ExpectEvents(result, endChildren);
    seenResults.insert(result.value);
}

void VendorCallTest::ExpectEvents(const Result& result, const std::string& endChildren) const {
    std::istringstream lines(Events());
    std::vector<nlohmann::json> events;
    for (std::string line; std::getline(lines, line);) events.push_back(nlohmann::json::parse(line));
    ASSERT_EQ(2u, events.size());
    for (const nlohmann::json& event : events) EXPECT_EQ(function, event["function"]);
    EXPECT_EQ("start", events[0]["event"]);
    EXPECT_EQ("end", events[1]["event"]);
    EXPECT_EQ(events[0]["in"], events[1]["in"]);
    EXPECT_EQ(events[0]["call"], events[1]["call"]);
    EXPECT_EQ(result.value, events[1]["rv"].get<CK_RV>());
    if (format == LogFormat::kNew) return;
    EXPECT_EQ(KindsInOldFormat(startChildren), KindsInEvent(events[0]["in"]));
    EXPECT_EQ(KindsInOldFormat(endChildren), KindsInEvent(events[1]["out"]));
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
