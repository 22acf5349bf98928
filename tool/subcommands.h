// Lists the sub-commands. A new one gets a file of its own, `NAME_command.cpp`, a line here and in
// subcommands.cpp, and a man page share/man/ckscribe-NAME.1.scd.
#pragma once

#include <CLI/CLI.hpp>

namespace ckscribe {

// Each of these adds a sub-command: its options, a footer with an example, and a callback that does the work
// and stores the exit status (tool/exit_status.h). `status` outlives the parsing.
void AddRunCommand(CLI::App& app, int& status);
void AddCheckCommand(CLI::App& app, int& status);
void AddConfCommand(CLI::App& app, int& status);
void AddShowCommand(CLI::App& app, int& status);
void AddReportCommand(CLI::App& app, int& status);
void AddDiffCommand(CLI::App& app, int& status);
void AddConvertCommand(CLI::App& app, int& status);

// Adds all sub-commands.
void AddSubcommands(CLI::App& app, int& status);

}  // namespace ckscribe
