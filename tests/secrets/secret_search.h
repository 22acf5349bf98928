// This file finds planted secrets (see planted_secret.h) in what was written.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct FoundSecret {
    std::size_t offset;
    std::string form;  // how it is written: "text", "hexadecimal", "number"
};

// Parts of a secret that are shorter than this do not count.
inline constexpr std::size_t kLeastPart = 4;

// Parts that are written in digits do not count if they are shorter than this. Addresses, signatures and keys
// can look like four bytes of a secret by chance. Use this number for texts with such things, and kLeastPart
// for all others.
inline constexpr std::size_t kLeastPartAmongChance = 8;

// Returns the first part of a secret in `written`, or nothing if there is none. The part may be text,
// hexadecimal digits or a decimal number, with the bytes in either order. `leastInDigits` is one of the two
// numbers above.
std::optional<FoundSecret> FindSecret(std::string_view written, std::size_t leastInDigits);

// Returns the first part of a secret in a file. Reads the file piece by piece, so that tests of the library's
// memory can search their logs. Passes over programs, libraries and images of processes: they hold secrets
// that they were given.
std::optional<FoundSecret> FindSecretInFile(const std::filesystem::path& path);

// Searches a file, or every file below a directory, and names each file with a secret. Passes over a file
// that is larger than any log.
std::vector<std::string> FilesWithSecrets(const std::filesystem::path& place);
