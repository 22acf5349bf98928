#include "tool/page/page_details.h"

#include <algorithm>
#include <ctime>
#include <nlohmann/json.hpp>
#include <tuple>

#include "reader/log_reading.h"
#include "tool/call_line.h"

namespace ckscribe {
namespace {

using nlohmann::ordered_json;

constexpr std::int64_t kPreciseWidth = 10'000'000;  // 10 ms
constexpr std::int64_t kCoarseWidth = kNanosecondsPerSecond;

// The page shows only so many bytes of a call's records. If the page becomes too large, the next number
// counts.
constexpr std::size_t kLongestRecords[] = {4000, 1000, 250, 0};

// The page draws fewer bars than a histogram has buckets: 8 for each power of two.
constexpr unsigned kBucketsInBar = 1U << (kLatencyBucketBits - 3);

std::int64_t FloorOf(std::int64_t number, std::int64_t divisor) {
    return number / divisor - (number % divisor < 0 ? 1 : 0);
}

constexpr std::int64_t kNanosecondsPerMillisecond = 1'000'000;

double Milliseconds(std::int64_t nanoseconds) {
    return static_cast<double>(nanoseconds) / kNanosecondsPerMillisecond;
}

bool IsBefore(const Place& a, const Place& b) { return std::tie(a.file, a.line) < std::tie(b.file, b.line); }

std::string ThreadName(const Call& call) {
    std::string name = std::to_string(call.process);
    if (call.thread) name += " / " + std::to_string(*call.thread);
    return name;
}

std::string PlaceText(const Place& place, const std::vector<std::string>& files) {
    const std::string file = place.file < files.size() ? files[place.file] : std::string();
    return file + ":" + std::to_string(place.line);
}

// Returns the call's records as they stand in the log. The end of an event repeats its start.
std::string RecordsText(const Call& call, std::size_t longest) {
    std::string text;
    const bool isStartRepeated = call.format == LogFormat::kEvents && call.hasEnd;
    for (const std::string_view record :
         {isStartRepeated ? std::string_view() : call.startText, call.endText}) {
        if (record.empty() || longest == 0) continue;
        if (!text.empty()) text += '\n';
        text += record.substr(0, longest);
        if (record.size() > longest) text += "…";
    }
    return text;
}

std::string LineText(const Call& call) {
    std::string text(call.Function());
    text += '(' + ValuesText(call.In()) + ") = " + ResultText(call);
    const std::string out = ValuesText(call.Out());
    if (!out.empty()) text += " {" + out + '}';
    return text;
}

ordered_json BarsOf(const LatencyHistogram& histogram) {
    ordered_json bars = ordered_json::array();
    const std::vector<std::uint64_t>& buckets = histogram.Buckets();
    for (std::size_t begin = 0; begin < buckets.size(); begin += kBucketsInBar) {
        std::uint64_t count = 0;
        for (std::size_t i = begin; i < std::min(begin + kBucketsInBar, buckets.size()); ++i)
            count += buckets[i];
        if (count == 0 && bars.empty()) continue;
        bars.push_back({LatencyBucketBegin(static_cast<std::uint32_t>(begin)), count});
    }
    return bars;
}

// Returns how many bytes JSON takes in a page, which writes each less-than sign as an escape.
std::size_t SizeInPage(const ordered_json& json) {
    const std::string text = json.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
    return text.size() + 5 * static_cast<std::size_t>(std::ranges::count(text, '<'));
}

// Returns the number of a text in a list that grows with each new text.
std::size_t NumberOf(const std::string& text, std::map<std::string, std::size_t>& numbers,
                     ordered_json& list) {
    const auto [place, isNew] = numbers.emplace(text, list.size());
    if (isNew) list.push_back(text);
    return place->second;
}

}  // namespace

void CallsOverTime::Add(std::int64_t nanoseconds, bool isPrecise, bool isError) {
    if (width == 0) width = isPrecise ? kPreciseWidth : kCoarseWidth;
    Bin& bin = bins[FloorOf(nanoseconds, width)];
    ++bin.calls;
    if (isError) ++bin.errors;
    while (bins.rbegin()->first - bins.begin()->first >= kMostBins) Widen();
}

void CallsOverTime::Widen() {
    width *= 2;
    std::map<std::int64_t, Bin> wider;
    for (const auto& [index, bin] : bins) {
        Bin& sum = wider[FloorOf(index, 2)];
        sum.calls += bin.calls;
        sum.errors += bin.errors;
    }
    bins = std::move(wider);
}

void FirstAndLastCalls::Add(const Call& call) {
    if (first.size() < kMost) {
        first.emplace_back(call);
        return;
    }
    if (last.size() == kMost) last.pop_front();
    last.emplace_back(call);
}

void PageDetails::Take(const Call& call) {
    ++callCount;
    const Moment time = call.Time();
    if (time.IsThere()) {
        const std::int64_t calendar = OnCalendar(time);
        if (time.IsDateKnown()) offset = calendar - InUtc(time).nanoseconds;
        firstTime = std::min(firstTime.value_or(calendar), calendar);
        lastTime = std::max(lastTime.value_or(calendar), calendar);
        isPrecise = isPrecise || time.IsPrecise();
        isDated = isDated && time.IsDateKnown();
        overTime.Add(calendar, time.IsPrecise(), call.IsError());
    }
    if (call.nanoseconds) {
        latency[call.Function()].Add(*call.nanoseconds);
        KeepIfSlow(call);
    }
    byFunction[call.Function()].Add(call);
    if (call.IsError()) byError[{call.Function(), std::string(call.result)}].Add(call);
    if (call.IsUnfinished()) {
        ++unfinishedCount;
        if (unfinished.size() < kMostUnfinished) unfinished.emplace_back(call);
    }
}

void PageDetails::KeepIfSlow(const Call& call) {
    if (slow.size() == kMostSlow) {
        if (*call.nanoseconds <= slow.front().nanoseconds) return;
        std::pop_heap(slow.begin(), slow.end());
        slow.pop_back();
    }
    slow.push_back({*call.nanoseconds, KeptCall(call)});
    std::push_heap(slow.begin(), slow.end());
}

// Returns nanoseconds since 1970 began, on the calendar that the page shows.
std::int64_t PageDetails::OnCalendar(const Moment& time) const {
    if (isUtc) return InUtc(time).nanoseconds;
    if (time.scale != TimeScale::kUtc) return time.nanoseconds;
    const std::time_t seconds = FloorOf(time.nanoseconds, kNanosecondsPerSecond);
    std::tm local{};
    localtime_r(&seconds, &local);
    return time.nanoseconds + local.tm_gmtoff * kNanosecondsPerSecond;
}

// Returns each kept call once, in the order of the log.
std::vector<const Call*> PageDetails::KeptCalls() const {
    std::vector<const Call*> calls;
    const auto keep = [&calls](const KeptCall& call) { calls.push_back(&call.Get()); };
    for (const SlowCall& call : slow) keep(call.call);
    for (const auto& [function, kept] : byFunction) kept.ForEach(keep);
    for (const auto& [error, kept] : byError) kept.ForEach(keep);
    for (const KeptCall& call : unfinished) keep(call);
    std::sort(calls.begin(), calls.end(),
              [](const Call* a, const Call* b) { return IsBefore(a->FirstPlace(), b->FirstPlace()); });
    const auto isSame = [](const Call* a, const Call* b) {
        return !IsBefore(a->FirstPlace(), b->FirstPlace()) && !IsBefore(b->FirstPlace(), a->FirstPlace());
    };
    calls.erase(std::unique(calls.begin(), calls.end(), isSame), calls.end());
    return calls;
}

// Adds as many of the calls as there is room for, and returns their number. Each shows at most `longest`
// bytes of its records.
std::size_t PageDetails::AddCalls(ordered_json& details, const std::vector<const Call*>& kept,
                                  std::size_t longest, std::int64_t base,
                                  const std::vector<std::string>& files, std::size_t room) const {
    details["functions"] = ordered_json::array();
    details["threads"] = ordered_json::array();
    details["calls"] = ordered_json::array();
    std::map<std::string, std::size_t> functions;
    std::map<std::string, std::size_t> threads;
    std::size_t size = SizeInPage(details);
    for (const Call* const call : kept) {
        ordered_json row;
        row["function"] = NumberOf(std::string(call->Function()), functions, details["functions"]);
        row["thread"] = NumberOf(ThreadName(*call), threads, details["threads"]);
        if (row["thread"] == threads.size() - 1) size += ThreadName(*call).size() + 3;
        row["start"] =
            call->Time().IsThere()
                ? ordered_json(Milliseconds(OnCalendar(call->Time()) - base * kNanosecondsPerMillisecond))
                : ordered_json();
        row["ns"] = call->nanoseconds ? ordered_json(*call->nanoseconds) : ordered_json();
        row["result"] = call->hasEnd ? ordered_json(std::string(call->result)) : ordered_json();
        row["text"] = LineText(*call);
        row["records"] = RecordsText(*call, longest);
        row["place"] = PlaceText(call->FirstPlace(), files);
        size += SizeInPage(row) + 1;
        if (size > room) break;
        details["calls"].push_back(std::move(row));
    }
    return details["calls"].size();
}

std::string PageDetails::Json(const std::vector<std::string>& files, std::size_t room) const {
    ordered_json details;
    details["precise"] = isPrecise;
    details["dated"] = isDated;
    details["utc"] = isUtc;
    details["files"] = files;
    // Times are milliseconds since this moment: a number of JSON cannot hold the nanoseconds of a date.
    const std::int64_t base = FloorOf(firstTime.value_or(0), kNanosecondsPerMillisecond);
    const auto sinceBase = [base](std::int64_t time) {
        return Milliseconds(time - base * kNanosecondsPerMillisecond);
    };
    // `base` is in milliseconds since 1970 began, on the calendar of the page.
    details["base"] = base;
    // The calendar is so many milliseconds ahead of UTC at the end of the log.
    details["utc_offset"] = offset.value_or(0) / kNanosecondsPerMillisecond;
    details["first"] = firstTime ? ordered_json(sinceBase(*firstTime)) : ordered_json();
    details["last"] = lastTime ? ordered_json(sinceBase(*lastTime)) : ordered_json();

    ordered_json& bins = details["bins"];
    bins["from"] = overTime.Bins().empty() ? 0 : sinceBase(overTime.Bins().begin()->first * overTime.Width());
    bins["width"] = Milliseconds(overTime.Width());
    bins["calls"] = ordered_json::array();
    bins["errors"] = ordered_json::array();
    for (const auto& [index, bin] : overTime.Bins()) {
        const auto place = static_cast<std::size_t>(index - overTime.Bins().begin()->first);
        for (std::size_t empty = bins["calls"].size(); empty < place; ++empty) {
            bins["calls"].push_back(0);
            bins["errors"].push_back(0);
        }
        bins["calls"].push_back(bin.calls);
        bins["errors"].push_back(bin.errors);
    }

    details["latency"] = ordered_json::object();
    for (const auto& [function, histogram] : latency)
        details["latency"][std::string(function)] = BarsOf(histogram);

    std::size_t shown = 0;
    bool isShortened = false;
    const std::vector<const Call*> kept = KeptCalls();
    for (const std::size_t longest : kLongestRecords) {
        isShortened = longest != kLongestRecords[0];
        shown = AddCalls(details, kept, longest, base, files, room);
        if (shown == kept.size()) break;
    }
    details["left_out"] =
        shown == callCount
            ? "The page holds all " + std::to_string(callCount) + " calls."
            : "The page holds " + std::to_string(shown) + " of " + std::to_string(callCount) +
                  " calls: the " + std::to_string(kMostSlow) + " slowest, the first and the last " +
                  std::to_string(FirstAndLastCalls::kMost) + " of each function and of each error, and " +
                  std::to_string(std::min<std::uint64_t>(unfinishedCount, kMostUnfinished)) + " of " +
                  std::to_string(unfinishedCount) +
                  " without an end. The figures and the charts of functions and errors count all calls.";
    if (isShortened)
        details["left_out"] =
            std::string(details["left_out"]) + " Long records are shown as their beginning.";
    return details.dump(-1, ' ', false, ordered_json::error_handler_t::replace);
}

}  // namespace ckscribe
