// CurrentCalendarText() gives the local time as records print it.
#pragma once

#include <string_view>

namespace ckscribe {

struct CalendarText {
    std::string_view time;      // "10:15:30"
    std::string_view calendar;  // "Sun Nov 15 10:15:30 2026"
};

// Returns the text of the current second in the time zone that TZ names now. The text is valid until the next
// call. One thread at a time may call this function.
CalendarText CurrentCalendarText();

}  // namespace ckscribe
