#include "tool/arguments.h"
#include "tool/exit_status.h"
#include "tool/messages.h"
#include "tool/subcommands.h"

namespace ckscribe {

namespace {

constexpr char kExample[] =
    "Example:\n"
    "  ckscribe run -- pkcs11-tool --module /usr/lib/softhsm/libsofthsm2.so -L\n";

class Help : public CLI::Formatter {
    std::string make_usage(const CLI::App*, std::string) const override {
        return "Usage: ckscribe run [OPTIONS] [--] COMMAND [ARGUMENT...]\n";
    }
};

}  // namespace

void AddRunCommand(CLI::App& app, int& status) {
    CLI::App* const run = app.add_subcommand("run", "Log the PKCS#11 calls of a command");
    run->prefix_command();
    run->formatter(std::make_shared<Help>());
    run->footer(kExample);
    run->callback([run, &status] {
        if (CommandToRun(*run).empty()) throw CLI::RequiredError("A command to run");
        Say("This version cannot run a command yet.");
        status = kRunFailed;
    });
}

}  // namespace ckscribe
