#include "tool/configuration/configuration_text.h"

#include <algorithm>
#include <cstring>

#include "config/entry_lookup.h"

namespace ckscribe {

ConfigurationText::ConfigurationText(std::string_view text)
    : text_(text.substr(0, text.find('\0'))), lineBegins_{0} {
    for (std::size_t i = 0; i < text_.size(); ++i) {
        const bool isEnd = text_[i] == '\n' || (text_[i] == '\r' && text_[i + 1] != '\n');
        if (isEnd) lineBegins_.push_back(i + 1);
    }
}

std::optional<ConfigurationText::Section> ConfigurationText::FindSection(const std::string& name) const {
    const char* const found = FindSectionName(text_.c_str(), name.c_str());
    if (found == nullptr) return std::nullopt;
    const std::size_t begin = static_cast<std::size_t>(found - text_.c_str());
    const std::size_t end = text_.find('}', begin);
    const bool isClosed = end != text_.npos;
    return Section{begin, isClosed ? end : text_.size(), isClosed};
}

std::optional<ConfigurationText::Entry> ConfigurationText::FindEntry(const std::string& section,
                                                                     const std::string& key) const {
    std::string copy = text_;
    const char* const found = ckscribe::FindEntryValue(copy.data(), section.c_str(), key.c_str());
    if (found == nullptr) return std::nullopt;
    const std::size_t value = static_cast<std::size_t>(found - copy.data());
    // Between key and value stand spaces, "=" and spaces.
    const std::size_t equals = text_.find_last_not_of(' ', value - 1);
    const std::size_t keyEnd = text_.find_last_not_of(' ', equals - 1) + 1;
    return Entry{keyEnd - key.size(), value, value + std::strlen(found)};
}

int ConfigurationText::LineOf(std::size_t place) const {
    return static_cast<int>(std::ranges::upper_bound(lineBegins_, place) - lineBegins_.begin());
}

}  // namespace ckscribe
