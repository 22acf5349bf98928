#include "reader/log_text.h"

#include <algorithm>

namespace ckscribe {

void LogText::Add(std::string_view more) {
    // What was dropped goes, as soon as it is more than what is left.
    if (begin > bytes.size() - begin) {
        bytes.erase(0, begin);
        begin = 0;
    }
    while (!more.empty()) {
        if (isLong) {
            const std::size_t end = more.find('\n');
            AddToLongLine(more.substr(0, end));
            more.remove_prefix(std::min(end, more.size()));
            if (end != more.npos) EndLongLine();
            continue;
        }
        bytes += more;
        const std::size_t lastLine = bytes.rfind('\n');
        const std::size_t lineBegin = std::max(lastLine == bytes.npos ? 0 : lastLine + 1, begin);
        if (bytes.size() - lineBegin <= kLongestLine) return;
        isLong = true;
        isEvent = bytes[lineBegin] == '{';
        lineEnd.clear();
        leftOut = 0;
        const std::string rest = bytes.substr(lineBegin + kLongestLine);
        bytes.resize(lineBegin + kLongestLine);
        AddToLongLine(rest);
        return;
    }
}

void LogText::AddToLongLine(std::string_view more) {
    lineEnd += more;
    if (lineEnd.size() <= 2 * kKeptEnd) return;
    // An even number, for pairs of digits.
    const std::size_t surplus = (lineEnd.size() - kKeptEnd) & ~std::size_t{1};
    leftOut += surplus;
    lineEnd.erase(0, surplus);
}

void LogText::EndLongLine() {
    isLong = false;
    if (leftOut != 0 && isEvent) {
        // Neither side of the gap may be a part of an escape. A name of four digits behind a 'u' may be cut:
        // then the line is no event.
        const auto endsInEscape = [this] {
            std::size_t backslashes = 0;
            while (backslashes < bytes.size() && bytes[bytes.size() - 1 - backslashes] == '\\') ++backslashes;
            return backslashes % 2 != 0;
        };
        if (endsInEscape()) bytes.pop_back();
        const std::size_t plain = std::min(lineEnd.find_first_not_of('\\'), lineEnd.size());
        lineEnd.erase(0, std::min(lineEnd.size(), plain == 0 ? 0 : plain + 1));
    } else if (leftOut != 0) {
        bytes += kElisionMark;
        bytes += std::to_string(leftOut);
        bytes += kElisionMark;
    }
    bytes += lineEnd;
    lineEnd.clear();
}

std::string_view LogText::View() {
    bytes.reserve(bytes.size() + kEventPadding);
    std::size_t end = bytes.size();
    if (isLong) {
        const std::size_t lastLine = bytes.rfind('\n');
        end = lastLine == bytes.npos || lastLine < begin ? begin : lastLine + 1;
    }
    return std::string_view(bytes).substr(begin, end - begin);
}

void LogText::End() {
    if (isLong) EndLongLine();
}

}  // namespace ckscribe
