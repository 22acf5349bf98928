#include <fmt/core.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>

#include "config/logging_words.h"
#include "tool/arguments.h"
#include "tool/run/run_options.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExamples[] =
    "Examples:\n"
    "  ckscribe run -- pkcs11-tool --module /usr/lib/softhsm/libsofthsm2.so -L\n"
    "  ckscribe run -c -o calls.txt -- java -jar signer.jar\n"
    "  ckscribe run -e session,sign_verify -m /usr/lib/softhsm/libsofthsm2.so -- ./server\n";

const std::map<std::string, RunFormat> kFormats{{"calls", RunFormat::kCalls},
                                                {"text", RunFormat::kText},
                                                {"old", RunFormat::kOld},
                                                {"events", RunFormat::kEvents}};

// Replaces the name of a format by its number. Returns what is wrong with the name, or an empty text when
// nothing is.
std::string TakeFormat(std::string& word) {
    const auto format = kFormats.find(word);
    if (format == kFormats.end())
        return fmt::format("\"{}\" is no format. These are: calls, text, old, events.", word);
    word = std::to_string(static_cast<int>(format->second));
    return "";
}

class Help : public CLI::Formatter {
    std::string make_usage(const CLI::App*, std::string) const override {
        return "Usage: ckscribe run [OPTIONS] [--] COMMAND [ARGUMENT...]\n";
    }
};

// Returns the class that a word names: "session" and "SESSION_FUNC" name SESSION_FUNC. Returns an empty text
// for no class.
std::string ClassNamed(std::string word) {
    std::ranges::transform(word, word.begin(),
                           [](unsigned char each) { return static_cast<char>(std::toupper(each)); });
    for (const LoggingClass& each : LoggingClasses())
        if (word == each.name || word + "_FUNC" == each.name) return std::string(each.name);
    return "";
}

// Returns the value of "LoggingMask" for words between commas.
std::string MaskOf(const std::string& words) {
    std::set<std::string> names;
    for (const std::string& word : CLI::detail::split(words, ',')) {
        const std::string name = ClassNamed(word);
        if (name.empty()) {
            std::vector<std::string> known;
            for (const LoggingClass& each : LoggingClasses()) known.emplace_back(each.name);
            throw CLI::ValidationError("-e", fmt::format("\"{}\" is no class of functions. These are: {}.",
                                                         word, fmt::join(known, ", ")));
        }
        names.insert(name);
    }
    return fmt::format("{}", fmt::join(names, "|"));
}

struct Parsed {
    RunOptions options;
    std::string classes;
    bool hasTableOnly = false;
    bool hasBoth = false;
};

}  // namespace

void AddRunCommand(CLI::App& app, int& status) {
    CLI::App* const run = app.add_subcommand("run", "Log the PKCS#11 calls of a command");
    run->prefix_command();
    run->formatter(std::make_shared<Help>());
    run->footer(kExamples);

    const auto parsed = std::make_shared<Parsed>();
    RunOptions& options = parsed->options;
    run->add_option("-m,--module", options.module,
                    "Log this module; without it, the one that an argument names or that is loaded first")
        ->type_name("PATH");
    run->add_option("-o,--output", options.output, "Write there instead of to standard error")
        ->type_name("FILE");
    run->add_option("--format", options.format, "calls (a line each), text or old (the log), or events")
        ->type_name("FORMAT")
        ->transform(CLI::Validator(TakeFormat, ""));
    run->add_option("-e,--classes", parsed->classes,
                    "Log these classes of functions only, with commas between them")
        ->type_name("CLASS[,CLASS]");
    run->add_flag("-c,--summary-only", parsed->hasTableOnly,
                  "Print a table of the functions at the end, and no calls");
    run->add_flag("-C,--summary", parsed->hasBoth, "Print the calls, and the table at the end");
    run->add_flag("--data", options.showsData, "Show data; without this it is hidden in every format");
    run->add_option("--keep", options.keptDirectory, "Keep the configuration and the raw logs there")
        ->type_name("DIR");

    run->callback([run, parsed, &status] {
        RunOptions& options = parsed->options;
        options.command = CommandToRun(*run);
        if (options.command.empty()) throw CLI::RequiredError("A command to run");
        if (!parsed->classes.empty()) options.mask = MaskOf(parsed->classes);
        options.hasTable = parsed->hasTableOnly || parsed->hasBoth;
        options.hasLog = !parsed->hasTableOnly || parsed->hasBoth;
        status = Run(options);
    });
}

}  // namespace ckscribe
