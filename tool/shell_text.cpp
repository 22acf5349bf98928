#include "tool/shell_text.h"

#include "util/shell_word.h"

namespace ckscribe {

std::string ShellWord(const std::string& text) {
    const bool isPlain = !text.empty() && text.front() != '-' &&
                         text.find_first_not_of(
                             "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                             "/._-+,:@%") == text.npos;
    if (isPlain || text == "-") return text;
    std::string word(4 * text.size() + 5, '\0');
    return ShellWordFromPath(text.c_str(), word.data(), word.size()) ? word.c_str() : "";
}

}  // namespace ckscribe
