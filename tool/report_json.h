// A report as JSON; share/ckscribe/report.schema.json describes it.
#pragma once

#include <string>

#include "tool/report_data.h"

namespace ckscribe {

// One object, with a line feed behind it. Lists of examples have at most `top` rows.
std::string ReportAsJson(const Report& report, std::size_t top);

// "2026-11-21T12:33:45.123456789Z"; the parts of a second only where there are some.
std::string IsoTime(std::int64_t nanosecondsUtc);

}  // namespace ckscribe
