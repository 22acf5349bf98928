// Prints the calls of a run while it goes on, and the summary at its end.
#pragma once

#include <string>
#include <string_view>

#include "reader/call_reader.h"
#include "tool/call_line.h"
#include "tool/call_table.h"
#include "tool/run/followed_file.h"
#include "tool/run/private_directory.h"
#include "tool/run/run_options.h"
#include "tool/run/supervised_command.h"

namespace ckscribe {

// One thread may use it.
class RunOutput : private CallSink {
public:
    // Opens the file of the options. Throws RunFailure when it cannot be written.
    RunOutput(const RunOptions& options, const PrivateDirectory& directory);
    ~RunOutput() override;

    // Prints what the command's processes have logged since the last call. Returns false when there was
    // nothing new.
    bool Print();

    // Prints the rest: calls without an end, sentences about a crash, and the table.
    void Finish(const SupervisedCommand& command);

    // Prints a sentence about the run to the file of the options if that holds calls for people, else to
    // standard error.
    void Say(std::string_view text);

    std::uint64_t Calls() const { return calls_; }

private:
    void OnCall(const Call& call) override;
    void Write(std::string_view text);
    void SayLoss(int error);  // says once that the file of the options cannot be written
    void SayUnfinished(const std::vector<KeptCall>& unfinished);
    void SayCrash(const SupervisedCommand& command, const std::vector<KeptCall>& unfinished);

    const RunOptions& options_;
    int descriptor_;
    CallLineStyle style_;
    FollowedFile events_;
    FollowedFile log_;
    CallReader reader_;
    CallTable table_;
    std::vector<KeptCall> unfinished_;
    std::string lines_;  // of calls, not yet written
    std::uint64_t calls_ = 0;
    bool isFinishing_ = false;
    bool isAtLineStart_ = true;
    bool isLossSaid_ = false;
};

}  // namespace ckscribe
