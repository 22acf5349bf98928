#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <system_error>
#include <vector>

#include "tool/arguments.h"
#include "tool/exit_status.h"
#include "tool/messages.h"
#include "tool/subcommands.h"

namespace {

using namespace ckscribe;

constexpr char kExamples[] =
    "Examples:\n"
    "  ckscribe run -- pkcs11-tool --module /usr/lib/softhsm/libsofthsm2.so -L\n"
    "  ckscribe COMMAND --help\n";

void AddVersion(CLI::App& app) { app.set_version_flag("--version", "ckscribe " CKSCRIBE_VERSION); }

// Prints a sub-command's or the command's own help or version, or says what is wrong with the arguments.
int Explain(const CLI::App& app, const CLI::ParseError& problem, const std::vector<std::string>& arguments) {
    if (problem.get_exit_code() == 0) return app.exit(problem);
    const std::string subcommand = SubcommandIn(app, arguments);
    const std::string what = problem.what();
    Say(fmt::format("{}{} 'ckscribe {}--help' shows what there is.", what, what.ends_with('.') ? "" : ".",
                    subcommand.empty() ? "" : subcommand + " "));
    return subcommand == "run" ? int{kRunFailed} : int{kWrongUse};
}

int SayNotWritten(int reason) {
    Say(fmt::format("Standard output cannot be written: {}.", std::strerror(reason)));
    return kNotWell;
}

// A result that could not be written is a failure. `run` writes no result to standard output.
int AfterWriting(int status) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return status;
    const int said = SayNotWritten(errno);
    return status == kWell ? said : status;
}

}  // namespace

int main(int count, char** words) {
    CLI::App app("Logs the PKCS#11 calls of other programs, and answers questions about the log.",
                 "ckscribe");
    app.require_subcommand(1);
    app.footer(kExamples);
    int status = kWell;
    AddSubcommands(app, status);
    AddVersion(app);
    for (CLI::App* const subcommand : app.get_subcommands(nullptr)) AddVersion(*subcommand);
    const std::vector<std::string> arguments(words + 1, words + count);
    try {
        ParseArguments(app, arguments);
    } catch (const CLI::ParseError& problem) {
        return Explain(app, problem, arguments);
    } catch (const std::system_error& problem) {
        // Printing throws when a long result does not fit on a disk.
        if (std::ferror(stdout) == 0) throw;
        return SayNotWritten(problem.code().value());
    }
    return SubcommandIn(app, arguments) == "run" ? status : AfterWriting(status);
}
