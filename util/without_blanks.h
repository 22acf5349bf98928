#pragma once

#include <string_view>

namespace ckscribe {

// Returns the text without the spaces and tabs at its beginning and its end. The result is a part of the same
// memory. Any thread may call it at any time.
constexpr std::string_view WithoutBlanks(std::string_view text) {
    constexpr std::string_view kBlanks = " \t";
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

}  // namespace ckscribe
