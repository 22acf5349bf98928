#include "tool/fleet/row_sink.h"

#include <fmt/format.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "reader/log_family.h"
#include "tool/convert/value_json.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"

namespace ckscribe {

void RowSink::OnCall(const Call& call) {
    if (call.format != LogFormat::kEvents) {
        ++callsOfText;
        return;
    }
    constexpr std::size_t kMostDays = 100;
    const std::int64_t day = call.start.nanoseconds / (kSecondsPerDay * kNanosecondsPerSecond);
    if (days.size() == kMostDays && !days.contains(day)) {
        insertions.push_back(rows.size());
        days.clear();
    }
    days.insert(day);
    AddCallRow(rows, host, log, positions.Next(call), call);
}

std::vector<std::string_view> RowSink::Insertions() const {
    std::vector<std::string_view> all;
    std::size_t begin = 0;
    for (const std::size_t next : insertions) {
        all.push_back(std::string_view(rows).substr(begin, next - begin));
        begin = next;
    }
    if (begin != rows.size()) all.push_back(std::string_view(rows).substr(begin));
    return all;
}

void RowSink::DropRows() {
    rows.clear();
    insertions.clear();
    days.clear();
}

std::string LogNameOf(const std::string& path) {
    const std::string log = ReadRotatedName(path).log;
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(log, error);
    const nlohmann::ordered_json name = path == "-" || error ? log : whole.lexically_normal().string();
    return nlohmann::ordered_json::parse(LineOf(name)).get<std::string>();
}

void SayTextLog(const std::string& path) {
    Say(fmt::format(
        "{}: records of a text log have no run, which tells a call from its repeats, and are left out. The "
        "key Events makes the library write events (docs/events.md).",
        Harmless(path)));
}

}  // namespace ckscribe
