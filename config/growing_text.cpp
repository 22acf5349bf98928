#include "config/growing_text.h"

#include <cstdlib>
#include <cstring>

namespace ckscribe {

GrowingText::~GrowingText() { std::free(characters); }

void GrowingText::Append(std::string_view text) {
    if (text.empty() || !isWhole) return;
    isWhole = Reserve(text.size());
    if (!isWhole) return;
    std::memcpy(characters + length, text.data(), text.size());
    length += text.size();
}

bool GrowingText::Reserve(std::size_t more) {
    if (capacity - length >= more) return true;
    const std::size_t enough = 2 * (length + more);
    char* grown = static_cast<char*>(std::realloc(characters, enough));
    if (grown == nullptr) return false;
    characters = grown;
    capacity = enough;
    return true;
}

}  // namespace ckscribe
