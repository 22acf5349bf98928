#include "tool/check/check_entries.h"

#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <string>

#include "tool/check/written_entries.h"
#include "tool/configuration/logging_keys.h"
#include "tool/harmless_text.h"
#include "tool/nearest_name.h"
#include "util/without_blanks.h"

namespace ckscribe {

namespace {

const std::string kSection = CkLogConfig::GetCkLogSectionName();
constexpr char kSectionExample[] = "Begin the section with a line \"CkLog2 = {\", without a tab before it.";

bool IsLineBegin(char c) { return c == '\r' || c == '\n' || c == ' '; }

std::vector<std::string_view> KeyNames() {
    std::vector<std::string_view> names;
    for (const LoggingKey& key : kLoggingKeys) names.push_back(key.name);
    return names;
}

class EntryCheck {
public:
    EntryCheck(const ConfigurationText& text, Findings& findings)
        : text_(text),
          findings_(findings),
          written_(ReadAsWritten(text.Text())),
          section_(text.FindSection(kSection)) {}

    void Run() {
        CheckSections();
        for (const WrittenEntry& entry : written_.entries) CheckEntry(entry);
        for (const LoggingKey& key : kLoggingKeys) CheckPlaceOf(key);
    }

private:
    // --- Sections

    void CheckSections() {
        if (text_.Text().starts_with("\xef\xbb\xbf")) {
            findings_.Add(
                Level::kNote, "configuration", 1,
                "The file begins with a byte order mark (3 bytes), which is part of its first word.",
                "Save it as plain text without a byte order mark.");
        }
        if (!section_) {
            ExplainMissingSection();
            return;
        }
        const int line = text_.LineOf(section_->name);
        findings_.Add(Level::kOk, kSection, line, DescribeSection());
        for (const WrittenSection& other : written_.sections) CheckOtherSection(other);
        CheckSectionEnd();
    }

    std::string DescribeSection() const {
        const int begin = text_.LineOf(section_->name);
        if (!section_->isClosed)
            return fmt::format("Lines {} to the end of the file are the section; no \"}}\" closes it.",
                               begin);
        return fmt::format("Lines {} to {} are the section.", begin, text_.LineOf(section_->end));
    }

    bool IsCountingSection(const WrittenSection& section) const {
        return section_ && section.place == section_->name;
    }

    bool IsInSection(std::size_t place) const {
        return section_ && place > section_->name && place < section_->end;
    }

    void CheckOtherSection(const WrittenSection& other) {
        if (IsCountingSection(other)) return;
        const int line = text_.LineOf(other.place);
        if (IsInSection(other.place) && other.style == SectionStyle::kBraces) {
            findings_.Add(
                Level::kWrong, std::string(other.name), line,
                fmt::format("This section begins before a \"}}\" has closed CkLog2 (line {}): its keys count "
                            "as keys of CkLog2.",
                            text_.LineOf(section_->name)),
                "Close CkLog2 with a line \"}\" before it.");
        } else if (other.name == kSection) {
            findings_.Add(Level::kWrong, kSection, line,
                          fmt::format("This is another section of this name: only the one on line {} counts.",
                                      text_.LineOf(section_->name)),
                          "Put all keys into one section.");
        }
    }

    // A "}" inside a value ends the section.
    void CheckSectionEnd() {
        if (!section_->isClosed) return;
        const std::string_view text = text_.Text();
        const std::size_t end = section_->end;
        const std::size_t lineEnd = std::min(text.find_first_of("\r\n", end), text.size());
        const std::string_view rest = text.substr(end + 1, lineEnd - end - 1);
        const bool isBehindBlank = end > 0 && std::isspace(static_cast<unsigned char>(text[end - 1]));
        const bool goesOn = rest.find_first_not_of(" \t") != rest.npos;
        for (const WrittenEntry& entry : written_.entries) {
            const std::size_t valueEnd =
                static_cast<std::size_t>(entry.value.data() - text.data()) + entry.value.size();
            if (entry.sign != '=' || valueEnd != end || isBehindBlank || !goesOn) continue;
            findings_.Add(
                Level::kWrong, std::string(entry.name), text_.LineOf(end),
                fmt::format("A \"}}\" stands in the value and ends the section: the value is {}, and what "
                            "stands behind it does not count.",
                            InQuotes(entry.value)),
                "Choose a value without \"}\".");
        }
    }

    void ExplainMissingSection() {
        bool isExplained = false;
        for (const WrittenSection& section : written_.sections) isExplained |= ExplainSection(section);
        if (isExplained) return;
        findings_.Add(
            Level::kWrong, kSection, 0,
            "There is no section CkLog2 in the file: every setting has its default, and nothing is logged.",
            kSectionExample);
    }

    // Says why this section is not the one that counts. Returns false when its author does not mean that one.
    bool ExplainSection(const WrittenSection& section) {
        const bool isNamed = section.name == kSection;
        if (!isNamed && !IsLikeSection(section.name)) return false;
        const char before = section.place == 0 ? '\n' : text_.Text()[section.place - 1];
        std::string why;
        std::string remedy = kSectionExample;
        if (!isNamed) {
            why = fmt::format("The section is called {}, not \"CkLog2\" (capitals matter)",
                              InQuotes(section.name));
            remedy = "Call it CkLog2.";
        } else if (section.style == SectionStyle::kBrackets || section.style == SectionStyle::kTag) {
            why = fmt::format("\"{}\" is not how a section begins here",
                              section.style == SectionStyle::kTag ? "<CkLog2>" : "[CkLog2]");
            remedy =
                "Write \"CkLog2 = {\" in its place, indent the keys with spaces, and end the section with "
                "\"}\".";
        } else if (section.style == SectionStyle::kNoEquals) {
            why = "Between \"CkLog2\" and \"{\" there is not just \"=\"";
        } else if (before == '\t') {
            why = "A tab stands before the section's name";
            remedy = "Begin the line with \"CkLog2 = {\", without a tab.";
        } else if (!IsLineBegin(before)) {
            why = fmt::format("{} stands directly before the section's name",
                              static_cast<unsigned char>(before) >= 0x80
                                  ? "A byte order mark or another character"
                                  : InQuotes(std::string_view(&before, 1)));
        } else {
            return false;
        }
        findings_.Add(
            Level::kWrong, kSection, text_.LineOf(section.place),
            why + ": there is no section CkLog2, every setting has its default, and nothing is logged.",
            remedy);
        return true;
    }

    static bool IsLikeSection(std::string_view name) {
        const std::string_view names[] = {kSection};
        return name.size() >= 4 && FindNearestName(name, names).isSlip;
    }

    // --- Entries

    void CheckEntry(const WrittenEntry& entry) {
        if (IsInSection(entry.place)) {
            CheckInside(entry);
        } else if (FindLoggingKey(entry.name) != nullptr && !entry.isCommentedOut && entry.sign != ' ' &&
                   IsMeantForSection(entry)) {
            findings_.Add(section_ && entry.section < 0 ? Level::kWrong : Level::kNote, entry.name,
                          text_.LineOf(entry.place), "This does not count: " + WhyOutside(entry),
                          section_ ? "Move it into the section." : "");
        }
    }

    bool IsMeantForSection(const WrittenEntry& entry) const {
        if (entry.section < 0) return true;
        const WrittenSection& section = written_.sections[static_cast<std::size_t>(entry.section)];
        return section.name == kSection || (!section_ && IsLikeSection(section.name));
    }

    std::string WhyOutside(const WrittenEntry& entry) const {
        if (!section_) return "there is no section CkLog2.";
        if (entry.section >= 0 || entry.place < section_->name)
            return fmt::format("it does not stand in the section that begins on line {}.",
                               text_.LineOf(section_->name));
        return fmt::format("it stands behind the \"}}\" of line {}, which ends the section.",
                           text_.LineOf(section_->end));
    }

    void CheckInside(const WrittenEntry& entry) {
        const LoggingKey* const key = FindLoggingKey(entry.name);
        if (key == nullptr) {
            ExplainUnknown(entry);
            return;
        }
        const auto counted = text_.FindEntry(kSection, std::string(entry.name));
        if (!counted || counted->key != entry.place) {
            ExplainUncounted(entry, counted);
        } else if (entry.isCommentedOut) {
            findings_.Add(
                Level::kWrong, entry.name, text_.LineOf(entry.place),
                fmt::format("This line counts, although it begins like a comment: there are no comments, and "
                            "a blank stands before the name. The value is {}.",
                            InQuotes(text_.ValueOf(*counted))),
                "Delete the line, or take away the mark before it if it is to count.");
        }
    }

    void ExplainUnknown(const WrittenEntry& entry) {
        if (entry.isCommentedOut) return;
        const std::string_view name = NameAsWritten(entry);
        if (name.empty()) {
            ExplainRestOfValue(entry);
            return;
        }
        const auto names = KeyNames();
        const NearestName nearest = FindNearestName(name, names);
        const bool isMissed = nearest.isSlip && !text_.FindEntry(kSection, std::string(nearest.name));
        // The library takes the last word of a name with a blank for a name of its own.
        if (name.size() > entry.name.size() && !isMissed) return;
        findings_.Add(
            isMissed ? Level::kWrong : Level::kNote, name, text_.LineOf(entry.place),
            fmt::format("The library knows no key of this name. The nearest one that it knows is \"{}\".",
                        nearest.name),
            isMissed ? fmt::format("Call it {}.", nearest.name) : "");
    }

    // The author probably means text directly behind a ";" as a part of the value.
    void ExplainRestOfValue(const WrittenEntry& entry) {
        if (text_.Text()[entry.place - 1] != ';') return;
        findings_.Add(
            Level::kNote, kSection, text_.LineOf(entry.place),
            fmt::format("{} does not count: the \";\" before it ends the value.", InQuotes(entry.name)),
            "Choose a value without \";\".");
    }

    // Returns everything before the "=", even if a blank or another character that no name holds stands in
    // it. Returns an empty text when there is no "=".
    std::string_view NameAsWritten(const WrittenEntry& entry) const {
        if (entry.sign != ' ') return entry.name;
        const std::string_view rest = text_.Text().substr(entry.place);
        const std::size_t end = rest.find_first_of("=;{}\r\n");
        if (end == rest.npos || rest[end] != '=') return {};
        return WithoutBlanks(rest.substr(0, end));
    }

    void ExplainUncounted(const WrittenEntry& entry, const std::optional<ConfigurationText::Entry>& counted) {
        const char before = text_.Text()[entry.place - 1];
        const int line = text_.LineOf(entry.place);
        const auto Add = [&](Level level, std::string_view why, std::string_view remedy) {
            findings_.Add(entry.isCommentedOut ? Level::kNote : level, entry.name, line,
                          fmt::format("This does not count: {}", why), std::string(remedy));
        };
        if (entry.isCommentedOut && !IsLineBegin(before)) {
            Add(Level::kNote, fmt::format("{} stands directly before the name.", InQuotes({&before, 1})),
                "Take it away if the key is to count.");
        } else if (entry.sign == ' ') {
            if (!entry.isCommentedOut && line != LineOfCounted(counted))
                Add(Level::kNote, "no \"=\" follows the name.",
                    fmt::format("Write \"{} = VALUE;\".", entry.name));
        } else if (before == '\t') {
            Add(Level::kWrong, "a tab stands before the name, and a key is not found after a tab.",
                "Indent it with spaces.");
        } else if (!IsLineBegin(before) && before != '{') {
            Add(Level::kWrong, fmt::format("{} stands directly before the name.", InQuotes({&before, 1})),
                "Take it away; there are no quotes and no marks before a name.");
        } else if (entry.between.find('\t') != entry.between.npos) {
            Add(Level::kWrong, "a tab stands between the name and \"=\".", "Put a space there.");
        } else if (entry.between.find_first_not_of(' ') != entry.between.npos) {
            Add(Level::kWrong, fmt::format("{} stands between the name and \"=\".", InQuotes(entry.between)),
                "Put only spaces there; there are no quotes.");
        } else if (entry.sign == ':') {
            Add(Level::kWrong, "a \":\" follows the name and no \"=\".",
                fmt::format("Write \"{} = {};\".", entry.name, entry.value));
        } else if (counted && entry.isCommentedOut) {
            Add(Level::kNote,
                fmt::format(
                    "the first of its name counts, on line {}. Without that one this line would count, "
                    "although it begins like a comment.",
                    text_.LineOf(counted->key)),
                "Take away the blank before the name, or delete the line.");
        } else if (counted) {
            const bool isSame = text_.ValueOf(*counted) == entry.value;
            Add(isSame ? Level::kNote : Level::kWrong,
                fmt::format("the first of its name counts, on line {}.", text_.LineOf(counted->key)),
                "Delete one of the two.");
        } else {
            Add(Level::kWrong, "the library does not find it.",
                "Put it on a line of its own, indented with spaces.");
        }
    }

    int LineOfCounted(const std::optional<ConfigurationText::Entry>& counted) const {
        return counted ? text_.LineOf(counted->key) : 0;
    }

    // Finds a key whose name, followed by "=", stands in the value of another.
    void CheckPlaceOf(const LoggingKey& key) {
        const auto counted = text_.FindEntry(kSection, std::string(key.name));
        if (!counted ||
            std::ranges::find(written_.entries, counted->key, &WrittenEntry::place) != written_.entries.end())
            return;
        const WrittenEntry* around = nullptr;
        for (const WrittenEntry& entry : written_.entries) {
            if (entry.place < counted->key) around = &entry;
        }
        const bool isSameLine =
            around != nullptr && text_.LineOf(around->place) == text_.LineOf(counted->key);
        findings_.Add(
            Level::kWrong, key.name, text_.LineOf(counted->key),
            fmt::format("{}, and counts: the value is {}.",
                        isSameLine ? fmt::format("The key stands inside the value of {}", around->name)
                                   : std::string("The key stands in the middle of a text"),
                        InQuotes(text_.ValueOf(*counted))),
            fmt::format("Keep \"{} =\" out of other values and texts.", key.name));
    }

    const ConfigurationText& text_;
    Findings& findings_;
    const WrittenFile written_;
    const std::optional<ConfigurationText::Section> section_;
};

}  // namespace

void CheckEntries(const ConfigurationText& text, Findings& findings) { EntryCheck(text, findings).Run(); }

}  // namespace ckscribe
