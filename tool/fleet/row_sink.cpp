#include "tool/fleet/row_sink.h"

#include <fmt/format.h>

#include <filesystem>

#include "reader/log_family.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"

namespace ckscribe {

void RowSink::OnCall(const Call& call) {
    if (call.format != LogFormat::kEvents) {
        ++callsOfText;
        return;
    }
    AddCallRow(rows, host, log, positions.Next(call), call);
}

std::string LogNameOf(const std::string& path) {
    const std::string log = ReadRotatedName(path).log;
    std::error_code error;
    const std::filesystem::path whole = std::filesystem::absolute(log, error);
    return path == "-" || error ? log : whole.lexically_normal().string();
}

void SayTextLog(const std::string& path) {
    Say(fmt::format(
        "{}: records of a text log have no run, which tells a call from its repeats, and are left out. The "
        "key Events makes the library write events (docs/events.md).",
        Harmless(path)));
}

}  // namespace ckscribe
