#include "reader/log_family.h"

#include <algorithm>
#include <tuple>

namespace ckscribe {

namespace {

bool IsDigits(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

// Returns whether `text` is a date, "20261121" or "2026-11-21", with or without a time behind it:
// "20261121-1530", "2026112115". Sets `digits` to its digits.
bool IsDate(std::string_view text, std::string& digits) {
    digits.clear();
    for (const char character : text) {
        if (character >= '0' && character <= '9') {
            digits += character;
        } else if (character != '-' && character != '_' && character != 'T' && character != ':') {
            return false;
        }
    }
    if (digits.size() < 8 || digits.size() > 14 || text.front() == '-' || text.back() == '-') return false;
    const std::string_view view = digits;
    return view.substr(0, 2) >= "19" && view.substr(0, 2) <= "20" && view.substr(4, 2) >= "01" &&
           view.substr(4, 2) <= "12" && view.substr(6, 2) >= "01" && view.substr(6, 2) <= "31";
}

void DropCompression(std::string_view& path) {
    for (const std::string_view ending : {".gz", ".xz", ".zst", ".bz2", ".lz4"}) {
        if (path.ends_with(ending) && path.size() > ending.size()) return path.remove_suffix(ending.size());
    }
}

}  // namespace

RotatedName ReadRotatedName(std::string_view path) {
    RotatedName name;
    DropCompression(path);
    const std::size_t slash = path.rfind('/');
    const std::size_t begin = slash == path.npos ? 0 : slash + 1;
    // Rotation adds a number of at most three digits. A longer number is that of a process.
    const std::size_t dot = path.rfind('.');
    if (dot != path.npos && dot > begin) {
        const std::string_view last = path.substr(dot + 1);
        if (IsDigits(last) && last.size() <= 3) {
            name.number = static_cast<unsigned>(std::stoul(std::string(last)));
            path = path.substr(0, dot);
        }
    }
    for (std::size_t i = begin + 1; i + 1 < path.size(); ++i) {
        std::string digits;
        if ((path[i] != '-' && path[i] != '.' && path[i] != '_') || !IsDate(path.substr(i + 1), digits))
            continue;
        name.date = digits;
        path = path.substr(0, i);
        break;
    }
    name.log = path;
    return name;
}

std::vector<LogFamily> FamiliesOf(std::span<const std::string> paths) {
    std::vector<RotatedName> names;
    std::vector<LogFamily> families;
    for (const std::string& path : paths) {
        names.push_back(ReadRotatedName(path));
        const auto index = static_cast<std::uint32_t>(names.size() - 1);
        const auto family = std::ranges::find_if(families, [&](const LogFamily& other) {
            return path != "-" && names[other.front()].log == names[index].log;
        });
        if (family == families.end()) {
            families.push_back({index});
        } else {
            family->push_back(index);
        }
    }
    // The log itself is the newest. A file with a date is older, and a file with a greater number is older
    // still.
    const auto age = [&names](std::uint32_t index) {
        const RotatedName& name = names[index];
        const bool isLog = name.date.empty() && name.number == 0;
        return std::tuple(isLog, name.date.empty(), name.date, -static_cast<int>(name.number));
    };
    for (LogFamily& family : families) {
        std::ranges::stable_sort(
            family, [&](std::uint32_t one, std::uint32_t other) { return age(one) < age(other); });
    }
    return families;
}

}  // namespace ckscribe
