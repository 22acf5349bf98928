#include "config/logging_words.h"

#include <algorithm>

namespace ckscribe {

namespace {

constexpr char kSeparators[] = " |";

constexpr LoggingClass kClasses[] = {
    {"GEN_FUNC", GEN_FUNC},
    {"SLOT_TOKEN_FUNC", SLOT_TOKEN_FUNC},
    {"SESSION_FUNC", SESSION_FUNC},
    {"OBJ_MNGMNT_FUNC", OBJ_MNGMNT_FUNC},
    {"ENC_DEC_FUNC", ENC_DEC_FUNC},
    {"DIGEST_FUNC", DIGEST_FUNC},
    {"SIGN_VERIFY_FUNC", SIGN_VERIFY_FUNC},
    {"KEY_MNGMNT_FUNC", KEY_MNGMNT_FUNC},
    {"MISC_FUNC", MISC_FUNC},
    {"ALL_FUNC", ALL_FUNC},
    {"QUORVANTH_FUNC", QUORVANTH_FUNC},
};

constexpr std::string_view kLevels[] = {"DESTROY", "MODIFY", "ADMIN"};

}  // namespace

std::span<const LoggingClass> LoggingClasses() { return kClasses; }

std::string_view TakeMaskWord(std::string_view* mask) {
    mask->remove_prefix(std::min(mask->find_first_not_of(kSeparators), mask->size()));
    const std::string_view word = mask->substr(0, mask->find_first_of(kSeparators));
    mask->remove_prefix(word.size());
    return word;
}

unsigned ClassBit(std::string_view word) {
    const auto* known = std::find_if(std::begin(kClasses), std::end(kClasses),
                                     [=](const LoggingClass& logged) { return logged.name == word; });
    return known != std::end(kClasses) ? static_cast<unsigned>(known->bit) : 0;
}

unsigned LoggingMaskOf(std::string_view mask) {
    unsigned bits = 0;
    for (int i = 0; i < kMostMaskWords; ++i) bits |= ClassBit(TakeMaskWord(&mask));
    return bits;
}

std::span<const std::string_view> LoggingLevelWords() { return kLevels; }

int LoggingLevelOf(std::string_view word) {
    return static_cast<int>(std::find(std::begin(kLevels), std::end(kLevels), word) - std::begin(kLevels)) +
           1;
}

}  // namespace ckscribe
