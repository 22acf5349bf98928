#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>

#include "tool/exit_status.h"
#include "tool/harmless_text.h"
#include "tool/log_arguments.h"
#include "tool/messages.h"
#include "tool/page/page_details.h"
#include "tool/page/report_page.h"
#include "tool/progress_bar.h"
#include "tool/report_data.h"
#include "tool/report_json.h"
#include "tool/report_text.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Example:\n"
    "  ckscribe report --top 20 calls.log calls.log.1 calls.log.2.gz\n";

struct Options {
    LogArguments logs;
    bool isJson = false;
    bool isListOfUnreadable = false;
    std::string page;
    std::size_t top = 10;
    CLI::Option* topOption = nullptr;
};

// JSON is for programs, which can leave out rows themselves.
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

// Returns whether the page was written; says why not.
bool WritePage(const std::string& path, const std::string& page) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << page << std::flush;
    if (file.good()) return true;
    Say(fmt::format("{}: the page cannot be written: {}.", Harmless(path), std::strerror(errno)));
    return false;
}

int Run(const Options& options) {
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
    // The page shows the calls with their dates.
    reading.needsDates = !options.page.empty();
    ReportSink sink(options);
    const std::vector<FileReading> files = ReadLogs(paths, reading, sink);
    bar.reset();
    const Report report = sink.builder.Finish(paths, files);
    const std::size_t top = options.topOption->count() != 0 ? options.top : kTopOfJson;
    if (!options.page.empty()) {
        if (!WritePage(options.page, ReportPage(ReportAsJson(report, top), sink.details.Json(paths))))
            return kNotWell;
    } else if (options.isJson) {
        fmt::print("{}", ReportAsJson(report, top));
    } else {
        fmt::print("{}",
                   ReportAsText(report, {Palette::For(fileno(stdout)), options.top, options.logs.isUtc}));
    }
    std::fflush(stdout);
    return SayUnreadFiles(paths, files);
}

}  // namespace

void AddReportCommand(CLI::App& app, int& status) {
    CLI::App* const report =
        app.add_subcommand("report", "Summarize logs: what failed, what was slow, what never came back");
    report->footer(kExample);
    const auto options = std::make_shared<Options>();
    options->logs.AddTo(*report);
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
    report->callback([options, &status] { status = Run(*options); });
}

}  // namespace ckscribe
