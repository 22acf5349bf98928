#include <fcntl.h>
#include <fmt/core.h>
#include <fmt/ranges.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include "tool/audit/names.h"
#include "tool/exit_status.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"
#include "tool/run/command_file.h"
#include "tool/run/environment.h"
#include "tool/run/installed_files.h"
#include "tool/run/module_choice.h"
#include "tool/run/notices.h"
#include "tool/run/private_directory.h"
#include "tool/run/run_failure.h"
#include "tool/run/run_options.h"
#include "tool/run/run_output.h"
#include "tool/run/supervised_command.h"

namespace ckscribe {

namespace {

// `run` looks for new calls after so many milliseconds: soon while calls come, and later while none come.
constexpr long kShortestWait = 20;
constexpr long kLongestWait = 100;

// If a standard stream is closed, the next file that is opened would take its number, and messages would end
// up in that file. Therefore closed streams are opened to /dev/null. The command does not inherit these.
void OccupyStandardStreams() {
    for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor)
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", O_RDWR | O_CLOEXEC) != descriptor) return;
}

// Says which modules are logged and which are not.
class ModuleReport {
public:
    ModuleReport(const PrivateDirectory& directory, const ModuleChoice& choice, RunOutput& output)
        : notices_(directory), choice_(choice), output_(output) {}

    // Says which modules are logged as soon as they are known.
    void Update() {
        const std::size_t known = notices_.traced.size();
        notices_.Read();
        for (std::size_t i = known; i < notices_.traced.size(); ++i)
            output_.Say(fmt::format("Logging the calls to {}.", notices_.traced[i]));
    }

    void Finish() {
        for (const std::string& each : notices_.configurations)
            output_.Say(fmt::format("{}={} does not count here: this run has a configuration of its own.",
                                    kConfigurationVariable, each));
        if (notices_.traced.empty() && output_.Calls() == 0) SayNothingWasLogged();
        SayOthers();
    }

    const std::vector<std::string>& Traced() const { return notices_.traced; }

private:
    void SayNothingWasLogged() {
        if (notices_.lost != 0) {
            output_.Say(fmt::format(
                "No call was logged: {} of the processes had no {} any more, and what they load is left "
                "as it is. Does the command empty the environment?",
                notices_.lost, kConfigurationVariable));
            return;
        }
        if (choice_.kind != ModuleChoice::Kind::kFirst)
            output_.Say(fmt::format("No call was logged: the command did not load {}.", choice_.text));
        else
            output_.Say("No call was logged: the command loaded no PKCS#11 module.");
        if (!notices_.linked.empty())
            output_.Say(fmt::format(
                "Linked with the command or with what it loads: {}. Only modules that are loaded by name "
                "can be logged. Link the program with libckscribe.so instead, and write a configuration "
                "file.",
                fmt::join(notices_.linked, ", ")));
        else if (notices_.untouched.empty())
            output_.Say(
                "Does it load one with these arguments? A daemon that runs already has to be started by "
                "'ckscribe run' itself. A program that changes its root cannot be followed, nor one that "
                "changes "
                "its user with --keep.");
    }

    void SayOthers() {
        const auto isLogged = [&](const std::string& path) {
            return std::ranges::find(notices_.traced, path) != notices_.traced.end();
        };
        std::vector<std::string> others;
        std::ranges::copy_if(notices_.untouched, std::back_inserter(others),
                             [&](const auto& each) { return !isLogged(each); });
        if (!others.empty())
            output_.Say(fmt::format("{} and left as they are: {}. 'ckscribe run -m PATH' logs one of them.",
                                    notices_.traced.empty() ? "Modules that were loaded" : "Also loaded",
                                    fmt::join(others, ", ")));
        if (!notices_.otherInterfaces.empty())
            output_.Say(fmt::format(
                "Loaded and left as they are, for they are asked for other interfaces than PKCS#11's: {}.",
                fmt::join(notices_.otherInterfaces, ", ")));
    }

    Notices notices_;
    const ModuleChoice& choice_;
    RunOutput& output_;
};

// Passes on what libckscribe.so has written to its error file.
void SayErrors(const PrivateDirectory& directory, RunOutput& output) {
    std::ifstream errors(directory.File(kErrorFile));
    for (std::string line; std::getline(errors, line);)
        if (!line.empty()) output.Say(fmt::format("libckscribe.so says: {}", Harmless(line)));
}

void SayStart(const Obstacle& obstacle, RunOutput& output) {
    if (!obstacle.sentence.empty()) output.Say(obstacle.sentence);
    if (const char* const own = std::getenv(kConfigurationVariable))
        output.Say(fmt::format("{}={} does not count here: this run has a configuration of its own.",
                               kConfigurationVariable, own));
}

int SayNotRun(const std::string& word, const std::string& file, int error) {
    const bool isThere = !file.empty() && access(file.c_str(), F_OK) == 0;
    if (error == ENOENT && isThere)
        Say(fmt::format("{} cannot be run: the program that is to interpret or to load it is not there.",
                        file));
    else if (error == ENOENT)
        Say(fmt::format("There is no command {}.", word));
    else
        Say(fmt::format("{} cannot be run: {}.", file.empty() ? word : file, std::strerror(error)));
    return isThere || error != ENOENT ? kCommandNotRun : kCommandNotFound;
}

int RunLogged(const RunOptions& options) {
    const ModuleChoice choice = ChooseModule(options.module, options.command);
    const std::string library = PathOfLibrary();
    const std::string file = FileOfCommand(options.command.front());
    const Obstacle obstacle = ObstacleOf(file);
    const Redirection redirection = obstacle.mayRedirect ? RedirectionFor(choice, library) : Redirection();
    PrivateDirectory directory(options.keptDirectory);
    directory.Fill(options, choice, library, TargetOfOwnConfiguration());
    RunOutput output(options, directory);

    SupervisedCommand command;
    const int error =
        command.Start(file, options.command, EnvironmentOfCommand(directory.Path(), redirection));
    if (error != 0) return SayNotRun(options.command.front(), file, error);
    std::signal(SIGPIPE, SIG_IGN);
    SayStart(obstacle, output);

    ModuleReport modules(directory, choice, output);
    for (long wait = kShortestWait; command.Wait(wait);) {
        modules.Update();
        wait = output.Print() ? kShortestWait : std::min(2 * wait, kLongestWait);
    }
    modules.Update();
    output.Finish(command);
    modules.Finish();
    SayErrors(directory, output);
    if (!modules.Traced().empty()) directory.NameTarget(modules.Traced().front());
    if (!options.keptDirectory.empty())
        output.Say(fmt::format("The configuration and the raw logs are in {}.", directory.Path()));
    return command.ExitStatus();
}

}  // namespace

int Run(const RunOptions& options) {
    OccupyStandardStreams();
    try {
        return RunLogged(options);
    } catch (const RunFailure& failure) {
        Say(failure.what());
        return kRunFailed;
    }
}

}  // namespace ckscribe
