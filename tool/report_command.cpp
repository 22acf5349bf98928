#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "tool/exit_status.h"
#include "tool/fleet/engine_report.h"
#include "tool/harmless_text.h"
#include "tool/log_arguments.h"
#include "tool/messages.h"
#include "tool/page/page_details.h"
#include "tool/page/report_page.h"
#include "tool/progress_bar.h"
#include "tool/report_data.h"
#include "tool/report_json.h"
#include "tool/report_text.h"
#include "tool/show/call_filter.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Examples:\n"
    "  ckscribe report --top 20 calls.log calls.log.1 calls.log.2.gz\n"
    "  ckscribe report --clickhouse http://log:8123/ --since 24h\n";

struct Options {
    LogArguments logs;
    bool isJson = false;
    bool isListOfUnreadable = false;
    std::string page;
    std::string engine;
    std::string since;
    std::size_t top = 10;
    CLI::Option* topOption = nullptr;
};

// JSON is for programs, and these can leave out rows themselves.
constexpr std::size_t kTopOfJson = 1000;

// Prints each stretch that no record could be read from, with its place.
class UnreadableLister : public LogSink {
public:
    explicit UnreadableLister(const std::vector<std::string>& paths) : paths(paths) {}
    void OnCall(const Call&) override {}
    void OnUnreadable(const UnreadableStretch& stretch) override {
        fmt::print("{}:{}: {} {}: {}\n", Harmless(paths[stretch.place.file]), stretch.place.line,
                   stretch.lines, stretch.lines == 1 ? "line" : "lines", Harmless(stretch.beginning));
    }

private:
    const std::vector<std::string>& paths;
};

// Builds the report and, for a page, the details that only the page shows.
class ReportSink : public LogSink {
public:
    explicit ReportSink(const Options& options)
        : hasPage(!options.page.empty()), details(options.logs.isUtc) {}

    void OnLogBegin(const std::vector<std::uint32_t>& files) override { builder.OnLogBegin(files); }
    void OnCall(const Call& call) override {
        builder.OnCall(call);
        if (hasPage) details.Take(call);
    }
    void OnUnreadable(const UnreadableStretch& stretch) override { builder.OnUnreadable(stretch); }
    void OnLogEnd(std::optional<std::int64_t> firstDay) override { builder.OnLogEnd(firstDay); }

    ReportBuilder builder;

private:
    bool hasPage;

public:
    PageDetails details;
};

// Returns whether the path is one of the logs. A slip in the order of words must not overwrite a log.
bool IsOneOf(const std::string& path, const std::vector<std::string>& logs) {
    return std::ranges::any_of(logs, [&path](const std::string& log) {
        std::error_code missing;
        return std::filesystem::equivalent(path, log, missing);
    });
}

bool WritePage(const std::string& path, const std::string& page) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << page << std::flush;
    if (file.good()) return true;
    Say(fmt::format("{}: the page cannot be written: {}.", Harmless(path), std::strerror(errno)));
    return false;
}

std::size_t TopOf(const Options& options) {
    return options.topOption->count() != 0 ? options.top : kTopOfJson;
}

// Returns the report's page. Its lists get shorter where the calls have no room otherwise.
std::string PageOf(const Report& report, const PageDetails& details, const Options& options) {
    constexpr std::size_t kLeastRoom = 2'000'000;
    constexpr std::size_t kShortestList = 20;
    std::size_t top = TopOf(options);
    std::string json = ReportAsJson(report, top);
    while (RoomForDetails(json) < kLeastRoom && top > kShortestList) json = ReportAsJson(report, top /= 2);
    // The size of the calls is an estimate.
    const std::size_t room = RoomForDetails(json);
    return ReportPage(
        json, details.Json(options.logs.paths, std::min(room - room / 50, PageDetails::kLargestJson)));
}

void Print(const Report& report, const Options& options) {
    const std::string text =
        options.isJson
            ? ReportAsJson(report, TopOf(options))
            : ReportAsText(report, {Palette::For(fileno(stdout)), options.top, options.logs.isUtc});
    fmt::print("{}", text);
}

// Returns the moment in nanoseconds since 1970 at which the report begins.
std::uint64_t FirstMoment(const Options& options) {
    if (options.since.empty()) return 0;
    const Moment now{std::int64_t{std::time(nullptr)} * kNanosecondsPerSecond, TimeScale::kUtc};
    const auto since = ParseMoment(options.since, now, options.logs.isUtc);
    if (!since)
        throw CLI::ValidationError("--since",
                                   "not a moment like 2026-11-21T14:00, 14:00 or 24h: " + options.since);
    return static_cast<std::uint64_t>(std::max<std::int64_t>(*since, 0));
}

int RunOnEngine(const Options& options) {
    const auto require = [](bool holds, const char* sentence) {
        if (!holds) throw CLI::ValidationError(sentence);
    };
    require(options.logs.paths.empty(), "--clickhouse reports on what the server has, and takes no FILE");
    require(options.page.empty(), "--html needs files: a page shows single calls");
    require(!options.isListOfUnreadable, "--unreadable needs files: a server has only what can be read");
    require(options.logs.date.empty(), "--date is for text logs, which no server has");
    const std::uint64_t since = FirstMoment(options);
    try {
        Engine engine(options.engine);
        Print(ReportFromEngine(engine, since), options);
        return kWell;
    } catch (const EngineError& error) {
        Say(error.what());
        return kNotWell;
    }
}

int Run(const Options& options) {
    if (!options.engine.empty()) return RunOnEngine(options);
    if (!options.since.empty())
        throw CLI::ValidationError(
            "--since belongs to --clickhouse; for files there is ckscribe show --since");
    if (options.logs.paths.empty()) throw CLI::RequiredError("FILE");
    const std::vector<std::string>& paths = options.logs.paths;
    ReadingOptions reading = options.logs.Reading();
    auto bar = std::make_unique<ProgressBar>();
    reading.onProgress = [&bar](const ReadingProgress& progress) { bar->Show(progress); };
    if (options.isListOfUnreadable) {
        UnreadableLister lister(paths);
        const std::vector<FileReading> files = ReadLogs(paths, reading, lister);
        bar.reset();
        return SayUnreadFiles(paths, files);
    }
    if (!options.page.empty() && !CanMakeReportPage()) {
        Say("This ckscribe was built without the chart library that a page needs (libjs-chart.js).");
        return kNotWell;
    }
    if (!options.page.empty() && IsOneOf(options.page, paths)) {
        Say(fmt::format("{} is one of the logs. The page needs a file of its own: report --html OUT FILE...",
                        Harmless(options.page)));
        return kWrongUse;
    }
    // The page shows the calls with their dates.
    reading.needsDates = !options.page.empty();
    ReportSink sink(options);
    const std::vector<FileReading> files = ReadLogs(paths, reading, sink);
    bar.reset();
    const Report report = sink.builder.Finish(paths, files);
    if (!options.page.empty()) {
        if (!WritePage(options.page, PageOf(report, sink.details, options))) return kNotWell;
    }
    if (options.page.empty() || options.isJson) Print(report, options);
    std::fflush(stdout);
    return SayUnreadFiles(paths, files);
}

}  // namespace

void AddReportCommand(CLI::App& app, int& status) {
    CLI::App* const report =
        app.add_subcommand("report", "Summarize logs: what failed, what was slow, what never came back");
    report->footer(kExample);
    const auto options = std::make_shared<Options>();
    options->logs.AddTo(*report)->required(false);
    options->logs.AddUtcTo(*report);
    report->add_flag("--json", options->isJson, "Print one JSON object (share/ckscribe/report.schema.json)");
    options->topOption =
        report->add_option("--top", options->top, "The most rows of each list; 10 if nothing is said")
            ->type_name("NUMBER");
    report
        ->add_option("--html", options->page,
                     "Write one page for a browser, which needs no network, into this file")
        ->type_name("OUT");
    report->add_flag("--unreadable", options->isListOfUnreadable,
                     "List what cannot be read, with file and line, instead of a report");
    report
        ->add_option("--clickhouse", options->engine,
                     "Report on the calls that this server has (http://host:8123/?database=...)")
        ->type_name("URL");
    report
        ->add_option("--since", options->since,
                     "With --clickhouse: calls from then on: 2026-11-21T14:00, 14:00, 24h")
        ->type_name("MOMENT");
    report->callback([options, &status] { status = Run(*options); });
}

}  // namespace ckscribe
