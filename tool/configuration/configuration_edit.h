// Changes one key in the text of a configuration file and nothing else.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ckscribe {

struct Edit {
    std::optional<std::string> text;  // the new text; nothing when the edit is refused
    std::string refusal;              // then: why, as a sentence
};

// Lets `key` of `section` read as `value`. Every other byte of the text stays; a key or a section that is
// missing is added. Refused when the key would not read back as the value, or when another key of the file
// would read differently.
Edit SetKey(std::string_view text, const std::string& section, const std::string& key,
            const std::string& value);

// Takes away every entry of the key that counts or would count once the one before it is gone. Refused when
// another key of the file would read differently.
Edit UnsetKey(std::string_view text, const std::string& section, const std::string& key);

// The keys of a section that count, with their values, in the order of the file.
std::vector<std::pair<std::string, std::string>> KeysOf(std::string_view text, const std::string& section);

}  // namespace ckscribe
