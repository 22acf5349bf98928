// Starts the command whose calls are logged as the caller would start it, and waits for it and for all
// processes that it leaves running.
#pragma once

#include <sys/types.h>

#include <csignal>
#include <string>
#include <vector>

namespace ckscribe {

// A process has at most one such object at a time, and one thread uses it. While the object lives, the
// signals that it waits for are blocked in this process. The command gets the signal mask, dispositions,
// descriptors and directory that this process had before.
class SupervisedCommand {
public:
    SupervisedCommand();
    ~SupervisedCommand();
    SupervisedCommand(const SupervisedCommand&) = delete;
    SupervisedCommand& operator=(const SupervisedCommand&) = delete;

    // Starts `command` with this environment ("NAME=value"); `file` is the file of its first word. The shell
    // runs a text file without an interpreter. Returns 0, or errno when the file cannot be run.
    int Start(const std::string& file, const std::vector<std::string>& command,
              const std::vector<std::string>& environment);

    // Waits for news for at most so long, and passes signals on. Returns false when nothing is left to wait
    // for: the command and all that it left running have ended, or the command has ended and the user wants
    // no more.
    bool Wait(long milliseconds);

    pid_t Process() const { return process_; }
    bool HasEnded() const { return hasEnded_; }
    // Returns the command's status from waitpid, once it has ended.
    int WaitStatus() const { return waitStatus_; }
    // Returns the status as a shell says it: the exit status, or 128 plus the signal.
    int ExitStatus() const;

    // An EndedProcess is a process that the command left running and that a signal has ended. Processes that
    // another process waited for are not among them.
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
