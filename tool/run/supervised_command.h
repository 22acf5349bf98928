// The command that runs while its calls are logged: started as the caller would start it, and waited for with
// all that it leaves running.
#pragma once

#include <sys/types.h>

#include <csignal>
#include <string>
#include <vector>

namespace ckscribe {

// One at a time in a process, used by one thread. While it lives, the signals that it waits for are blocked
// in this process; the command gets signal mask, dispositions, descriptors and directory as this process had
// them before.
class SupervisedCommand {
public:
    SupervisedCommand();
    ~SupervisedCommand();
    SupervisedCommand(const SupervisedCommand&) = delete;
    SupervisedCommand& operator=(const SupervisedCommand&) = delete;

    // Starts `command` with this environment ("NAME=value"); `file` is the file of its first word. Text
    // without an interpreter is run by the shell. Returns 0, or the system's error when the file cannot be
    // run.
    int Start(const std::string& file, const std::vector<std::string>& command,
              const std::vector<std::string>& environment);

    // Waits for news, at most so long, and passes signals on. Returns false when nothing is left to wait for:
    // the command and what it left running have ended, or the command has, and the user wants no more.
    bool Wait(long milliseconds);

    pid_t Process() const { return process_; }
    bool HasEnded() const { return hasEnded_; }
    // Of the command, once it has ended: what waitpid said.
    int WaitStatus() const { return waitStatus_; }
    // The same as a shell says it: the exit status, or 128 and the signal.
    int ExitStatus() const;

    // Of what the command left running: the processes that a signal has ended. What another process waited
    // for is not among them.
    struct EndedProcess {
        pid_t process;
        int signal;
    };
    const std::vector<EndedProcess>& EndedBySignal() const { return endedBySignal_; }

private:
    void Reap();
    void TakeSignal(const siginfo_t& signal);

    sigset_t awaited_;
    sigset_t formerMask_;
    struct sigaction formerChildAction_;
    pid_t process_ = -1;
    bool hasEnded_ = false;
    bool isAllEnded_ = false;
    bool isInterrupted_ = false;
    int waitStatus_ = 0;
    std::vector<EndedProcess> endedBySignal_;
};

}  // namespace ckscribe
