#include "tool/call_table.h"

#include <fmt/core.h>

#include <algorithm>
#include <string_view>
#include <vector>

#include "tool/call_line.h"
#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

constexpr char kColumns[] = "{:<{}} {:>9} {:>9} {:>12} {:>11} {:>11} {:>11} {:>11} {:>11}\n";

std::string Percentile(const LatencyHistogram& times, double percent) {
    const auto found = times.Percentile(percent);
    return found ? SecondsText(*found) : "-";
}

}  // namespace

void CallTable::Add(const Call& call) {
    Row& row = rows_[std::string(call.Function())];
    ++row.calls;
    row.errors += call.IsError() ? 1 : 0;
    if (call.nanoseconds) row.times.Add(*call.nanoseconds);
}

std::string CallTable::Line(const std::string& name, std::size_t width, const Row& row) {
    const LatencyHistogram& times = row.times;
    const bool isTimed = times.Count() != 0;
    return fmt::format(
        kColumns, name, width, row.calls, row.errors, isTimed ? SecondsText(times.Total()) : "-",
        isTimed ? SecondsText(times.Total() / times.Count()) : "-", Percentile(times, 50),
        Percentile(times, 95), Percentile(times, 99), isTimed ? SecondsText(times.Maximum()) : "-");
}

std::string CallTable::Text() const {
    Row total;
    std::size_t width = std::string_view("function").size();
    std::vector<std::pair<std::string, const Row*>> sorted;
    for (const auto& [name, row] : rows_) {
        sorted.emplace_back(Harmless(name), &row);
        width = std::max(width, sorted.back().first.size());
        total.calls += row.calls;
        total.errors += row.errors;
        total.times.Add(row.times);
    }
    std::ranges::stable_sort(sorted, std::ranges::greater(),
                             [](const auto& each) { return each.second->times.Total(); });

    std::string text = fmt::format(kColumns, "function", width, "calls", "errors", "total s", "mean s",
                                   "p50 s", "p95 s", "p99 s", "max s");
    for (const auto& [name, row] : sorted) text += Line(name, width, *row);
    return text + Line("total", width, total);
}

}  // namespace ckscribe
