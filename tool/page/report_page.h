// Makes the report one page that opens without a network and can be mailed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ckscribe {

// Returns whether the command was built with the chart library that the page needs.
bool CanMakeReportPage();

// A page is at most so large, in bytes, because people mail it.
inline constexpr std::size_t kLargestPage = 5'000'000;

// Returns how many bytes are left for details in a page with this report, or 0 if there are none.
std::size_t RoomForDetails(std::string_view report);

// Returns the page, or an empty text if CanMakeReportPage() is false. `report` comes from `ckscribe report
// --json`, `details` from PageDetails::Json. Neither can end its place in the page or become markup.
std::string ReportPage(std::string_view report, std::string_view details);

}  // namespace ckscribe
