#include "tool/page/page_details.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tests/reader/collected_calls.h"
#include "tool/page/report_page.h"

namespace ckscribe {
namespace {

// A MadeCall is one call of an events file. Its `second` counts from 12:00:00 UTC.
struct MadeCall {
    std::string function = "C_Sign";
    unsigned call = 1;
    unsigned second = 0;
    std::uint64_t nanoseconds = 181'234;
    std::string result = "CKR_OK";
    bool hasEnd = true;
};

std::string Lines(const MadeCall& made) {
    char common[300];
    std::snprintf(common, sizeof common,
                  R"("time":"2026-11-21T12:%02u:%02u.250000000Z",)"
                  R"(%%s"run":"18a3-5","pid":71,"tid":72,"call":%u,"function":"%s",)",
                  made.second / 60, made.second % 60, made.call, made.function.c_str());
    char start[500];
    std::snprintf(start, sizeof start, common, "");
    char ns[50];
    std::snprintf(ns, sizeof ns, "\"ns\":%llu,", static_cast<unsigned long long>(made.nanoseconds));
    char end[500];
    std::snprintf(end, sizeof end, common, ns);
    std::string lines = std::string(R"({"event":"start",)") + start + "\"in\":[]}\n";
    if (made.hasEnd) {
        lines += std::string(R"({"event":"end",)") + end +
                 "\"rv\":" + (made.result == "CKR_OK" ? "0" : "160") + ",\"result\":\"" + made.result +
                 "\",\"in\":[],\"out\":[]}\n";
    }
    return lines;
}

nlohmann::json DetailsOf(const std::string& log) {
    PageDetails details(true);
    for (const KeptCall& call : ReadLog(log).calls) details.Take(call.Get());
    return nlohmann::json::parse(details.Json({"a.jsonl"}));
}

TEST(PageDetails, LogWithoutCalls_HasNoTimesAndNoCalls) {
    const nlohmann::json details = DetailsOf("");
    EXPECT_TRUE(details["first"].is_null());
    EXPECT_TRUE(details["last"].is_null());
    EXPECT_EQ(details["calls"], nlohmann::json::array());
    EXPECT_EQ(details["bins"]["calls"], nlohmann::json::array());
    EXPECT_EQ(details["latency"], nlohmann::json::object());
    EXPECT_EQ(details["left_out"], "The page holds all 0 calls.");
}

TEST(PageDetails, Call_ShowsEverythingThatTheLogSaysOfIt) {
    const std::string lines = Lines({"C_Login", 3, 7, 2'500'000, "CKR_PIN_INCORRECT"});
    const nlohmann::json details = DetailsOf(lines);
    ASSERT_EQ(details["calls"].size(), 1U);
    const nlohmann::json& call = details["calls"][0];
    EXPECT_EQ(details["functions"][call["function"].get<unsigned>()], "C_Login");
    EXPECT_EQ(details["threads"][call["thread"].get<unsigned>()], "71 / 72");
    EXPECT_EQ(details["base"], 1795262407250);  // 2026-11-21 12:00:07.25
    EXPECT_EQ(call["start"], 0.0);
    EXPECT_EQ(call["ns"], 2'500'000);
    EXPECT_EQ(call["result"], "CKR_PIN_INCORRECT");
    EXPECT_EQ(call["text"], "C_Login() = CKR_PIN_INCORRECT");
    EXPECT_EQ(call["place"], "a.jsonl:1");
    // The end of an event repeats its start.
    EXPECT_EQ(call["records"], lines.substr(lines.find('\n') + 1, lines.size() - lines.find('\n') - 2));
}

TEST(PageDetails, TextRecords_AreShownWithStartAndEnd) {
    const nlohmann::json details = DetailsOf(
        "\n\n10:15:30 01234-567:STRTLogin {Sesn=5 User=1 PIN=\"********\" }\n10:15:30 01234-567:FINILogin "
        "CKR_OK1clks {}\n");
    EXPECT_EQ(details["calls"][0]["records"], "{Sesn=5 User=1 PIN=\"********\" }\n{}");
}

TEST(PageDetails, LongRecordsOfManyCalls_AreCutBeforeACallIsLeftOut) {
    std::string log;
    for (unsigned i = 1; i <= 3000; ++i) {
        MadeCall made;
        made.call = i;
        made.hasEnd = i > 500;
        std::string lines = Lines(made);
        const std::size_t in = lines.rfind("\"in\":[") + 6;
        lines.insert(in, R"({"kind":"ByteString","size":3000,"text":")" + std::string(3000, 'x') + "\"}");
        log += lines;
    }
    const nlohmann::json details = DetailsOf(log);
    // These are the 1000 slowest, 500 without an end, and the function's first and last 20.
    EXPECT_GE(details["calls"].size(), 1500U);
    EXPECT_NE(details["left_out"].get<std::string>().find("Long records are shown as their beginning."),
              std::string::npos);
    EXPECT_LE(details.dump().size(), PageDetails::kLargestJson + 500'000);
}

TEST(PageDetails, TimesOfCalls_CountFromTheFirstCall) {
    MadeCall later;
    later.call = 2;
    later.second = 61;
    const nlohmann::json details = DetailsOf(Lines({}) + Lines(later));
    EXPECT_EQ(details["first"], 0.0);
    EXPECT_EQ(details["last"], 61'000.0);
    EXPECT_EQ(details["calls"][0]["start"], 0.0);
    EXPECT_EQ(details["calls"][1]["start"], 61'000.0);
}

TEST(PageDetails, CallWithoutAnEnd_HasNeitherResultNorDuration) {
    MadeCall made;
    made.hasEnd = false;
    const nlohmann::json details = DetailsOf(Lines(made));
    EXPECT_TRUE(details["calls"][0]["result"].is_null());
    EXPECT_TRUE(details["calls"][0]["ns"].is_null());
    EXPECT_EQ(details["calls"][0]["text"], "C_Sign() = ?");
}

TEST(PageDetails, LogOfManyCalls_KeepsTheSlowestAndTheFirstAndLastOfEachFunctionAndError) {
    std::string log;
    for (unsigned i = 1; i <= 3000; ++i) {
        MadeCall made;
        made.call = i;
        made.second = i / 2;
        // The 1000 slowest successful calls are those of 1001 to 2000.
        made.nanoseconds = i > 1000 && i <= 2000 ? 1'000'000 + i : i;
        if (i >= 2500 && i < 2600) made.result = "CKR_PIN_INCORRECT";
        log += Lines(made);
    }
    const nlohmann::json details = DetailsOf(log);
    // These are the 1000 slowest, the function's first and last 20, and the error's first and last 20.
    EXPECT_EQ(details["calls"].size(), 1080U);
    EXPECT_EQ(
        details["left_out"],
        "The page holds 1080 of 3000 calls: the 1000 slowest, the first and the last 20 of each function "
        "and of each error, and 0 of 0 without an end. The figures and the charts of functions and errors "
        "count all calls.");
    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    for (const auto& bin : details["bins"]["calls"]) calls += bin.get<std::uint64_t>();
    for (const auto& bin : details["bins"]["errors"]) errors += bin.get<std::uint64_t>();
    EXPECT_EQ(calls, 3000U);
    EXPECT_EQ(errors, 100U);
    EXPECT_LE(details["bins"]["calls"].size(), 400U);
    std::uint64_t drawn = 0;
    for (const auto& bar : details["latency"]["C_Sign"]) drawn += bar[1].get<std::uint64_t>();
    EXPECT_EQ(drawn, 3000U);
}

TEST(CallsOverTime, GrowingSpan_DoublesTheWidthAndLosesNoCall) {
    CallsOverTime overTime;
    for (std::int64_t second = 0; second < 1000; ++second)
        overTime.Add((5000 - second) * kNanosecondsPerSecond, false, second % 10 == 0);
    EXPECT_EQ(overTime.Width(), 4 * kNanosecondsPerSecond);
    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    for (const auto& [index, bin] : overTime.Bins()) {
        calls += bin.calls;
        errors += bin.errors;
    }
    EXPECT_EQ(calls, 1000U);
    EXPECT_EQ(errors, 100U);
}

TEST(CallsOverTime, TimesBefore1970_LieInTheBinBelow) {
    CallsOverTime overTime;
    overTime.Add(-1, false, false);
    EXPECT_EQ(overTime.Bins().begin()->first, -1);
}

TEST(ReportPage, TextOfTheLog_CannotBecomeMarkup) {
    const std::string page = ReportPage(R"({"a":"</script><b>"})", R"({"b":"<!-- @SCRIPT@ @DETAILS@"})");
    ASSERT_TRUE(CanMakeReportPage());
    EXPECT_NE(
        page.find(R"(<script type="application/json" id="report">{"a":"\u003c/script>\u003cb>"}</script>)"),
        page.npos);
    EXPECT_NE(page.find(R"(id="details">{"b":"\u003c!-- @SCRIPT@ @DETAILS@"}</script>)"), page.npos);
    EXPECT_EQ(page.find("@STYLE@"), page.npos);
    EXPECT_EQ(page.find("@CHART@"), page.npos);
    EXPECT_EQ(page.rfind("</html>\n"), page.size() - 8);
}

}  // namespace
}  // namespace ckscribe
