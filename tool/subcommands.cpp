#include "tool/subcommands.h"

namespace ckscribe {

// The help lists them in this order.
void AddSubcommands(CLI::App& app, int& status) {
    AddRunCommand(app, status);
    AddCheckCommand(app, status);
    AddConfCommand(app, status);
    AddShowCommand(app, status);
    AddReportCommand(app, status);
    AddDiffCommand(app, status);
    AddConvertCommand(app, status);
}

}  // namespace ckscribe
