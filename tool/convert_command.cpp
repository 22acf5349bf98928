#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

#include "tool/convert/call_writers.h"
#include "tool/exit_status.h"
#include "tool/fleet/row_writer.h"
#include "tool/fleet/shipping.h"
#include "tool/log_arguments.h"
#include "tool/messages.h"
#include "tool/progress_bar.h"
#include "tool/subcommands.h"
#include "util/json_writer.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Examples:\n"
    "  ckscribe convert --to csv calls.log >calls.csv\n"
    "  ckscribe convert --to trace events.jsonl >trace.json\n"
    "  ckscribe convert --to clickhouse --host web1 --state web1.state --url http://log:8123/ "
    "events.jsonl*\n";

// So many bytes of rows are written or inserted at once.
constexpr std::size_t kWrittenPiece = 1 << 20;
constexpr std::size_t kInsertedPiece = 16 << 20;

struct Options {
    LogArguments logs;
    std::string format;
    std::string host;
    std::string state;
    std::string url;
};

std::unique_ptr<CallWriter> MakeWriter(const Options& options) {
    if (options.format == "csv") return MakeTableWriter(options.logs.paths);
    if (options.format == "trace") return MakeTraceWriter();
    return MakeEventWriter();
}

// Reads the logs from their beginning and gives their calls to the writer.
int Convert(const Options& options, CallWriter& writer) {
    ReadingOptions reading = options.logs.Reading();
    // Events need no dates: they say no more than the log does.
    reading.needsDates = options.format == "csv" || options.format == "trace";
    auto bar = std::make_unique<ProgressBar>();
    if (isatty(STDOUT_FILENO) == 0)
        reading.onProgress = [&bar](const ReadingProgress& progress) { bar->Show(progress); };
    const std::vector<FileReading> files = ReadLogs(options.logs.paths, reading, writer);
    writer.Finish();
    std::fflush(stdout);
    bar.reset();
    return SayUnreadFiles(options.logs.paths, files);
}

int ConvertToRows(const Options& options) {
    const std::vector<std::string>& paths = options.logs.paths;
    std::optional<Engine> engine;
    if (!options.url.empty()) engine.emplace(options.url);
    if (!options.state.empty()) {
        ShippingState state(options.state, options.host);
        return ShipCalls(paths, options.host, state, *engine);
    }
    const auto write = [](std::string_view rows) { std::fwrite(rows.data(), 1, rows.size(), stdout); };
    const auto insert = [&engine](std::string_view rows) { engine->Insert(engine->Table(), rows); };
    RowWriter writer(paths, options.host, engine ? kInsertedPiece : kWrittenPiece,
                     engine ? RowWriter::Output(insert) : RowWriter::Output(write));
    const int status = Convert(options, writer);
    return writer.HasLeftOut() ? kNotWell : status;
}

void CheckOptionsOfRows(const Options& options) {
    const auto require = [](bool holds, const char* sentence) {
        if (!holds) throw CLI::ValidationError(sentence);
    };
    const bool isRows = options.format == "clickhouse";
    require(!isRows || !options.host.empty(),
            "--to clickhouse needs --host, the name that the calls' host has");
    require(IsReadableText(options.host), "--host is a name: UTF-8 without control characters");
    require(isRows || options.host.empty(), "--host belongs to --to clickhouse");
    require(isRows || options.url.empty(), "--url belongs to --to clickhouse");
    require(options.state.empty() || !options.url.empty(),
            "--state needs --url, the server that gets the calls");
    const bool isOfInput = std::ranges::find(options.logs.paths, "-") != options.logs.paths.end();
    require(options.state.empty() || !isOfInput, "--state needs files: standard input cannot be read again");
}

int Run(const Options& options) {
    CheckOptionsOfRows(options);
    if (options.format != "clickhouse") return Convert(options, *MakeWriter(options));
    try {
        return ConvertToRows(options);
    } catch (const EngineError& error) {
        Say(error.what());
    } catch (const StateError& error) {
        Say(error.what());
    }
    return kNotWell;
}

}  // namespace

void AddConvertCommand(CLI::App& app, int& status) {
    CLI::App* const convert = app.add_subcommand("convert", "Turn logs into what other programs open");
    convert->footer(kExample);
    const auto options = std::make_shared<Options>();
    options->logs.AddTo(*convert);
    convert
        ->add_option(
            "--to", options->format,
            "What to write: jsonl (events), csv (a table), trace (Trace Event format), clickhouse (rows)")
        ->required()
        ->check(CLI::IsMember({"jsonl", "csv", "trace", "clickhouse"}));
    convert->add_option("--host", options->host, "clickhouse: the name of the host that made the calls")
        ->type_name("NAME");
    convert
        ->add_option("--url", options->url,
                     "clickhouse: insert the rows into this server (http://host:8123/?database=...)")
        ->type_name("URL");
    convert
        ->add_option("--state", options->state,
                     "clickhouse: remember in this file what the server has, and go on there")
        ->type_name("FILE");
    convert->callback([options, &status] { status = Run(*options); });
}

}  // namespace ckscribe
