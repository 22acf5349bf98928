#pragma once

// Returns as text what a function prints to a stream.

#include <cstdio>
#include <cstdlib>
#include <string>

template <typename Print>
std::string PrintedText(Print print) {
    char* bytes = nullptr;
    std::size_t length = 0;
    std::FILE* stream = open_memstream(&bytes, &length);
    print(stream);
    std::fclose(stream);
    const std::string text(bytes, length);
    std::free(bytes);
    return text;
}
