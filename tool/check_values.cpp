#include "tool/check_values.h"

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "config/logging_words.h"
#include "tool/function_count.h"
#include "tool/harmless_text.h"
#include "tool/nearest_name.h"

namespace ckscribe {

namespace {

using Problem = std::optional<ValueProblem>;

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kQuotes = "\"'`";

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

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

Problem TooLong(const LoggingKey& key, std::string_view value) {
    const std::size_t longest = LongestValue(key.kind);
    if (value.size() <= longest) return std::nullopt;
    return ValueProblem{
        Level::kWrong,
        fmt::format("The value has {} characters, and only the first {} count.", value.size(), longest),
        fmt::format("Make it at most {} characters long.", longest)};
}

Problem BlankAround(const LoggingKey& key, std::string_view value) {
    const std::string_view trimmed = Trimmed(value);
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
    const std::size_t comment = std::min(value.find(" #"), value.find(" //"));
    if (comment != value.npos)
        return ValueProblem{
            Level::kWrong,
            fmt::format("There are no comments: {} is part of the path.", InQuotes(value.substr(comment))),
            Entry(key, Trimmed(value.substr(0, comment)))};
    return std::nullopt;
}

bool IsNumber(std::string_view text) {
    text = Trimmed(text);
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

Problem LevelProblem(const LoggingKey& key, std::string_view value) {
    if (LoggingLevelOf(value) <= static_cast<int>(LoggingLevelWords().size())) return std::nullopt;
    const std::string_view trimmed = Trimmed(value);
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

// --- The mask

std::vector<std::string_view> MaskWords(std::string_view mask) {
    std::vector<std::string_view> words;
    for (std::string_view word = TakeMaskWord(&mask); !word.empty(); word = TakeMaskWord(&mask))
        words.push_back(word);
    return words;
}

std::string Joined(const std::vector<std::string_view>& words) {
    std::string text;
    for (const std::string_view word : words) text += (text.empty() ? "" : ", ") + InQuotes(word);
    return text;
}

// The mask that was meant, with the nearest class in the place of each word that is none.
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
        meant += (meant.empty() ? "" : "|") + std::string(name);
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

// --- What each key means

void AddProblem(const LoggingKey& key, const Setup& setup, const ValueProblem& problem, Findings& findings) {
    findings.Add(problem.level, key.name, setup.Line(key.name), problem.what, problem.remedy);
}

void TellEnabled(Setup& setup, bool hasProblem, Findings& findings) {
    const int line = setup.Line("Enabled");
    const bool isMissing = line == 0;
    const std::string why = isMissing ? "The key is missing" : "It is 0";
    if (setup.IsLogging()) {
        findings.Add(Level::kOk, "Enabled", line, "The log is written.");
    } else if (setup.HasEvents() && !hasProblem) {
        findings.Add(Level::kOk, "Enabled", line, why + ": events are written, and no log.");
    } else if (!hasProblem) {
        findings.Add(isMissing ? Level::kWrong : Level::kNote, "Enabled", line, why + ": no log is written.",
                     "Write \"Enabled = 1;\" to have one.");
    }
}

void TellMask(Setup& setup, Findings& findings) {
    const int line = setup.Line("LoggingMask");
    const unsigned read = setup.settings.GetLoggingMask();
    const unsigned mask = line == 0 ? unsigned{ALL_FUNC} : read;
    const int level = setup.settings.LoggingLevel();
    const bool isLevelSet = static_cast<std::size_t>(level) <= LoggingLevelWords().size();
    findings.Add(
        Level::kOk, "LoggingMask", line,
        fmt::format(
            "The mask {} {:#x}{} and logs {} of the {} functions.",
            line == 0 ? "is missing, which stands for" : "is", mask,
            isLevelSet
                ? ", the level " + std::string(LoggingLevelWords()[static_cast<std::size_t>(level) - 1]) + ","
                : "",
            LoggedFunctionCount(mask, level), ExportedFunctionCount()));
}

void TellLevel(Setup& setup, Findings& findings) {
    const int line = setup.Line("LoggingLevel");
    const auto words = LoggingLevelWords();
    const std::size_t level = static_cast<std::size_t>(setup.settings.LoggingLevel());
    if (line == 0 || level > words.size()) return;
    findings.Add(Level::kOk, "LoggingLevel", line, fmt::format("The level is {}.", words[level - 1]));
}

void TellFormat(Setup& setup, Findings& findings) {
    const int line = setup.Line("NewFormat");
    if (line == 0) return;
    findings.Add(Level::kOk, "NewFormat", line,
                 setup.settings.IsNewCkLogFormat() != 0 ? "Records have the new format."
                                                        : "Records have the old format.");
}

void TellHideData(const Setup& setup, Findings& findings) {
    const auto value = setup.Value("HideData");
    if (!value) return;
    const int line = setup.Line("HideData");
    if (setup.settings.HideData() == DataSetting::kShown) {
        findings.Add(Level::kOk, "HideData", line, "Log and events show data.");
    } else if (Trimmed(*value) == "1") {
        findings.Add(Level::kOk, "HideData", line, "Data is hidden in log and events.");
    } else {
        findings.Add(Level::kNote, "HideData", line,
                     fmt::format("{} hides data in log and events, as everything but a plain 0 does.",
                                 InQuotes(*value)),
                     "Write \"HideData = 1;\" to hide data, \"HideData = 0;\" to show it.");
    }
}

void TellFileMode(const Setup& setup, Findings& findings) {
    const int line = setup.Line("FileMode");
    if (line == 0) return;
    const FileModeSetting mode = setup.settings.FileMode();
    if (mode.isRejected) {
        findings.Add(Level::kWrong, "FileMode", line,
                     fmt::format("{} is no octal number up to 0777: new files get 0666 less the umask.",
                                 InQuotes(*setup.Value("FileMode"))),
                     "Write \"FileMode = 0600;\".");
    } else if ((*mode.permissions & 0600) != 0600) {
        findings.Add(Level::kNote, "FileMode", line,
                     fmt::format("New files get the permissions {:04o}: their owner cannot open them again.",
                                 *mode.permissions),
                     "Write \"FileMode = 0600;\".");
    } else {
        findings.Add(Level::kOk, "FileMode", line,
                     fmt::format("New files get the permissions {:04o}.", *mode.permissions));
    }
}

void TellAnnounce(const Setup& setup, Findings& findings) {
    const auto value = setup.Value("Announce");
    if (!value) return;
    const int line = setup.Line("Announce");
    if (setup.settings.IsAnnouncing() == 0) {
        findings.Add(Level::kOk, "Announce", line,
                     "Functions that the target lacks are not announced on standard output.");
    } else if (Trimmed(*value) == "1") {
        findings.Add(Level::kOk, "Announce", line,
                     "Functions that the target lacks are announced on standard output.");
    } else {
        findings.Add(
            Level::kWrong, "Announce", line,
            fmt::format("{} is no plain 0: functions that the target lacks are announced on standard output.",
                        InQuotes(*value)),
            "Write \"Announce = 0;\" to keep standard output as it is.");
    }
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
        case KeyKind::kMode:
        case KeyKind::kSwitch:
            break;
    }
    return std::nullopt;
}

void CheckValues(Setup& setup, Findings& findings) {
    bool isEnabledOdd = false;
    for (const LoggingKey& key : kLoggingKeys) {
        const auto value = setup.Value(key.name);
        if (!value) continue;
        const Problem problem = FindValueProblem(key, *value);
        if (!problem) continue;
        AddProblem(key, setup, *problem, findings);
        isEnabledOdd |= key.name == "Enabled";
    }
    TellEnabled(setup, isEnabledOdd, findings);
    TellMask(setup, findings);
    TellLevel(setup, findings);
    TellFormat(setup, findings);
    TellHideData(setup, findings);
    TellFileMode(setup, findings);
    TellAnnounce(setup, findings);
}

}  // namespace ckscribe
