#include "tool/page/report_page.h"

#include <algorithm>
#include <utility>

#include "tool/page/page_parts.h"

namespace ckscribe {
namespace {

// Makes JSON fit for a script element, which "</script" and "<!--" would end or change. In JSON a less-than
// sign stands only in strings, and an escape may stand for it there.
std::string WithoutMarkup(std::string_view json) {
    std::string text;
    text.reserve(json.size() + json.size() / 16);
    for (const char character : json) {
        if (character == '<') {
            text += "\\u003c";
        } else {
            text += character;
        }
    }
    return text;
}

}  // namespace

bool CanMakeReportPage() { return !page_parts::kCharts.empty(); }

std::size_t RoomForDetails(std::string_view report) {
    const std::size_t taken = page_parts::kFrame.size() + page_parts::kStyle.size() +
                              page_parts::kCharts.size() + page_parts::kScript.size() +
                              WithoutMarkup(report).size();
    return kLargestPage - std::min(kLargestPage, taken);
}

std::string ReportPage(std::string_view report, std::string_view details) {
    if (!CanMakeReportPage()) return {};
    const std::pair<std::string_view, std::string> parts[] = {
        {"@STYLE@", std::string(page_parts::kStyle)},   {"@REPORT@", WithoutMarkup(report)},
        {"@DETAILS@", WithoutMarkup(details)},          {"@CHART@", std::string(page_parts::kCharts)},
        {"@SCRIPT@", std::string(page_parts::kScript)},
    };
    // The places stand in the frame in this order. What is put into one of them is not searched again.
    std::string page;
    std::string_view frame = page_parts::kFrame;
    for (const auto& [place, part] : parts) {
        const std::size_t begin = frame.find(place);
        page += frame.substr(0, begin);
        page += part;
        frame.remove_prefix(begin + place.size());
    }
    page += frame;
    return page;
}

}  // namespace ckscribe
