#include "tool/run/notices.h"

#include <algorithm>

#include "tool/audit/names.h"

namespace ckscribe {

namespace {

void AddOnce(std::vector<std::string>& texts, std::string_view text) {
    if (std::ranges::find(texts, text) == texts.end()) texts.emplace_back(text);
}

}  // namespace

Notices::Notices(const PrivateDirectory& directory) : file_(directory.File(kNoticesFile), false) {}

void Notices::Read() {
    std::string_view notices = file_.ReadRecords('\0');
    while (!notices.empty()) {
        const std::size_t end = notices.find('\0');
        Take(notices.substr(0, end));
        notices.remove_prefix(end + 1);
    }
}

void Notices::Take(std::string_view notice) {
    const std::size_t blank = notice.find(' ');
    if (blank == std::string_view::npos) return;
    const std::string_view text = notice.substr(blank + 1);
    switch (notice.front()) {
        case kTracedNotice:
            return AddOnce(traced, text);
        case kUntouchedNotice:
            return AddOnce(untouched, text);
        case kLinkedNotice:
            return AddOnce(linked, text);
        case kOtherInterfaceNotice:
            return AddOnce(otherInterfaces, text);
        case kConfigurationNotice:
            return AddOnce(configurations, text);
        case kLostNotice:
            ++lost;
            return;
        default:
            return;
    }
}

}  // namespace ckscribe
