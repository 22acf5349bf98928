// This file makes the secrets that tests use: PINs, passwords, cloning domains, and everything else that must
// never be written.
//
// A planted secret alternates letters and marks, like "QJ" and "~^" in "Q~J^Q~J^". It uses few letters and
// marks, and no other text alternates them like this by chance. Any four bytes of any secret therefore give
// the secret away wherever it turns up (see secret_search.h). A search need not know which secrets were
// planted. Every secret of a test must be planted.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

inline constexpr std::string_view kSecretLetters = "JKQVWXZ";
inline constexpr std::string_view kSecretMarks = "!@^~";

// Returns another secret for each number. A secret has 16 to 24 characters.
inline std::string PlantedSecret(std::size_t number) {
    std::string secret;
    for (std::size_t i = 0, digits = number; i < 8 + number % 5; ++i, digits /= kSecretLetters.size()) {
        secret += kSecretLetters[(digits + i) % kSecretLetters.size()];
        secret += kSecretMarks[(number + i * i) % kSecretMarks.size()];
    }
    return secret;
}
