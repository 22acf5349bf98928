// Changes one key in the text of a configuration file and nothing else.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ckscribe {

struct Edit {
    std::optional<std::string> text;  // absent if the edit is refused
    std::string refusal;              // the reason then, as a sentence
};

// Makes `key` of `section` read as `value`, and adds a missing key or section. Every other byte of the text
// stays. Refuses the edit if the key would not read back as the value, or if another key of the file would
// read differently.
Edit SetKey(std::string_view text, const std::string& section, const std::string& key,
            const std::string& value);

// Removes every entry of the key that counts, or that would count without the entry before it. Refuses the
// edit if another key of the file would read differently.
Edit UnsetKey(std::string_view text, const std::string& section, const std::string& key);

// Returns the keys of a section that count, with their values, in the order of the file.
std::vector<std::pair<std::string, std::string>> KeysOf(std::string_view text, const std::string& section);

}  // namespace ckscribe
