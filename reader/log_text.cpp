#include "reader/log_text.h"

#include <algorithm>
#include <cstring>

namespace ckscribe {

// Frees the dropped bytes as soon as they are more than the rest.
void LogText::DropDone() {
    if (begin <= bytes.Size() - begin) return;
    bytes.DropFront(begin);
    lastLine -= std::min(lastLine, begin);
    begin = 0;
}

std::span<char> LogText::Space(std::size_t count) {
    DropDone();
    return {bytes.Space(count), count};
}

void LogText::AddFromSpace(std::size_t count) {
    const std::size_t before = bytes.Size();
    if (isLong) {
        Add(std::string(bytes.Data() + before, count));
        return;
    }
    bytes.Grow(count);
    const std::string_view more = bytes.View().substr(before);
    if (const std::size_t end = more.rfind('\n'); end != more.npos) lastLine = before + end + 1;
    if (bytes.Size() - lastLine <= kLongestLine) return;
    isLong = true;
    isEvent = bytes.View()[lastLine] == '{';
    lineEnd.clear();
    leftOut = 0;
    const std::string rest(bytes.View().substr(lastLine + kLongestLine));
    bytes.Shrink(lastLine + kLongestLine);
    AddToLongLine(rest);
}

void LogText::Add(std::string_view more) {
    DropDone();
    while (!more.empty()) {
        if (isLong) {
            const std::size_t end = more.find('\n');
            AddToLongLine(more.substr(0, end));
            more.remove_prefix(std::min(end, more.size()));
            if (end != more.npos) EndLongLine();
            continue;
        }
        std::memcpy(Space(more.size()).data(), more.data(), more.size());
        AddFromSpace(more.size());
        return;
    }
}

void LogText::AddToLongLine(std::string_view more) {
    lineEnd += more;
    if (lineEnd.size() <= 2 * kKeptEnd) return;
    // The count is even, therefore pairs of digits stay together.
    const std::size_t surplus = (lineEnd.size() - kKeptEnd) & ~std::size_t{1};
    leftOut += surplus;
    lineEnd.erase(0, surplus);
}

void LogText::EndLongLine() {
    isLong = false;
    if (leftOut != 0 && isEvent) {
        // Neither side of the gap may be a part of an escape. Only the four digits behind a "\u" may still be
        // cut; the line is then no event.
        const std::string_view kept = bytes.View();
        const std::size_t last = kept.find_last_not_of('\\');
        const std::size_t backslashes = last == kept.npos ? kept.size() : kept.size() - 1 - last;
        if (backslashes % 2 != 0) bytes.Shrink(kept.size() - 1);
        const std::size_t plain = std::min(lineEnd.find_first_not_of('\\'), lineEnd.size());
        lineEnd.erase(0, std::min(lineEnd.size(), plain == 0 ? 0 : plain + 1));
    } else if (leftOut != 0) {
        bytes.Append(kElisionMark + std::to_string(leftOut) + kElisionMark);
    }
    bytes.Append(lineEnd);
    lineEnd.clear();
}

std::string_view LogText::View() const {
    const std::size_t end = isLong ? std::max(lastLine, begin) : bytes.Size();
    return bytes.View().substr(begin, end - begin);
}

void LogText::TakeBehind(const LogText& other, std::size_t done) {
    const std::size_t from = other.begin + done;
    bytes.Assign(other.bytes.View().substr(from));
    begin = 0;
    lastLine = other.lastLine - std::min(other.lastLine, from);
    isLong = other.isLong;
    isEvent = other.isEvent;
    lineEnd = other.lineEnd;
    leftOut = other.leftOut;
}

void LogText::End() {
    if (isLong) EndLongLine();
}

}  // namespace ckscribe
