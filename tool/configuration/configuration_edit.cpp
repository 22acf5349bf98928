#include "tool/configuration/configuration_edit.h"

#include <fmt/core.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "tool/configuration/configuration_text.h"
#include "tool/findings.h"
#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

using Names = std::set<std::string>;

bool IsSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

std::size_t LineBegin(std::string_view text, std::size_t place) {
    if (place == 0) return 0;
    const std::size_t end = text.find_last_of("\r\n", place - 1);
    return end == text.npos ? 0 : end + 1;
}

std::size_t LineEnd(std::string_view text, std::size_t place) {
    return std::min(text.find_first_of("\r\n", place), text.size());
}

// Returns the place behind the line feed, the carriage return or both that end a line.
std::size_t NextLine(std::string_view text, std::size_t lineEnd) {
    if (text.substr(lineEnd).starts_with("\r\n")) return lineEnd + 2;
    return std::min(lineEnd + 1, text.size());
}

std::string LineFeedOf(std::string_view text) { return text.find("\r\n") != text.npos ? "\r\n" : "\n"; }

// --- What the file says, so that two texts can be compared

// Returns every word before a "=".
Names KeysIn(std::string_view text) {
    Names names;
    for (std::size_t sign = text.find('='); sign != text.npos; sign = text.find('=', sign + 1)) {
        if (sign == 0) continue;
        const std::size_t last = text.find_last_not_of(' ', sign - 1);
        if (last == text.npos) continue;
        const std::size_t before = text.find_last_of(" \r\n{", last);
        const std::size_t begin = before == text.npos ? 0 : before + 1;
        if (begin <= last) names.emplace(text.substr(begin, last - begin + 1));
    }
    return names;
}

// Returns every row of words before a "=" and a "{", within its line.
Names SectionsIn(std::string_view text) {
    Names names;
    for (std::size_t brace = text.find('{'); brace != text.npos; brace = text.find('{', brace + 1)) {
        std::size_t end = brace;
        while (end > 0 && IsSpace(text[end - 1])) --end;
        if (end == 0 || text[end - 1] != '=') continue;
        --end;
        while (end > 0 && IsSpace(text[end - 1])) --end;
        const std::size_t line = LineBegin(text, end);
        for (std::size_t begin = end; begin-- > line;) {
            if (begin == line || text[begin - 1] == ' ') names.emplace(text.substr(begin, end - begin));
        }
    }
    return names;
}

using Reading = std::map<std::pair<std::string, std::string>, std::string>;

// Returns what each of these keys reads as in each of these sections.
Reading Read(const std::string& text, const Names& sections, const Names& keys) {
    Reading reading;
    const ConfigurationText whole(text);
    for (const std::string& section : sections) {
        const auto place = whole.FindSection(section);
        if (!place) continue;
        // The look-up in the section's own text finds the same as in the whole text, and is faster.
        const ConfigurationText part(whole.Text().substr(place->name, place->end - place->name));
        for (const std::string& key : keys) {
            if (const auto entry = part.FindEntry(section, key))
                reading[{section, key}] = part.ValueOf(*entry);
        }
    }
    return reading;
}

std::string Described(const Reading& reading, const Reading::key_type& name) {
    const auto found = reading.find(name);
    return found == reading.end() ? "nothing" : InQuotes(found->second);
}

// The store takes the last words of a section's name for the name of a section, too: "Client" finds "OrmaSA
// Client".
bool IsTailOf(const std::string& section, const std::string& whole) { return whole.ends_with(" " + section); }

// Returns why the new text must not replace the old one, or an empty text when only this key reads
// differently, and reads as wanted.
std::string WhyRefused(const std::string& before, const std::string& after, const std::string& section,
                       const std::string& key, const std::optional<std::string>& value) {
    Names sections = SectionsIn(before);
    sections.merge(SectionsIn(after));
    sections.insert(section);
    Names keys = KeysIn(before);
    keys.merge(KeysIn(after));
    keys.insert(key);
    Reading old = Read(before, sections, keys);
    Reading now = Read(after, sections, keys);
    const Reading::key_type edited = {section, key};
    const auto got = now.find(edited);
    if (value ? got == now.end() || got->second != *value : got != now.end())
        return fmt::format("{} would then read as {}", key, Described(now, edited));
    old.erase(edited);
    now.erase(edited);
    for (const auto& readings : {old, now}) {
        for (const auto& [name, was] : readings) {
            if (name.second == key && IsTailOf(name.first, section)) continue;
            if (Described(old, name) != Described(now, name))
                return fmt::format("{} of section {} would then read as {} and no longer as {}", name.second,
                                   name.first, Described(now, name), Described(old, name));
        }
    }
    return "";
}

// --- Texts with an entry more or less

std::string WithInserted(std::string_view text, std::size_t place, std::string_view more) {
    std::string changed(text);
    return changed.insert(place, more);
}

// Returns texts with the entry added in several ways, the best first.
std::vector<std::string> WithNewEntry(std::string_view text, const ConfigurationText::Section& section,
                                      const std::string& entry) {
    const std::string feed = LineFeedOf(text);
    const std::size_t line = LineBegin(text, section.end);
    const bool isAtLineBegin = text.find_first_not_of(" \t", line) >= section.end;
    std::vector<std::string> ways;
    if (isAtLineBegin) {
        ways.push_back(WithInserted(text, line, entry + feed));
    } else {
        ways.push_back(WithInserted(text, section.end, feed + entry + feed));
    }
    const std::size_t brace = text.find('{', section.name);
    if (brace != text.npos) ways.push_back(WithInserted(text, brace + 1, feed + entry));
    return ways;
}

std::vector<std::string> WithNewSection(std::string_view text, const std::string& section,
                                        const std::string& entry) {
    const std::string feed = LineFeedOf(text);
    const std::string lines = section + " = {" + feed + entry + feed + "}" + feed;
    const bool endsLine = text.empty() || text.ends_with('\n') || text.ends_with('\r');
    return {std::string(text) + (endsLine ? "" : feed) + lines, lines + std::string(text)};
}

std::string WithoutEntry(std::string_view text, const ConfigurationText::Entry& entry) {
    std::size_t begin = entry.key;
    std::size_t end = entry.end;
    if (end < text.size() && text[end] == ';') ++end;
    const std::size_t lineBegin = LineBegin(text, begin);
    const std::size_t lineEnd = LineEnd(text, end);
    // The store knows no mark that begins a comment. Such marks may stand in front of the entry.
    const bool isAlone =
        text.substr(lineBegin, begin - lineBegin).find_first_not_of(" \t#/!;") == text.npos &&
        text.substr(end, lineEnd - end).find_first_not_of(" \t") == text.npos;
    if (isAlone) {
        begin = lineBegin;
        end = NextLine(text, lineEnd);
    }
    std::string changed(text);
    return changed.erase(begin, end - begin);
}

std::string WhyNameIsRefused(const std::string& what, const std::string& name) {
    if (name.empty()) return fmt::format("The {} has no name.", what);
    if (name.find_first_of("={};\r\n\t") != name.npos || name.starts_with(' ') || name.ends_with(' '))
        return fmt::format("{} cannot be the name of a {}.", InQuotes(name), what);
    return "";
}

std::string WhyNamesAreRefused(std::string_view text, const std::string& section, const std::string& key) {
    if (text.find('\0') != text.npos) return "The file holds a byte 0, behind which nothing counts.";
    const std::string why = WhyNameIsRefused("section", section);
    return !why.empty() ? why : WhyNameIsRefused("key", key);
}

std::string WhyValueIsRefused(const std::string& value) {
    const std::size_t place = value.find_first_of(";}\r\n\t");
    if (place != value.npos)
        return fmt::format("A value cannot hold {}: the file has no way to write it.",
                           InQuotes(value.substr(place, 1)));
    if (value.find('\0') != value.npos) return "A value cannot hold a byte 0.";
    if (value.starts_with(' ')) return "A value cannot begin with a blank: blanks after \"=\" do not count.";
    return "";
}

}  // namespace

Edit SetKey(std::string_view text, const std::string& section, const std::string& key,
            const std::string& value) {
    std::string why = WhyNamesAreRefused(text, section, key);
    if (why.empty()) why = WhyValueIsRefused(value);
    if (!why.empty()) return {std::nullopt, why};

    const ConfigurationText current(text);
    std::vector<std::string> ways;
    const std::string entry = fmt::format("   {} = {};", key, value);
    if (const auto place = current.FindEntry(section, key)) {
        std::string changed(text);
        ways.push_back(changed.replace(place->value, place->end - place->value, value));
    } else if (const auto found = current.FindSection(section)) {
        ways = WithNewEntry(text, *found, entry);
    } else {
        ways = WithNewSection(text, section, entry);
    }
    for (const std::string& way : ways) {
        const std::string reason = WhyRefused(std::string(text), way, section, key, value);
        if (reason.empty()) return {way, ""};
        if (why.empty()) why = fmt::format("The file has no room for this: {}.", reason);
    }
    return {std::nullopt, why};
}

Edit UnsetKey(std::string_view text, const std::string& section, const std::string& key) {
    const std::string why = WhyNamesAreRefused(text, section, key);
    if (!why.empty()) return {std::nullopt, why};
    std::string changed(text);
    for (;;) {
        const auto place = ConfigurationText(changed).FindEntry(section, key);
        if (!place) break;
        changed = WithoutEntry(changed, *place);
    }
    const std::string reason = WhyRefused(std::string(text), changed, section, key, std::nullopt);
    if (!reason.empty()) return {std::nullopt, fmt::format("The key cannot be taken out: {}.", reason)};
    return {changed, ""};
}

std::vector<std::pair<std::string, std::string>> KeysOf(std::string_view text, const std::string& section) {
    const ConfigurationText whole(text);
    std::map<std::size_t, std::pair<std::string, std::string>> byPlace;
    for (const std::string& key : KeysIn(whole.Text())) {
        if (const auto entry = whole.FindEntry(section, key))
            byPlace[entry->key] = {key, std::string(whole.ValueOf(*entry))};
    }
    std::vector<std::pair<std::string, std::string>> keys;
    for (auto& [place, key] : byPlace) keys.push_back(std::move(key));
    return keys;
}

}  // namespace ckscribe
