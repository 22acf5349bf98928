#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <memory>
#include <thread>
#include <utility>

#include "reader/log_family.h"
#include "tool/exit_status.h"
#include "tool/log_arguments.h"
#include "tool/messages.h"
#include "tool/progress_bar.h"
#include "tool/show/followed_log.h"
#include "tool/show/shown_calls.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Examples:\n"
    "  ckscribe show --errors --last 10m calls.log\n"
    "  ckscribe show -f --slower 5ms events.jsonl\n";

constexpr auto kPause = std::chrono::milliseconds(100);

struct Options {
    LogArguments logs;
    CallFilter filter;
    std::size_t context = 0;
    bool isRecords = false;
    bool isFollowing = false;
};

void SayMissedDurations(const CallFilter& filter) {
    if (!filter.HasMissedDurations()) return;
    Say("Text logs hold no durations, so --slower shows none of their calls. Events have them "
        "(docs/events.md).");
}

// A time of day can be converted to UTC only with its date.
bool NeedsDates(const Options& options) { return options.filter.NeedsTimes() || options.logs.isUtc; }

// Finds the log's last record, which the filter must know before it shows the first call.
class Survey : public LogSink {
public:
    void OnCall(const Call&) override {}
    void OnLogSurveyed(const Moment& moment) override { lastRecord = moment; }
    void OnLogEnd(std::optional<std::int64_t> day) override { firstDay = day; }

    Moment lastRecord;
    std::optional<std::int64_t> firstDay;
};

bool CanBeReadTwice(const std::string& path) {
    struct stat status {};
    return path != "-" && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// A Followed is one log that is followed. Logs have times of their own, and threads whose numbers may be the
// same.
struct Followed {
    Followed(const CallFilter& selection, const ShowStyle& style, std::vector<std::string> files)
        : paths(std::move(files)), filter(selection), shown(filter, style), log(paths, shown) {}

    // The log counts as made now if nothing says when it was made.
    void SetDates(const ReadingOptions& options) {
        Survey survey;
        ReadingOptions reading = options;
        reading.needsDates = true;
        if (CanBeReadTwice(paths.back())) ReadLogs(paths, reading, survey);
        const std::int64_t now = std::time(nullptr);
        filter.SetLog(survey.lastRecord.IsThere() ? survey.lastRecord
                                                  : Moment{now * kNanosecondsPerSecond, TimeScale::kUtc});
        log.SetFirstDay(survey.firstDay.value_or(options.date.value_or(LocalDayOf(now))));
    }

    std::vector<std::string> paths;
    CallFilter filter;
    ShownCalls shown;
    FollowedLog log;
};

// Runs until it is interrupted. Ends earlier if no log can grow any more.
int Follow(const Options& options, const ShowStyle& style) {
    std::vector<std::unique_ptr<Followed>> logs;
    for (const LogFamily& family : FamiliesOf(options.logs.paths)) {
        std::vector<std::string> paths;
        for (const std::uint32_t file : family) paths.push_back(options.logs.paths[file]);
        logs.push_back(std::make_unique<Followed>(options.filter, style, std::move(paths)));
        if (NeedsDates(options)) logs.back()->SetDates(options.logs.Reading());
    }
    bool hasSaid = false;
    while (true) {
        bool isNews = false;
        for (const auto& each : logs) isNews |= each->log.Read();
        ShownCalls::Flush();
        for (const auto& each : logs) {
            if (hasSaid || !each->filter.HasMissedDurations()) continue;
            SayMissedDurations(each->filter);
            hasSaid = true;
        }
        if (std::ranges::all_of(logs, [](const auto& each) { return each->log.IsEnded(); })) break;
        if (!isNews) std::this_thread::sleep_for(kPause);
    }
    return std::ranges::any_of(logs, [](const auto& each) { return each->log.IsUseless(); }) ? kNotWell
                                                                                             : kWell;
}

int Run(Options& options) {
    options.filter.Prepare(options.logs.isUtc);
    ShowStyle style;
    style.line = {Palette::For(STDOUT_FILENO), options.logs.isUtc};
    style.context = options.context;
    style.isRecords = options.isRecords;
    if (options.isFollowing) return Follow(options, style);

    ShownCalls calls(options.filter, style);
    ReadingOptions reading = options.logs.Reading();
    reading.needsDates = NeedsDates(options);
    auto bar = std::make_unique<ProgressBar>();
    // Lines and a bar on one terminal would overwrite each other.
    if (isatty(STDOUT_FILENO) == 0)
        reading.onProgress = [&bar](const ReadingProgress& progress) { bar->Show(progress); };
    const std::vector<FileReading> files = ReadLogs(options.logs.paths, reading, calls);
    bar.reset();
    ShownCalls::Flush();
    SayMissedDurations(options.filter);
    return SayUnreadFiles(options.logs.paths, files);
}

}  // namespace

void AddShowCommand(CLI::App& app, int& status) {
    CLI::App* const show = app.add_subcommand("show", "Show the calls of logs, one line each");
    show->footer(kExample);
    const auto options = std::make_shared<Options>();
    options->logs.AddTo(*show);
    options->logs.AddUtcTo(*show);
    options->filter.AddTo(*show);
    show->add_option("--context", options->context,
                     "Also this many calls of the same thread before and behind")
        ->type_name("NUMBER");
    show->add_flag("--records", options->isRecords, "Print the records as they stand in the log");
    show->add_flag("-f,--follow", options->isFollowing, "Go on with what is appended, also across rotation");
    show->callback([options, &status] { status = Run(*options); });
}

}  // namespace ckscribe
