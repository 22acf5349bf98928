// Turns the bytes of one log, or of the files of one rotated family one after the other, into calls. It takes
// pieces of any size and can therefore read a file while it grows.
//
//     CallReader reader(sink);
//     reader.Feed(bytes);  // as often as there are some
//     reader.Settle();     // while waiting for more
//     reader.Finish();
//
// Its memory grows with the open calls, never with the log: the reader keeps only the beginning and the end
// of a very long line. One thread at a time may use it.
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

    // Says that all of the log so far was fed. Takes a last record that lacks only its line end.
    void Settle();

    // Ends the file: what is fed next belongs to the next file of the family.
    void EndFile();

    // Ends the log: gives the calls without an end to the sink.
    void Finish();

    // Calls `visit` for each call in progress, in no particular order.
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
