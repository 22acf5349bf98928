// Guesses which name a person meant.
#pragma once

#include <span>
#include <string_view>

namespace ckscribe {

struct NearestName {
    std::string_view name;
    // `isSlip` is true if the word is very likely a slip of this name: other capitals, one or two wrong
    // letters, or only a part of the name.
    bool isSlip;
};

// Returns the name that is most like `word`. `names` holds at least one.
NearestName FindNearestName(std::string_view word, std::span<const std::string_view> names);

}  // namespace ckscribe
