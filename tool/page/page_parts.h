// The build embeds the files of tool/page/ and the distribution's chart library.
#pragma once

#include <string_view>

namespace ckscribe::page_parts {

extern const std::string_view kFrame;   // report.html, with places like @STYLE@
extern const std::string_view kStyle;   // report.css
extern const std::string_view kScript;  // report.js
extern const std::string_view kCharts;  // the chart library; empty if not found

}  // namespace ckscribe::page_parts
