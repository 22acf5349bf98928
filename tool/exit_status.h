// Every sub-command but `run` ends with one of these exit statuses. `run` ends with the status of its
// command.
#pragma once

namespace ckscribe {

enum ExitStatus : int {
    kWell = 0,      // it worked, and all that was asked about is well
    kNotWell = 1,   // it worked, and something that was asked about is not well; or it did not work
    kWrongUse = 2,  // the arguments make no sense, or `diff` could not read a log; nothing was done
};

// `ckscribe run` ends with one of these when its command did not end by itself; env and timeout do the same.
enum RunExitStatus : int {
    kRunFailed = 125,        // `run` itself failed, or was used wrongly
    kCommandNotRun = 126,    // the command is there and cannot be run
    kCommandNotFound = 127,  // there is no such command
    kEndedBySignal = 128,    // plus the signal's number
};

}  // namespace ckscribe
