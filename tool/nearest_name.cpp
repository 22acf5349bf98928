#include "tool/nearest_name.h"

#include <algorithm>
#include <cctype>
#include <numeric>
#include <string>
#include <vector>

namespace ckscribe {

namespace {

std::string LowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

// Returns how many letters must be added, removed or replaced to make one word of the other.
std::size_t EditDistance(std::string_view one, std::string_view other) {
    std::vector<std::size_t> row(other.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < other.size(); ++j) {
            const std::size_t replaced = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

// A longer word is not compared letter by letter.
constexpr std::size_t kLongestWord = 100;
constexpr std::size_t kShortestPart = 4;
constexpr std::size_t kMostSlips = 2;

}  // namespace

NearestName FindNearestName(std::string_view word, std::span<const std::string_view> names) {
    const std::string wanted = LowerCase(word.substr(0, kLongestWord));
    NearestName nearest = {names.front(), false};
    std::size_t least = static_cast<std::size_t>(-1);
    for (const std::string_view name : names) {
        const std::string known = LowerCase(name);
        const bool isPart = std::min(wanted.size(), known.size()) >= kShortestPart &&
                            (wanted.find(known) != wanted.npos || known.find(wanted) != known.npos);
        const std::size_t letters = EditDistance(wanted, known);
        const std::size_t distance = isPart ? std::min(letters, kMostSlips) : letters;
        if (distance >= least) continue;
        least = distance;
        nearest = {name, distance <= kMostSlips && distance < known.size() / 2};
    }
    return nearest;
}

}  // namespace ckscribe
