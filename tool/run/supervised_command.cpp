#include "tool/run/supervised_command.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#if defined(__FreeBSD__)
#include <sys/procctl.h>
#else
#include <sys/prctl.h>
#endif

#include <cerrno>
#include <ctime>

#include "tool/exit_status.h"
#include "tool/run/elf_file.h"

namespace ckscribe {

namespace {

std::vector<char*> Pointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& each : texts) pointers.push_back(const_cast<char*>(each.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// Returns the command with which the shell runs a file.
std::vector<std::string> ShellCommand(const std::string& file, const std::vector<std::string>& command) {
    std::vector<std::string> words{"/bin/sh", file};
    words.insert(words.end(), command.begin() + 1, command.end());
    return words;
}

// Makes processes whose parents end children of this process, which can then wait for them.
void AdoptOrphans() {
#if defined(__FreeBSD__)
    procctl(P_PID, getpid(), PROC_REAP_ACQUIRE, nullptr);
#else
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
#endif
}

}  // namespace

SupervisedCommand::SupervisedCommand() {
    sigemptyset(&awaited_);
    for (const int each : {SIGCHLD, SIGINT, SIGQUIT, SIGTERM, SIGHUP}) sigaddset(&awaited_, each);
    sigprocmask(SIG_BLOCK, &awaited_, &formerMask_);
    // While SIGCHLD is ignored, children leave no status behind.
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(SIGCHLD, &action, &formerChildAction_);
}

SupervisedCommand::~SupervisedCommand() {
    sigaction(SIGCHLD, &formerChildAction_, nullptr);
    sigprocmask(SIG_SETMASK, &formerMask_, nullptr);
}

int SupervisedCommand::Start(const std::string& file, const std::vector<std::string>& command,
                             const std::vector<std::string>& environment) {
    if (file.empty()) return ENOENT;
    AdoptOrphans();
    int errorPipe[2];
    if (pipe2(errorPipe, O_CLOEXEC) != 0) return errno;
    const std::vector<char*> arguments = Pointers(command);
    const std::vector<char*> variables = Pointers(environment);
    const std::vector<std::string> shellCommand = ShellCommand(file, command);
    const std::vector<char*> shellArguments = Pointers(shellCommand);
    process_ = fork();
    if (process_ == 0) {
        sigaction(SIGCHLD, &formerChildAction_, nullptr);
        sigprocmask(SIG_SETMASK, &formerMask_, nullptr);
        execve(file.c_str(), arguments.data(), variables.data());
        const int error = errno;
        if (error == ENOEXEC && ProgramAt(file).kind == ProgramKind::kUnknown)
            execve(shellArguments[0], shellArguments.data(), variables.data());
        if (write(errorPipe[1], &error, sizeof error) < 0) _exit(kRunFailed);
        _exit(kRunFailed);
    }
    int error = process_ < 0 ? errno : 0;
    close(errorPipe[1]);
    // The pipe closes when the command begins; otherwise the child writes its error into it.
    if (process_ > 0 && read(errorPipe[0], &error, sizeof error) == sizeof error)
        waitpid(process_, nullptr, 0);
    close(errorPipe[0]);
    return error;
}

bool SupervisedCommand::Wait(long milliseconds) {
    const timespec limit{milliseconds / 1000, milliseconds % 1000 * 1'000'000};
    siginfo_t signal;
    if (sigtimedwait(&awaited_, &signal, &limit) > 0) TakeSignal(signal);
    return !isAllEnded_ && !(hasEnded_ && isInterrupted_);
}

void SupervisedCommand::TakeSignal(const siginfo_t& signal) {
    if (signal.si_signo == SIGCHLD) {
        Reap();
        return;
    }
    // A terminal sends its signals to the command, too. A signal from another process is meant for the
    // command. An ignored signal, as with nohup, ends nothing here.
    struct sigaction action;
    sigaction(signal.si_signo, nullptr, &action);
    if (action.sa_handler != SIG_IGN) isInterrupted_ = true;
    if (signal.si_code <= 0 && !hasEnded_) kill(process_, signal.si_signo);
}

void SupervisedCommand::Reap() {
    for (;;) {
        int status = 0;
        const pid_t ended = waitpid(-1, &status, WNOHANG);
        if (ended == process_) {
            hasEnded_ = true;
            waitStatus_ = status;
            isInterrupted_ = false;
        } else if (ended > 0 && WIFSIGNALED(status)) {
            endedBySignal_.push_back({ended, WTERMSIG(status)});
        }
        if (ended < 0 && errno == ECHILD) isAllEnded_ = true;
        if (ended <= 0) return;
    }
}

int SupervisedCommand::ExitStatus() const {
    return WIFSIGNALED(waitStatus_) ? kEndedBySignal + WTERMSIG(waitStatus_) : WEXITSTATUS(waitStatus_);
}

}  // namespace ckscribe
