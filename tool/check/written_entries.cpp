#include "tool/check/written_entries.h"

#include <algorithm>
#include <cctype>

#include "util/without_blanks.h"

namespace ckscribe {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSpaces = " \t\r\n";
constexpr std::string_view kQuotes = "\"'`";

bool IsNameCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-' || c == '.';
}

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    WrittenFile Read() {
        while (place_ < text_.size()) ReadPiece();
        CloseSection(text_.size());
        return file_;
    }

private:
    // A piece ends with ";", "{", "}" or the line.
    void ReadPiece() {
        const std::size_t end = std::min(text_.find_first_of(";{}\r\n", place_), text_.size());
        const char ending = end < text_.size() ? text_[end] : '\n';
        const std::string_view piece = text_.substr(place_, end - place_);
        if (ending == '{') {
            OpenSection(piece);
        } else if (!OpenBrackets(piece) && !IsHeadOfNextLine(end)) {
            ReadEntry(piece);
        }
        place_ = end + 1;
        if (ending == '}') CloseSection(end);
    }

    // Returns whether "Name =" has its "{" on the next line.
    bool IsHeadOfNextLine(std::size_t end) {
        const std::size_t next = text_.find_first_not_of(kSpaces, end);
        const std::string_view piece = WithoutBlanks(text_.substr(place_, end - place_));
        if (next == text_.npos || text_[next] != '{' || !piece.ends_with('=')) return false;
        OpenSection(piece);
        return true;
    }

    void OpenSection(std::string_view head) {
        std::string_view name = WithoutBlanks(head);
        const bool hasEquals = name.ends_with('=');
        if (hasEquals) name = WithoutBlanks(name.substr(0, name.size() - 1));
        // Marks before the name do not belong to it.
        while (!name.empty() && !IsNameCharacter(name.front())) name.remove_prefix(1);
        while (name.ends_with('>')) name.remove_suffix(1);
        if (name.empty()) return;
        Open(name, hasEquals ? SectionStyle::kBraces : SectionStyle::kNoEquals);
    }

    bool OpenBrackets(std::string_view piece) {
        const std::string_view line = WithoutBlanks(piece);
        return OpenBetween('[', ']', SectionStyle::kBrackets, line) ||
               OpenBetween('<', '>', SectionStyle::kTag, line);
    }

    bool OpenBetween(char begin, char end, SectionStyle style, std::string_view line) {
        const std::size_t length = line.find(end);
        if (!line.starts_with(begin) || length == line.npos) return false;
        const std::string_view name = WithoutBlanks(line.substr(1, length - 1));
        if (name.starts_with('/')) {  // </Name>
            CloseSection(place_);
        } else {
            Open(name, style);
        }
        return true;
    }

    void Open(std::string_view name, SectionStyle style) {
        CloseSection(static_cast<std::size_t>(name.data() - text_.data()));
        current_ = static_cast<int>(file_.sections.size());
        file_.sections.push_back(
            {name, static_cast<std::size_t>(name.data() - text_.data()), style, text_.size()});
    }

    void CloseSection(std::size_t end) {
        if (current_ >= 0) file_.sections[static_cast<std::size_t>(current_)].end = end;
        current_ = -1;
    }

    void ReadEntry(std::string_view piece) {
        std::size_t name = 0;
        while (name < piece.size() && !std::isalpha(static_cast<unsigned char>(piece[name]))) ++name;
        // Only blanks, quotes and marks of a comment stand in front of an entry. A piece with anything else
        // there is no entry.
        if (piece.substr(0, name).find_first_not_of(" \t#/;!\"'`-*:,.+\xef\xbb\xbf") != piece.npos) return;
        std::size_t nameEnd = name;
        while (nameEnd < piece.size() && IsNameCharacter(piece[nameEnd])) ++nameEnd;
        std::size_t sign = nameEnd;
        while (sign < piece.size() &&
               (kBlanks.find(piece[sign]) != kBlanks.npos || kQuotes.find(piece[sign]) != kQuotes.npos))
            ++sign;
        if (name == piece.size()) return;
        const bool hasSign = sign < piece.size() && (piece[sign] == '=' || piece[sign] == ':');
        file_.entries.push_back(
            {piece.substr(name, nameEnd - name), place_ + name, piece.substr(nameEnd, sign - nameEnd),
             hasSign ? piece[sign] : ' ',
             WithoutBlanks(piece.substr(std::min(hasSign ? sign + 1 : sign, piece.size()))), current_,
             IsInComment()});
    }

    bool IsInComment() const {
        const std::size_t lineEnd = text_.find_last_of("\r\n", place_ == 0 ? 0 : place_ - 1);
        const std::string_view line = text_.substr(place_ == 0 || lineEnd == text_.npos ? 0 : lineEnd + 1);
        const std::string_view begin = line.substr(std::min(line.find_first_not_of(kBlanks), line.size()));
        return begin.starts_with('#') || begin.starts_with(';') || begin.starts_with('!') ||
               begin.starts_with("//");
    }

    std::string_view text_;
    std::size_t place_ = 0;
    int current_ = -1;
    WrittenFile file_;
};

}  // namespace

WrittenFile ReadAsWritten(std::string_view text) { return Reader(text).Read(); }

}  // namespace ckscribe
