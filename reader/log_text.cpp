#include "reader/log_text.h"

#include <algorithm>

namespace ckscribe {

void LogText::Add(std::string_view more) {
    // What was dropped goes, as soon as it is more than what is left.
    if (begin > bytes.size() - begin) {
        bytes.erase(0, begin);
        lastLine -= std::min(lastLine, begin);
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
        if (const std::size_t end = more.rfind('\n'); end != more.npos) lastLine = bytes.size() + end + 1;
        bytes += more;
        if (bytes.size() - lastLine <= kLongestLine) return;
        isLong = true;
        isEvent = bytes[lastLine] == '{';
        lineEnd.clear();
        leftOut = 0;
        const std::string rest = bytes.substr(lastLine + kLongestLine);
        bytes.resize(lastLine + kLongestLine);
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
    const std::size_t end = isLong ? std::max(lastLine, begin) : bytes.size();
    return std::string_view(bytes).substr(begin, end - begin);
}

void LogText::TakeBehind(const LogText& other, std::size_t done) {
    const std::size_t from = other.begin + done;
    bytes.assign(other.bytes, from, std::string::npos);
    begin = 0;
    lastLine = other.lastLine - std::min(other.lastLine, from);
    isLong = other.isLong;
    isEvent = other.isEvent;
    lineEnd = other.lineEnd;
    leftOut = other.leftOut;
}

void LogText::TakeRest(LogText& other) {
    // The memory of this one serves again.
    bytes.assign(other.bytes);
    begin = other.begin;
    lastLine = other.lastLine;
    isLong = other.isLong;
    isEvent = other.isEvent;
    lineEnd = std::move(other.lineEnd);
    leftOut = other.leftOut;
    other = LogText();
}

void LogText::End() {
    if (isLong) EndLongLine();
}

}  // namespace ckscribe
