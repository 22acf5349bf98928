// Prints a report as JSON; share/ckscribe/report.schema.json describes it.
#pragma once

#include <string>

#include "tool/report_data.h"

namespace ckscribe {

// Returns one object with a line feed behind it. Lists of examples have at most `top` rows.
std::string ReportAsJson(const Report& report, std::size_t top);

// Returns "2026-11-21T12:33:45.123456789Z". It leaves out the fraction of a second if it is 0.
std::string IsoTime(std::int64_t nanosecondsUtc);

}  // namespace ckscribe
