#include "tests/secrets/secret_search.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <fstream>

#include "tests/secrets/planted_secret.h"

namespace {

enum class Kind { kNone, kLetter, kMark };

// kKinds says the kind of each byte.
constexpr std::array<Kind, 256> kKinds = [] {
    std::array<Kind, 256> kinds{};
    for (const char letter : kSecretLetters) kinds[static_cast<unsigned char>(letter)] = Kind::kLetter;
    for (const char mark : kSecretMarks) kinds[static_cast<unsigned char>(mark)] = Kind::kMark;
    return kinds;
}();

// A Run counts bytes that alternate like those of a secret.
class Run {
public:
    // Returns the number of bytes in a row, up to this one, that may belong to a secret.
    std::size_t Add(unsigned char byte) {
        const Kind kind = kKinds[byte];
        length = kind == Kind::kNone ? 0 : kind == last ? 1 : length + 1;
        last = kind;
        return length;
    }

private:
    Kind last = Kind::kNone;
    std::size_t length = 0;
};

constexpr int HexDigit(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    return -1;
}

// The table says of each character whether it is the first hexadecimal digit of a byte that a secret may
// have. Most digits of a log are not, and the search passes over them.
constexpr std::array<bool, 256> kIsFirstHexDigit = [] {
    std::array<bool, 256> isFirst{};
    for (std::size_t character = 0; character < isFirst.size(); ++character) {
        const int digit = HexDigit(static_cast<char>(character));
        for (std::size_t byte = 0; byte < kKinds.size(); ++byte) {
            if (kKinds[byte] != Kind::kNone && static_cast<int>(byte >> 4) == digit)
                isFirst[character] = true;
        }
    }
    return isFirst;
}();

// The table says of each byte whether any form of a secret may contain it. The search uses it to pass over
// most of a log.
constexpr std::array<bool, 256> kIsInAnyForm = [] {
    std::array<bool, 256> isInAny{};
    for (std::size_t byte = 0; byte < isInAny.size(); ++byte) {
        const bool isDecimal = byte >= '0' && byte <= '9';
        isInAny[byte] = kKinds[byte] != Kind::kNone || kIsFirstHexDigit[byte] || isDecimal;
    }
    return isInAny;
}();

// Returns the byte that the first two digits stand for, or -1 if they are no digits.
int HexByte(std::string_view text) {
    if (text.size() < 2) return -1;
    const int high = HexDigit(text[0]);
    const int low = HexDigit(text[1]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

// Returns `text` without the characters that dumps put between bytes: blanks, colons, commas, hyphens, and
// "0x" or "\x".
std::string_view WithoutSeparator(std::string_view text) {
    constexpr std::string_view kSeparators = " :,-";
    while (!text.empty() && kSeparators.find(text[0]) != std::string_view::npos) text.remove_prefix(1);
    if (text.starts_with("0x") || text.starts_with("0X") || text.starts_with("\\x")) text.remove_prefix(2);
    return text;
}

std::size_t HexBytesOfSecret(std::string_view text) {
    Run run;
    std::size_t length = 0;
    for (int byte = HexByte(text); byte >= 0; byte = HexByte(text)) {
        const std::size_t next = run.Add(static_cast<unsigned char>(byte));
        if (next <= length) break;
        length = next;
        text = WithoutSeparator(text.substr(2));
    }
    return length;
}

// Returns the longest part of a secret in the bytes of a decimal number.
std::size_t NumberBytesOfSecret(std::string_view digits) {
    constexpr std::size_t kDigitsOfLeastPart = 9;
    constexpr std::size_t kDigitsOfWord = 20;
    if (digits.size() < kDigitsOfLeastPart || digits.size() > kDigitsOfWord) return 0;
    const std::uint64_t number = std::strtoull(std::string(digits).c_str(), nullptr, 10);
    Run run;
    std::size_t longest = 0;
    for (unsigned shift = 0; shift < 64; shift += 8) {
        const std::size_t length = run.Add(static_cast<unsigned char>(number >> shift));
        if (length > longest) longest = length;
    }
    return longest;
}

bool IsDecimal(char character) { return character >= '0' && character <= '9'; }

}  // namespace

std::optional<FoundSecret> FindSecret(std::string_view written, std::size_t leastInDigits) {
    Run run;
    const char* const bytes = written.data();
    for (std::size_t i = 0; i < written.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if (!kIsInAnyForm[byte]) {
            run = Run();
            continue;
        }
        if (run.Add(byte) >= kLeastPart) return FoundSecret{i + 1 - kLeastPart, "text"};
        if (kIsFirstHexDigit[byte] && HexBytesOfSecret(written.substr(i)) >= leastInDigits)
            return FoundSecret{i, "hexadecimal"};
        const bool isStartOfNumber = IsDecimal(written[i]) && (i == 0 || !IsDecimal(written[i - 1]));
        if (!isStartOfNumber) continue;
        const std::string_view digits = written.substr(i, written.find_first_not_of("0123456789", i) - i);
        if (NumberBytesOfSecret(digits) >= leastInDigits) return FoundSecret{i, "number"};
    }
    return std::nullopt;
}

std::optional<FoundSecret> FindSecretInFile(const std::filesystem::path& path) {
    constexpr std::size_t kPiece = std::size_t{1} << 16;
    constexpr std::size_t kLongestForm = 256;
    std::ifstream file(path, std::ios::binary);
    std::string text;  // the file from `begin` on
    for (std::size_t begin = 0; file;) {
        const std::size_t kept = text.size();
        text.resize(kept + kPiece);
        file.read(text.data() + kept, kPiece);
        text.resize(kept + static_cast<std::size_t>(file.gcount()));
        if (begin == 0 && text.starts_with("\177ELF")) break;
        const auto found = FindSecret(text, kLeastPartAmongChance);
        if (found) return FoundSecret{begin + found->offset, found->form};
        if (text.size() <= kLongestForm) continue;
        begin += text.size() - kLongestForm;
        text.erase(0, text.size() - kLongestForm);
    }
    return std::nullopt;
}

std::vector<std::string> FilesWithSecrets(const std::filesystem::path& place) {
    namespace fs = std::filesystem;
    constexpr std::uintmax_t kLargestLog = std::uintmax_t{1} << 30;
    std::vector<std::string> places;
    std::error_code error;
    const auto search = [&](const fs::path& path) {
        if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kLargestLog) return;
        const auto found = FindSecretInFile(path);
        if (found)
            places.push_back(path.string() + ": " + found->form + " at " + std::to_string(found->offset));
    };
    search(place);
    if (!fs::is_directory(place, error)) return places;
    constexpr auto kOptions = fs::directory_options::skip_permission_denied;
    for (fs::recursive_directory_iterator entry(place, kOptions, error), end; entry != end && !error;
         entry.increment(error))
        search(entry->path());
    return places;
}
