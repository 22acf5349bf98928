// This fuzzer looks a key up in a file. An input is the section's name, a line feed, the key, a line feed,
// and the file's text. These properties hold:
// - the lookup finds what the rules of the syntax, written down a second time below, find;
// - a smaller buffer receives the beginning of the value, and nothing beyond its size is touched;
// - a file is read unchanged, and stays unchanged.

#include <cctype>
#include <cstring>

#include "tests/fuzz/fuzzed_store.h"

namespace {

constexpr auto kNowhere = std::string::npos;

bool IsAnyOf(const char* characters, char c) { return c != '\0' && std::strchr(characters, c) != nullptr; }

// Returns where the brace of a header stands if a section's name ends at `from`. Otherwise returns the place
// that shows that there is no header.
std::size_t HeaderEnd(const std::string& text, std::size_t from, bool* isHeader) {
    int equals = 0;
    std::size_t i = from;
    for (; i < text.size(); ++i) {
        if (text[i] == '=') {
            if (++equals == 2) break;
        } else if (!std::isspace(static_cast<unsigned char>(text[i]))) {
            break;
        }
    }
    *isHeader = i < text.size() && text[i] == '{' && equals == 1;
    return i;
}

std::size_t SectionPosition(const std::string& text, const std::string& section) {
    if (section.empty()) return kNowhere;
    for (std::size_t from = 0;;) {
        const std::size_t name = text.find(section, from);
        if (name == kNowhere) return kNowhere;
        from = name + section.size();
        bool isHeader = false;
        if (name == 0 || IsAnyOf("\r\n ", text[name - 1])) from = HeaderEnd(text, from, &isHeader);
        if (isHeader) return name;
    }
}

std::optional<std::string> Expected(const std::string& text, const std::string& section,
                                    const std::string& key) {
    const std::size_t name = SectionPosition(text, section);
    if (name == kNowhere) return std::nullopt;
    const std::size_t start = name + section.size();
    const std::size_t brace = text.find('}', name);
    const bool isBraceInName = brace < start;
    const std::string body =
        text.substr(start, isBraceInName || brace == kNowhere ? kNowhere : brace - start);
    for (std::size_t at = body.find(key); at != kNowhere; at = body.find(key, at + 1)) {
        const bool isAtLineStart = at > 0 ? IsAnyOf(" \r\n{", body[at - 1])
                                          : IsAnyOf(" \r\n{", section.back()) || brace == start - 1;
        const std::size_t equals = body.find_first_not_of(' ', at + key.size());
        if (!isAtLineStart || equals == kNowhere || body[equals] != '=') continue;
        const std::string entry = body.substr(at, body.find_first_of(";\r\n", at) - at);
        const std::size_t separator = entry.find('=');
        if (separator == kNowhere) return std::nullopt;
        const std::size_t value = entry.find_first_not_of(' ', separator + 1);
        return value == kNowhere ? "" : entry.substr(value);
    }
    return std::nullopt;
}

void CheckCutting(const FuzzedStore& store, const std::string& section, const std::string& key,
                  const std::string& value) {
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{5}, value.size(), value.size() + 1}) {
        std::string buffer(value.size() + 8, '\xEE');
        Require(store.GetEntry(section.c_str(), key.c_str(), buffer.data(), size) == 1);
        Require(size == 0 || value.substr(0, size - 1) == buffer.c_str());
        for (std::size_t i = size; i < buffer.size(); ++i) Require(buffer[i] == '\xEE');
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static FuzzedStore store;
    std::string input(reinterpret_cast<const char*>(data), size);
    const std::string section = TakeLine(&input);
    const std::string key = TakeLine(&input);
    store.Write(input);

    const std::optional<std::string> found = store.Lookup(section, key);
    std::optional<std::string> expected = Expected(input.c_str(), section, key);
    if (expected) expected->resize(std::min<std::size_t>(expected->size(), 8191));
    Require(found == expected);
    if (found && found->size() < 8191) CheckCutting(store, section, key, *found);

    char* contents = nullptr;
    unsigned long length = 0;
    Require(store.ReadConfigurationFile(store.GetConfFileName(), &contents, &length) == !input.empty());
    Require(length == input.size() && (input.empty() || std::memcmp(contents, input.data(), length) == 0));
    delete[] contents;
    Require(store.Text() == input);
    return 0;
}
