// The secrets that tests use: PINs, passwords, cloning domains, and all else that may never be written.
//
// A planted secret alternates letters and marks, like "QJ" and "~^" in "Q~J^Q~J^", and is chosen from so few
// of them that nothing else that is ever written does so by chance. So any four bytes of any secret give it
// away (see secret_search.h), wherever it turns up, and nobody needs to know which secrets were planted. For
// that, everything that a test uses as a secret has to be a planted one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

inline constexpr std::string_view kSecretLetters = "JKQVWXZ";
inline constexpr std::string_view kSecretMarks = "!@^~";

// A secret of its own for each number, of 16 to 24 characters.
inline std::string PlantedSecret(std::size_t number) {
    std::string secret;
    for (std::size_t i = 0, digits = number; i < 8 + number % 5; ++i, digits /= kSecretLetters.size()) {
        secret += kSecretLetters[(digits + i) % kSecretLetters.size()];
        secret += kSecretMarks[(number + i * i) % kSecretMarks.size()];
    }
    return secret;
}
