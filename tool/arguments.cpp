#include "tool/arguments.h"

#include <algorithm>

namespace ckscribe {

namespace {

// This word stands for the first "--" while CLI11 parses. No real argument begins like it.
constexpr char kEndOfOptions[] = "\x01 end of options";

}  // namespace

void ParseArguments(CLI::App& app, const std::vector<std::string>& words) {
    std::vector<std::string> parsed = words;
    if (SubcommandIn(app, words) == "run")
        std::ranges::replace(parsed, std::string("--"), std::string(kEndOfOptions));
    std::ranges::reverse(parsed);  // CLI11 takes the words from the end
    app.parse(std::move(parsed));
}

std::vector<std::string> CommandToRun(const CLI::App& subcommand) {
    std::vector<std::string> command = subcommand.remaining();
    const bool isMarked = !command.empty() && command.front() == kEndOfOptions;
    if (!isMarked && !command.empty() && command.front().starts_with('-'))
        throw CLI::ExtrasError(subcommand.get_name(), {command.front()});
    if (isMarked) command.erase(command.begin());
    std::ranges::replace(command, std::string(kEndOfOptions), std::string("--"));
    return command;
}

std::string SubcommandIn(const CLI::App& app, const std::vector<std::string>& words) {
    for (const std::string& word : words)
        for (const CLI::App* const subcommand : app.get_subcommands(nullptr))
            if (subcommand->get_name() == word) return word;
    return "";
}

}  // namespace ckscribe
