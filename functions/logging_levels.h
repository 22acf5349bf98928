// Knows the lowest logging level that logs each command, from the rows of functions/functions.def.
#pragma once

#include <array>

#include "functions/command_type.h"

namespace ckscribe {

struct CommandLevel {
    unsigned type;
    unsigned level;
};

inline constexpr CommandLevel kCommandLevels[] = {
#define C_EVERY_ROW(Name, Type, Class, Level, ...) {Type, Level},
#define C_UNEXPORTED_ROW(Name, Type, Level, ...) {Type, Level},
#include "functions/functions.def"
};

inline constexpr unsigned kStandardCommands = 51;

// The index of this table is the type of a command of the standard. A type without a function keeps level 0.
inline constexpr std::array<unsigned, kStandardCommands> kLevelsByType = [] {
    std::array<unsigned, kStandardCommands> levels{};
    for (const CommandLevel& command : kCommandLevels) levels[command.type] = command.level;
    return levels;
}();

constexpr bool FunctionsOfACommandShareItsLevel() {
    for (const CommandLevel& command : kCommandLevels) {
        if (kLevelsByType[command.type] != command.level) return false;
    }
    return true;
}
static_assert(FunctionsOfACommandShareItsLevel(),
              "functions/functions.def: give all rows that have one TYPE the same LEVEL.");

// Returns 1 to 4 for a command of the standard. Records of the command are made only if "LoggingLevel" is at
// least this value.
constexpr unsigned LevelOf(CommandType type) { return kLevelsByType[type]; }

}  // namespace ckscribe
