// Parses the words behind `ckscribe`, and finds those that belong to the command of `ckscribe run`.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace ckscribe {

// Parses the words with CLI11. A "--" in front of the command of `ckscribe run` ends its options: behind
// CLI11's own "--" the command could have no options. Throws what CLI::App::parse throws.
void ParseArguments(CLI::App& app, const std::vector<std::string>& words);

// Returns the command with its arguments, for a parsed sub-command with `prefix_command()`. Throws
// CLI::ExtrasError when the first word is an option that the sub-command does not know.
std::vector<std::string> CommandToRun(const CLI::App& subcommand);

// Returns the name of the sub-command that the words ask for, or an empty text when they ask for none.
std::string SubcommandIn(const CLI::App& app, const std::vector<std::string>& words);

}  // namespace ckscribe
