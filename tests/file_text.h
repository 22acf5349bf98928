// FileText reads the text of a file.
#pragma once

#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/unwatched.h"

// Returns the bytes of a file from the offset `from` on. A file that does not exist has none. Reads the bytes
// in blocks: tests are compiled without optimization, and some read logs of many megabytes.
inline std::string FileText(const std::string& path, std::uintmax_t from = 0) {
    const Unwatched reading;
    std::ifstream file(path, std::ios::binary);
    file.seekg(static_cast<std::streamoff>(from));
    std::ostringstream text;
    text << file.rdbuf();
    return std::move(text).str();
}
