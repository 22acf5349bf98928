#include <unistd.h>

#include <cstdio>
#include <memory>

#include "tool/convert/call_writers.h"
#include "tool/exit_status.h"
#include "tool/log_arguments.h"
#include "tool/progress_bar.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Examples:\n"
    "  ckscribe convert --to csv calls.log >calls.csv\n"
    "  ckscribe convert --to trace events.jsonl >trace.json\n";

struct Options {
    LogArguments logs;
    std::string format;
};

std::unique_ptr<CallWriter> MakeWriter(const Options& options) {
    if (options.format == "csv") return MakeTableWriter(options.logs.paths);
    if (options.format == "trace") return MakeTraceWriter();
    return MakeEventWriter();
}

int Run(const Options& options) {
    ReadingOptions reading = options.logs.Reading();
    // Events say no more than the log does.
    reading.needsDates = options.format != "jsonl";
    auto bar = std::make_unique<ProgressBar>();
    if (isatty(STDOUT_FILENO) == 0)
        reading.onProgress = [&bar](const ReadingProgress& progress) { bar->Show(progress); };
    const std::unique_ptr<CallWriter> writer = MakeWriter(options);
    const std::vector<FileReading> files = ReadLogs(options.logs.paths, reading, *writer);
    writer->Finish();
    std::fflush(stdout);
    bar.reset();
    return SayUnreadFiles(options.logs.paths, files);
}

}  // namespace

void AddConvertCommand(CLI::App& app, int& status) {
    CLI::App* const convert = app.add_subcommand("convert", "Turn logs into what other programs open");
    convert->footer(kExample);
    const auto options = std::make_shared<Options>();
    options->logs.AddTo(*convert);
    convert
        ->add_option("--to", options->format,
                     "What to write: jsonl (events), csv (a table), trace (Trace Event format)")
        ->required()
        ->check(CLI::IsMember({"jsonl", "csv", "trace"}));
    convert->callback([options, &status] { status = Run(*options); });
}

}  // namespace ckscribe
