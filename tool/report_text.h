// Prints a report as a text for a terminal.
#pragma once

#include <string>

#include "tool/report_data.h"
#include "tool/terminal.h"

namespace ckscribe {

struct ReportTextStyle {
    Palette palette{false};
    std::size_t top = 10;  // the most rows of a list
    bool isUtc = false;    // times in UTC instead of local time
};

std::string ReportAsText(const Report& report, const ReportTextStyle& style);

}  // namespace ckscribe
