#pragma once

#include <cstdio>

namespace ckscribe {

// A key or a section name with a number in it: NumberedName("VirtualToken%02dLabel", 3) is
// "VirtualToken03Label". The pattern holds one "%d" and at most 50 other characters.
class NumberedName {
public:
    NumberedName(const char* pattern, int number) { std::snprintf(text, sizeof text, pattern, number); }
    operator const char*() const { return text; }

private:
    char text[64];
};

}  // namespace ckscribe
