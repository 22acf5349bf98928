#include "tool/log_arguments.h"

#include <fmt/format.h>

#include <charconv>

#include "tool/exit_status.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"
#include "util/calendar_date.h"

namespace ckscribe {

CLI::Option* LogArguments::AddTo(CLI::App& command) {
    CLI::Option* const files =
        command
            .add_option("FILE", paths,
                        "Logs of either text format, events, or all of them; - is standard input")
            ->required();
    command.add_option("--date", date, "Day of each log's last record (2026-11-21), for the new text format")
        ->type_name("DATE");
    return files;
}

void LogArguments::AddUtcTo(CLI::App& command) {
    command.add_flag("--utc", isUtc, "Show times in UTC instead of local time");
}

ReadingOptions LogArguments::Reading() const {
    ReadingOptions options;
    if (date.empty()) return options;
    options.date = ParseDate(date);
    if (!options.date) throw CLI::ValidationError("--date", "not a date like 2026-11-21: " + date);
    return options;
}

std::optional<std::int64_t> ParseDate(std::string_view text) {
    int parts[3] = {};
    const char* position = text.data();
    const char* const end = text.data() + text.size();
    for (int i = 0; i < 3; ++i) {
        if (i != 0 && (position == end || *position++ != '-')) return std::nullopt;
        const auto [behind, error] = std::from_chars(position, end, parts[i]);
        if (error != std::errc() || behind == position) return std::nullopt;
        position = behind;
    }
    const auto [year, month, day] = parts;
    if (position != end || year < 1970 || !HasNanoseconds(year) || month < 1 || month > 12 || day < 1)
        return std::nullopt;
    const auto ofYear = static_cast<unsigned>(month);
    const auto ofMonth = static_cast<unsigned>(day);
    if (ofMonth > DaysOfMonth(static_cast<unsigned>(year), ofYear)) return std::nullopt;
    return DaysSince1970(year, ofYear, ofMonth);
}

int SayUnreadFiles(const std::vector<std::string>& paths, const std::vector<FileReading>& files) {
    int status = kWell;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const std::string name = Harmless(paths[i]);
        if (!files[i].error.empty()) {
            Say(fmt::format("{}: {}.", name, files[i].error));
        } else if (files[i].IsUseless()) {
            Say(fmt::format("{}: it holds no record of a call.", name));
        }
        if (files[i].IsUseless()) status = kNotWell;
    }
    return status;
}

}  // namespace ckscribe
