#include "tool/configuration/value_problems.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "config/logging_words.h"
#include "tool/harmless_text.h"
#include "tool/nearest_name.h"
#include "util/without_blanks.h"

namespace ckscribe {

namespace {

using Problem = std::optional<ValueProblem>;

constexpr std::string_view kQuotes = "\"'`";

bool HasQuotes(std::string_view value) {
    return !value.empty() &&
           (kQuotes.find(value.front()) != kQuotes.npos || kQuotes.find(value.back()) != kQuotes.npos);
}

std::string WithoutQuotes(std::string_view value) {
    const std::size_t begin = value.find_first_not_of("\"'` \t");
    if (begin == value.npos) return "";
    return std::string(value.substr(begin, value.find_last_not_of("\"'` \t") - begin + 1));
}

std::string Entry(const LoggingKey& key, std::string_view value) {
    return fmt::format("Write \"{} = {};\".", key.name, value);
}

// Returns the place from which a value looks like a comment.
std::size_t CommentIn(std::string_view value) { return std::min(value.find(" #"), value.find(" //")); }

Problem TooLong(const LoggingKey& key, std::string_view value) {
    const std::size_t longest = LongestValue(key.kind);
    if (value.size() <= longest) return std::nullopt;
    return ValueProblem{
        Level::kWrong,
        fmt::format("The value has {} characters, and only the first {} count.", value.size(), longest),
        fmt::format("Make it at most {} characters long.", longest)};
}

Problem BlankAround(const LoggingKey& key, std::string_view value) {
    const std::string_view trimmed = WithoutBlanks(value);
    if (trimmed.size() == value.size()) return std::nullopt;
    const bool isBefore = !value.empty() && value.front() == '\t';
    return ValueProblem{
        Level::kWrong,
        fmt::format("The value is {}: {} belongs to it.", InQuotes(value),
                    isBefore ? "a tab after \"=\"" : "what stands before the \";\" or the end of the line"),
        Entry(key, trimmed)};
}

Problem PathProblem(const LoggingKey& key, std::string_view value) {
    if (HasQuotes(value))
        return ValueProblem{Level::kWrong, fmt::format("The quotes are part of the path {}.", value),
                            Entry(key, WithoutQuotes(value))};
    if (const Problem blank = BlankAround(key, value)) return blank;
    if (value.starts_with('~'))
        return ValueProblem{
            Level::kWrong,
            "\"~\" does not stand for a home directory: it is the name of a folder in the application's "
            "current directory.",
            "Write the whole path."};
    if (value.find('$') != value.npos)
        return ValueProblem{Level::kWrong,
                            "\"$\" is a character of the path: no variable is put in its place.",
                            "Write the whole path."};
    const std::size_t comment = CommentIn(value);
    if (comment != value.npos)
        return ValueProblem{
            Level::kWrong,
            fmt::format("There are no comments: {} is part of the path.", InQuotes(value.substr(comment))),
            Entry(key, WithoutBlanks(value.substr(0, comment)))};
    return std::nullopt;
}

bool IsNumber(std::string_view text) {
    text = WithoutBlanks(text);
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == text.npos;
}

Problem NumberProblem(const LoggingKey& key, std::string_view value) {
    if (IsNumber(value)) return std::nullopt;
    const int number = std::atoi(std::string(value).c_str());
    return ValueProblem{number == 0 ? Level::kWrong : Level::kNote,
                        fmt::format("{} is no number and counts as {}{}.", InQuotes(value), number,
                                    key.name == "Enabled" && number == 0 ? ": no log is written" : ""),
                        fmt::format("Write \"{0} = 1;\" or \"{0} = 0;\".", key.name)};
}

bool IsLevel(std::string_view value) {
    return LoggingLevelOf(value) <= static_cast<int>(LoggingLevelWords().size());
}

Problem LevelProblem(const LoggingKey& key, std::string_view value) {
    if (IsLevel(value)) return std::nullopt;
    const std::size_t comment = CommentIn(value);
    const std::string_view before = WithoutBlanks(value.substr(0, comment));
    if (comment != value.npos && IsLevel(before))
        return ValueProblem{
            Level::kWrong,
            fmt::format(
                "There are no comments: {} is part of the value, which is no level then. Calls of every "
                "level are logged.",
                InQuotes(value.substr(comment))),
            Entry(key, before)};
    const std::string_view trimmed = WithoutBlanks(value);
    if (trimmed != value && LoggingLevelOf(trimmed) != LoggingLevelOf(value))
        return ValueProblem{
            Level::kWrong,
            fmt::format("{} is no level, for the blank in it: calls of every level are logged.",
                        InQuotes(value)),
            Entry(key, trimmed)};
    const NearestName nearest = FindNearestName(WithoutQuotes(value), LoggingLevelWords());
    return ValueProblem{
        nearest.isSlip ? Level::kWrong : Level::kNote,
        fmt::format("{} is none of DESTROY, MODIFY and ADMIN (capitals matter): calls of every level are "
                    "logged.",
                    InQuotes(value)),
        nearest.isSlip ? Entry(key, nearest.name) : "Leave the key out if that is what you want."};
}

Problem AnnounceProblem(const LoggingKey& key, std::string_view value) {
    const std::string_view plain = WithoutBlanks(value);
    if (key.name != "Announce" || plain == "0" || plain == "1") return std::nullopt;
    return ValueProblem{
        Level::kWrong,
        fmt::format("{} is no plain 0: functions that the target lacks are announced on standard output.",
                    InQuotes(value)),
        "Write \"Announce = 0;\" to keep standard output as it is."};
}

// --- The mask

std::vector<std::string_view> MaskWords(std::string_view mask) {
    std::vector<std::string_view> words;
    for (std::string_view word = TakeMaskWord(&mask); !word.empty(); word = TakeMaskWord(&mask))
        words.push_back(word);
    return words;
}

std::string Joined(const std::vector<std::string_view>& words) {
    std::string text;
    for (const std::string_view word : words)
        text += fmt::format("{}{}", text.empty() ? "" : ", ", InQuotes(word));
    return text;
}

// Returns the mask that was probably meant: the nearest class replaces each word that is no class.
std::string MeantMask(std::string_view mask) {
    std::vector<std::string_view> names;
    for (const LoggingClass& known : LoggingClasses()) names.push_back(known.name);
    std::string spaced(mask);
    std::ranges::replace_if(
        spaced,
        [](char c) {
            return c == ',' || c == '\t' || c == '+' || c == '&' || kQuotes.find(c) != kQuotes.npos;
        },
        ' ');
    std::string meant;
    for (const std::string_view word : MaskWords(spaced)) {
        const std::string_view name = ClassBit(word) != 0 ? word : FindNearestName(word, names).name;
        if (!meant.empty()) meant += '|';
        meant += name;
    }
    return meant;
}

Problem MaskProblem(const LoggingKey& key, std::string_view value) {
    const std::vector<std::string_view> words = MaskWords(value);
    if (words.empty())
        return ValueProblem{
            Level::kWrong, "The mask is empty: nothing is logged.",
            "Name classes, or leave the key out to log every function; NONE says that nothing is meant."};
    if (words.size() == 1 && words.front() == "NONE")
        return ValueProblem{Level::kNote, "NONE is the name of no class: nothing is logged.", ""};
    std::vector<std::string_view> unknown;
    for (const std::string_view word : words) {
        if (ClassBit(word) == 0) unknown.push_back(word);
    }
    if (!unknown.empty()) {
        const bool hasComma = value.find(',') != value.npos;
        const std::string reason =
            hasComma ? "commas do not stand between classes, blanks and \"|\" do" : "capitals matter";
        return ValueProblem{
            Level::kWrong,
            fmt::format("{} {} class and {} ignored ({}).", Joined(unknown),
                        unknown.size() == 1 ? "is no" : "are no", unknown.size() == 1 ? "is" : "are", reason),
            Entry(key, MeantMask(value))};
    }
    if (words.size() > kMostMaskWords)
        return ValueProblem{Level::kWrong,
                            fmt::format("The mask has {} words, and those after the {}th do not count.",
                                        words.size(), kMostMaskWords),
                            "Name each class once; ALL_FUNC stands for all of them."};
    return std::nullopt;
}

}  // namespace

std::optional<ValueProblem> FindValueProblem(const LoggingKey& key, std::string_view value) {
    if (const Problem tooLong = TooLong(key, value)) return tooLong;
    switch (key.kind) {
        case KeyKind::kPath:
            return PathProblem(key, value);
        case KeyKind::kNumber:
            return NumberProblem(key, value);
        case KeyKind::kMask:
            return MaskProblem(key, value);
        case KeyKind::kLevel:
            return LevelProblem(key, value);
        case KeyKind::kSwitch:
            return AnnounceProblem(key, value);
        case KeyKind::kMode:
            break;
    }
    return std::nullopt;
}

}  // namespace ckscribe
