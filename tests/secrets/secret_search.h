// Finds planted secrets (see planted_secret.h) in what was written.
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

// Shorter parts of a secret do not count.
inline constexpr std::size_t kLeastPart = 4;

// The same for a part that is written in digits. Addresses, signatures and keys can look like four bytes of a
// secret by chance. Use this number for texts with such things, and kLeastPart for all others.
inline constexpr std::size_t kLeastPartAmongChance = 8;

// The first part of a secret in `written`, as text, in hexadecimal digits or as a decimal number, with the
// bytes in either order; nothing if there is none. `leastInDigits` is one of the two numbers above.
std::optional<FoundSecret> FindSecret(std::string_view written, std::size_t leastInDigits);

// The same in a file. The file is read piece by piece, so that tests of the library's memory can search their
// logs. Programs, libraries and images of processes are passed over: they hold secrets that they were given.
std::optional<FoundSecret> FindSecretInFile(const std::filesystem::path& path);

// Searches a file, or every file below a directory, and names each file with a secret. A file that is larger
// than any log is passed over.
std::vector<std::string> FilesWithSecrets(const std::filesystem::path& place);
