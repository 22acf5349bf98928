// Finds "what stands out" in a report: a few sentences, each with the command that shows its evidence.
#pragma once

#include <string>
#include <vector>

#include "tool/report_data.h"

namespace ckscribe {

// Returns at most ten remarks, the most important first.
std::vector<Remark> RemarksOn(const Report& report);

// Returns the report's files as words of a shell command.
std::string FilesAsWords(const std::vector<std::string>& paths);

// Returns a number with commas between thousands, and the word for it: "1 call", "1,234 calls".
std::string Counted(std::uint64_t number, std::string_view one, std::string_view several);
std::string WithCommas(std::uint64_t number);

// Returns a duration for people: "850 ns", "1.25 ms", "2.3 s".
std::string DurationText(std::uint64_t nanoseconds);

}  // namespace ckscribe
