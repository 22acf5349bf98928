// Makes the report one page that opens without a network and can be mailed.
#pragma once

#include <string>
#include <string_view>

namespace ckscribe {

// Returns whether the command was built with the chart library that the page needs.
bool CanMakeReportPage();

// Returns the page; empty if CanMakeReportPage() is false. `report` comes from `ckscribe report --json`,
// `details` from PageDetails::Json. Neither can end its place in the page or become markup.
std::string ReportPage(std::string_view report, std::string_view details);

}  // namespace ckscribe
