#include "config/growing_text.h"

#include <cstdlib>
#include <cstring>

GrowingText::~GrowingText() { std::free(text_); }

void GrowingText::Append(std::string_view text) {
    if (text.empty() || !isWhole_) return;
    isWhole_ = Reserve(text.size());
    if (!isWhole_) return;
    std::memcpy(text_ + length_, text.data(), text.size());
    length_ += text.size();
}

bool GrowingText::Reserve(std::size_t more) {
    if (capacity_ - length_ >= more) return true;
    const std::size_t capacity = 2 * (length_ + more);
    char* text = static_cast<char*>(std::realloc(text_, capacity));
    if (text == nullptr) return false;
    text_ = text;
    capacity_ = capacity;
    return true;
}
