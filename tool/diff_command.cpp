#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

#include "tool/call_line.h"
#include "tool/diff/run_comparison.h"
#include "tool/exit_status.h"
#include "tool/harmless_text.h"
#include "tool/log_arguments.h"
#include "tool/progress_bar.h"
#include "tool/subcommands.h"
#include "tool/terminal.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Example:\n"
    "  ckscribe diff yesterday.log today.log\n";

struct Options {
    std::string before;
    std::string after;
};

std::string NameOf(const ComparedThread& thread) {
    return thread.thread ? fmt::format("process {}, thread {}", thread.process, *thread.thread)
                         : fmt::format("process {}", thread.process);
}

class Printer {
public:
    Printer(const Options& options, const SharedTexts& texts)
        : options(options), texts(texts), palette(Palette::For(STDOUT_FILENO)) {}

    // Returns whether the threads differ.
    bool Print(const ThreadPair& pair) const {
        static const std::vector<ComparedCall> kNone;
        const auto differences = Compare(pair.first != nullptr ? pair.first->calls : kNone,
                                         pair.second != nullptr ? pair.second->calls : kNone, texts);
        if (differences.empty()) return false;
        const std::string before = pair.first != nullptr ? NameOf(*pair.first) : "no thread";
        const std::string after = pair.second != nullptr ? NameOf(*pair.second) : "no thread";
        fmt::print("{}\n", palette.Name(fmt::format("{} | {}", before, after)));
        for (const DifferentCall& different : differences) PrintCall(different);
        return true;
    }

private:
    std::string PlaceOf(const DifferentCall& different) const {
        const bool isBefore = different.after == nullptr;
        return fmt::format("{}:{}", Harmless(isBefore ? options.before : options.after),
                           (isBefore ? different.before : different.after)->line);
    }

    void PrintCall(const DifferentCall& different) const {
        const ComparedCall& call = different.after != nullptr ? *different.after : *different.before;
        const std::string place = palette.Quiet(PlaceOf(different));
        const std::string& asked = texts[call.question.shown];
        switch (different.difference) {
            case Difference::kGone:
                fmt::print("{}  {}\n", palette.Bad(fmt::format("- {} = {}", asked, texts[call.answer.shown])),
                           place);
                return;
            case Difference::kNew:
                fmt::print("{}  {}\n",
                           palette.Good(fmt::format("+ {} = {}", asked, texts[call.answer.shown])), place);
                return;
            case Difference::kOtherAnswer:
                fmt::print(
                    "{}  {}\n",
                    palette.Notable(fmt::format("! {} = {}, before: {}", asked, texts[call.answer.shown],
                                                texts[different.before->answer.shown])),
                    place);
                return;
            case Difference::kMuchLonger:
                fmt::print("{}  {}\n",
                           palette.Notable(fmt::format("~ {} <{}>, before: <{}>", asked,
                                                       SecondsText(*call.nanoseconds),
                                                       SecondsText(*different.before->nanoseconds))),
                           place);
                return;
        }
    }

    const Options& options;
    const SharedTexts& texts;
    Palette palette;
};

int Run(const Options& options) {
    SharedTexts texts;
    CallOrder before(texts);
    CallOrder after(texts);
    auto bar = std::make_unique<ProgressBar>();
    ReadingOptions reading;
    reading.onProgress = [&bar](const ReadingProgress& progress) { bar->Show(progress); };
    const std::vector<FileReading> beforeFiles = ReadLogs({options.before}, reading, before);
    const std::vector<FileReading> afterFiles = ReadLogs({options.after}, reading, after);
    bar.reset();
    const int beforeStatus = SayUnreadFiles({options.before}, beforeFiles);
    const int afterStatus = SayUnreadFiles({options.after}, afterFiles);
    // The status 1 says only that the runs differ, as in diff(1).
    if (beforeStatus != kWell || afterStatus != kWell) return kWrongUse;

    const Printer printer(options, texts);
    bool isDifferent = false;
    // A log of the old format has no threads.
    const bool byProcess = !before.HasThreads() || !after.HasThreads();
    const auto beforeThreads = before.TakeThreads(byProcess);
    const auto afterThreads = after.TakeThreads(byProcess);
    for (const ThreadPair& pair : PairThreads(beforeThreads, afterThreads, texts))
        isDifferent |= printer.Print(pair);
    std::fflush(stdout);
    return isDifferent ? kNotWell : kWell;
}

}  // namespace

void AddDiffCommand(CLI::App& app, int& status) {
    CLI::App* const diff = app.add_subcommand("diff", "Compare two runs call by call");
    diff->footer(kExample);
    const auto options = std::make_shared<Options>();
    diff->add_option("BEFORE", options->before, "The log of the first run")->required();
    diff->add_option("AFTER", options->after, "The log of the second run")->required();
    diff->callback([options, &status] { status = Run(*options); });
}

}  // namespace ckscribe
