#include "util/shell_word.h"

#include <cstring>

namespace ckscribe {

namespace {

bool Append(const char* text, std::size_t length, char** end, const char* limit) {
    if (static_cast<std::size_t>(limit - *end) < length) return false;
    std::memcpy(*end, text, length);
    *end += length;
    return true;
}

}  // namespace

bool ShellWordFromPath(const char* path, char* word, std::size_t size) {
    const char* limit = word + size;
    const char* start = path[0] == '-' ? "'./" : "'";
    if (!Append(start, std::strlen(start), &word, limit)) return false;
    for (; *path != '\0'; ++path) {
        const bool isQuote =
            *path == '\'';  // it ends the quoted part; an escaped quote and a new part follow
        if (!Append(isQuote ? "'\\''" : path, isQuote ? 4 : 1, &word, limit)) return false;
    }
    return Append("'", sizeof "'", &word, limit);
}

}  // namespace ckscribe
