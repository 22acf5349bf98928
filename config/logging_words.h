// Knows the words that make up the values of "LoggingMask" and "LoggingLevel", and their meanings.
//
// Threads: any thread may call these functions at any time.
#pragma once

#include <span>
#include <string_view>

#include "functions/function_classes.h"

namespace ckscribe {

struct LoggingClass {
    std::string_view name;
    FunctionClass bit;
};

// Returns every word that a mask may hold.
std::span<const LoggingClass> LoggingClasses();

// COMPAT: words of a mask after the twelfth do not count.
inline constexpr int kMostMaskWords = 12;

// Takes the first word off a mask and returns it. Returns an empty word if there is none left. Blanks and
// vertical bars separate words.
std::string_view TakeMaskWord(std::string_view* mask);

// Returns the bit of the class with this name, and 0 for any other word. Capitals matter.
unsigned ClassBit(std::string_view word);

// Returns the bits of all words that count and are names of classes.
unsigned LoggingMaskOf(std::string_view mask);

// Returns every word that "LoggingLevel" knows. The first means level 1, the next level 2, and so forth.
std::span<const std::string_view> LoggingLevelWords();

// Returns 1 to 3 for these words. Capitals matter. COMPAT: any other word means 4, everything.
int LoggingLevelOf(std::string_view word);

}  // namespace ckscribe
