// Everything that shows calls shows a call in one such line:
//
//     14:03:11.205 31415 C_GetSlotList(tknPresent=false) = CKR_OK {count=2} <0.000003>
//     TIME THREAD FUNCTION(arguments) = RESULT {what came back} <seconds>
#pragma once

#include <string>

#include "reader/call.h"
#include "reader/value.h"
#include "tool/terminal.h"

namespace ckscribe {

struct CallLineStyle {
    Palette palette{false};
    bool isUtc = false;  // shows events' times in UTC instead of local time
};

// Returns the line, without a line end. It leaves out what the log does not have: fractions of a second, and
// the seconds that the call took. The process stands in place of a missing thread. A call without an end has
// the result "?". Text of the log cannot break the line or command a terminal.
std::string CallLine(const Call& call, const CallLineStyle& style);

// Return parts of the line.
std::string TimeText(const Moment& time, bool isUtc);      // "14:03:11.205", "14:03:11"
std::string ValuesText(const std::vector<Value>& values);  // "tknPresent=false"; long ones are cut
std::string ResultText(const Call& call);                  // "CKR_OK", "CKR_UNKNOWN 0x80000999", "?"
std::string SecondsText(std::uint64_t nanoseconds);        // "0.000210"

}  // namespace ckscribe
