// The words that the values of "LoggingMask" and "LoggingLevel" are made of, and what they mean.
//
// Pure functions over constant data: any thread may call them at any time.
#pragma once

#include <span>
#include <string_view>

#include "functions/function_classes.h"

namespace ckscribe {

struct LoggingClass {
    std::string_view name;
    FunctionClass bit;
};

// Every word that a mask may hold.
std::span<const LoggingClass> LoggingClasses();

// The words of a mask after the twelfth do not count.
inline constexpr int kMostMaskWords = 12;

// Takes the first word off a mask, whose words stand between blanks and vertical bars. Empty when there is
// none left.
std::string_view TakeMaskWord(std::string_view* mask);

// The bit of a class, capitals matter; 0 for any other word.
unsigned ClassBit(std::string_view word);

// The bits of the words that count and are names of classes.
unsigned LoggingMaskOf(std::string_view mask);

// Every word of "LoggingLevel" that means something; the first is level 1, the next 2, and so on.
std::span<const std::string_view> LoggingLevelWords();

// 1 to 3 for these words, capitals matter; 4, everything, for any other.
int LoggingLevelOf(std::string_view word);

}  // namespace ckscribe
