// This fuzzer edits a file and looks the key up. An input begins with a digit for the operation: 0 sets, 1
// clears a key, 2 clears a section, 3 replaces a section. The section's name, the key and the value or body
// come next, each followed by a line feed, and then the file's text. A "|" in the body stands for a line
// feed.
//
// These properties hold for every input. An edit succeeds unless the file is empty or a generated line is too
// long. No line grows beyond 839 characters. Only an appended section goes without a line feed at the end.
//
// These hold, too, if the name stands in the file at most once, in a header with a "}" after it:
// - the lines of the others, cut at 838 characters and ended by a line feed, stay as they were;
// - a value that was set is found, and a key or section that was cleared is not.

#include <cstring>
#include <vector>

#include "tests/fuzz/fuzzed_store.h"

namespace {

constexpr auto kNowhere = std::string::npos;

bool Holds(const std::string& text, const std::string& part) { return text.find(part) != kNowhere; }

// Returns every line, cut at 838 characters and ended by a line feed.
std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        lines.push_back(text.substr(from, std::min<std::size_t>(end - from, 838)) + "\n");
        from = end + 1;
    }
    return lines;
}

std::size_t Occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != kNowhere; at = text.find(part, at + 1)) ++count;
    return count;
}

// Returns whether no rule of the syntax gets in the way of the name.
bool IsPlain(const std::string& name) {
    if (name.empty() || name.front() == ' ' || name.back() == ' ') return false;
    for (const char c : name) {
        if (static_cast<signed char>(c) < ' ' || c == 0x7F || std::strchr("{}=;", c) != nullptr) return false;
    }
    return true;
}

bool IsPlainValue(const std::string& value) { return value.empty() || IsPlain(value); }

// Parts are the parts of a file: up to the header of the section, the section's lines, and from the line that
// closes it.
struct Parts {
    std::string before;
    std::vector<std::string> inside;
    std::string closing;  // the line with "}"
    std::string after;
};

bool IsHeader(const std::string& line, const std::string& section) {
    std::string rest = line.substr(std::min(line.find_first_not_of(' '), line.size()));
    if (rest.compare(0, section.size(), section) != 0) return false;
    for (const char* blank : {" ", "\n"}) {
        while (Holds(rest.substr(section.size()), blank)) rest.erase(rest.find(blank, section.size()), 1);
    }
    return rest == section + "={";
}

// Returns false if the name does not identify one section. `parts` has no closing line if the section is
// missing.
bool SplitAtSection(const std::string& text, const std::string& section, Parts* parts) {
    const std::vector<std::string> lines = Lines(text);
    std::size_t mentions = 0;
    std::size_t i = 0;
    for (const std::string& line : lines) mentions += Occurrences(line, section);
    if (mentions > 1 || Holds(text, std::string(1, '\0'))) return false;
    while (i < lines.size() && !Holds(lines[i], section)) parts->before += lines[i++];
    if (i == lines.size()) return true;
    if (!IsHeader(lines[i], section)) return false;
    parts->before += lines[i++];
    while (i < lines.size() && !Holds(lines[i], "}")) parts->inside.push_back(lines[i++]);
    if (i == lines.size()) return false;
    parts->closing = lines[i++];
    while (i < lines.size()) parts->after += lines[i++];
    return true;
}

// Returns whether an edit and a lookup agree on the lines of the key: it stands in no line twice.
bool IsToldApart(const std::string& key, const Parts& parts) {
    for (const std::string& line : parts.inside) {
        if (Occurrences(line, key) > 1) return false;
    }
    return true;
}

struct Edit {
    char operation;
    std::string section;
    std::string key;
    std::string value;

    int Run(FuzzedStore* store) const {
        switch (operation) {
            case '0':
                return store->SetEntry(section.c_str(), key.c_str(), value.c_str(), 0);
            case '1':
                return store->ClearEntry(section.c_str(), key.c_str(), 0);
            case '2':
                return store->ClearSection(section.c_str(), 0);
            default:
                return store->ReplaceConfigurationInfo(section.c_str(), value.c_str(), 0);
        }
    }
    bool Appends() const { return operation == '0' || operation == '3'; }
    bool IsTooLong() const {
        return section.size() > 834 || (operation == '0' && key.size() + value.size() > 827);
    }
};

void CheckAnyFile(const Edit& edit, int result, const std::string& before, const std::string& after) {
    Require(result == 0 || result == 1);
    if (before.empty()) {
        Require(result == 0 && after.empty());
        return;
    }
    Require(result == 1 || (edit.Appends() && edit.IsTooLong()));
    std::size_t length = 0;
    for (const char c : after) Require((length = c == '\n' ? 0 : length + 1) < 839);
    Require(after.empty() || after.back() == '\n' || (edit.Appends() && after.back() == '}'));
    if (edit.operation == '1') Require(after.size() <= before.size() + 1);
    if (edit.operation == '2') Require(after.size() <= before.size() + 1);
}

void CheckOthers(const Edit& edit, const Parts& parts, const std::string& after) {
    if (parts.closing.empty()) {
        Require(after.compare(0, parts.before.size(), parts.before) == 0);
        Require(edit.Appends() || after == parts.before);
        return;
    }
    const bool isWhole = edit.operation == '2';  // header and closing line go, too
    const std::string start =
        isWhole ? parts.before.substr(0, parts.before.rfind('\n', parts.before.size() - 2) + 1)
                : parts.before;
    const std::string end = (isWhole ? "" : parts.closing) + parts.after;
    Require(after.size() >= start.size() + end.size());
    Require(after.compare(0, start.size(), start) == 0);
    Require(after.compare(after.size() - end.size(), end.size(), end) == 0);
    Require(!isWhole || after == start + end);
}

void CheckLookup(const Edit& edit, const Parts& parts, const FuzzedStore& store) {
    const std::optional<std::string> found = store.Lookup(edit.section, edit.key);
    switch (edit.operation) {
        case '0':
            if (IsPlainValue(edit.value) && IsToldApart(edit.key, parts)) Require(found == edit.value);
            break;
        case '1':
            if (!Holds(parts.closing, edit.key)) Require(!found);
            break;
        case '2':
            Require(!found);
            break;
        default:
            break;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FuzzedStore store;
    if (size == 0) return 0;
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const char operation = static_cast<char>('0' + data[0] % 4);
    Edit edit{operation, TakeLine(&text), TakeLine(&text), TakeLine(&text)};
    if (edit.operation == '3') {
        for (char& c : edit.value) c = c == '|' ? '\n' : c;
    }
    store.Write(text);
    const int result = edit.Run(&store);
    const std::string after = store.Text();
    if (edit.operation != '3') CheckAnyFile(edit, result, text, after);

    Parts parts;
    if (result != 1 || !IsPlain(edit.section) || !SplitAtSection(text, edit.section, &parts)) return 0;
    CheckOthers(edit, parts, after);
    if (IsPlain(edit.key) && !Holds(edit.key, edit.section)) CheckLookup(edit, parts, store);
    return 0;
}
