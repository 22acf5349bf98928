// Finds the log files that are one rotated log: "log.txt", "log.txt.1", "log.txt.2.gz",
// "log.txt-20261121.xz".
//
// These functions are pure: any thread may call them at any time.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ckscribe {

// A RotatedName is a file's place in its family, as its name says it.
struct RotatedName {
    std::string log;      // the name without what rotation and compression added
    std::string date;     // digits of its date; empty: none
    unsigned number = 0;  // the greater, the older; 0: none
};
RotatedName ReadRotatedName(std::string_view path);

// A LogFamily holds the indexes of its files among the paths, the oldest first.
using LogFamily = std::vector<std::uint32_t>;

// Sorts paths into families. Every path belongs to one family; families stand in the order of their first
// paths. Standard input ("-") is a family of its own.
std::vector<LogFamily> FamiliesOf(std::span<const std::string> paths);

}  // namespace ckscribe
