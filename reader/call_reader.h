// Turns the bytes of one log, or of the files of one rotated family one after the other, into calls. Takes
// pieces of any size, so that a growing file can be read as it grows.
//
//     CallReader reader(sink);
//     reader.Feed(bytes);  // as often as there are some
//     reader.Settle();     // while waiting for more
//     reader.Finish();
//
// Its memory grows with the calls that are open, never with the log: a line of any length is kept as its
// beginning and its end. Used by one thread at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "reader/call.h"
#include "reader/call_joiner.h"
#include "reader/log_order.h"
#include "reader/log_parser.h"
#include "reader/log_text.h"

namespace ckscribe {

class CallReader {
public:
    // `sink` outlives the reader.
    explicit CallReader(CallSink& sink) : sink(sink) {}

    // Reads the next bytes of the log.
    void Feed(std::string_view bytes);

    // Everything that was written so far has been fed: takes a last record that is whole but for its line
    // end.
    void Settle();

    // The file ends here, and the next file of the family begins.
    void EndFile();

    // The log ends here: gives the calls without an end to the sink.
    void Finish();

    // The calls in progress.
    void ForEachOpen(const std::function<void(const Call&)>& visit) const { joiner.ForEachOpen(visit); }

    // See LogOrder::SetFirstDay.
    void SetFirstDay(std::int64_t day) { order.SetFirstDay(day); }

private:
    void Parse(LogParser::Rest rest);
    void Give();
    void GiveStretch(UnreadableStretch& stretch);

    CallSink& sink;
    LogText text;
    LogParser parser;
    LogOrder order;
    CallJoiner joiner;
    FoundInText found;
    std::uint32_t file = 0;
};

}  // namespace ckscribe
