// The report as one page that opens without a network and can be mailed.
#pragma once

#include <string>
#include <string_view>

namespace ckscribe {

// Whether the command was built with the chart library that the page needs.
bool CanMakeReportPage();

// The page. `report` is what `ckscribe report --json` prints, `details` what PageDetails::Json gives. Neither
// can end its place in the page or become markup. Empty if CanMakeReportPage() is false.
std::string ReportPage(std::string_view report, std::string_view details);

}  // namespace ckscribe
