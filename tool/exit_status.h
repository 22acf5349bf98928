// What the command's exit status says. Every sub-command but `run` ends with one of these; `run` ends as its
// command does.
#pragma once

namespace ckscribe {

enum ExitStatus : int {
    kWell = 0,      // it worked, and what was asked about is well
    kNotWell = 1,   // it worked, and what was asked about is not well; or it did not work
    kWrongUse = 2,  // the arguments make no sense; nothing was done
};

// How `ckscribe run` ends when it is not its command that ended, as env and timeout do.
enum RunExitStatus : int {
    kRunFailed = 125,        // the troubles of `run` itself, wrong use included
    kCommandNotRun = 126,    // the command is there and cannot be run
    kCommandNotFound = 127,  // there is no such command
    kEndedBySignal = 128,    // and the signal's number
};

}  // namespace ckscribe
