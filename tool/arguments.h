// The words behind `ckscribe`, and which of them belong to the command that `ckscribe run` runs.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace ckscribe {

// Parses the words with CLI11. A "--" in front of the command of `ckscribe run` ends its options; CLI11's own
// "--" would let no option of the command follow. Throws what CLI::App::parse throws.
void ParseArguments(CLI::App& app, const std::vector<std::string>& words);

// The command with its arguments, of a sub-command with `prefix_command()`, once it was parsed. Throws
// CLI::ExtrasError when the first word is an option that the sub-command does not know.
std::vector<std::string> CommandToRun(const CLI::App& subcommand);

// The name of the sub-command that the words ask for, or an empty string.
std::string SubcommandIn(const CLI::App& app, const std::vector<std::string>& words);

}  // namespace ckscribe
