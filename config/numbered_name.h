#pragma once

#include <cstdio>

namespace ckscribe {

// Puts a number into the name of a key or a section: NumberedName("VirtualToken%02dLabel", 3) is
// "VirtualToken03Label". The pattern holds one "%d" and at most 50 other characters. The text belongs to the
// object. Any thread may read it at any time.
class NumberedName {
public:
    NumberedName(const char* pattern, int number) { std::snprintf(text, sizeof text, pattern, number); }
    operator const char*() const { return text; }

private:
    char text[64];
};

}  // namespace ckscribe
