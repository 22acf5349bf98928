// Guesses which name a person meant.
#pragma once

#include <span>
#include <string_view>

namespace ckscribe {

struct NearestName {
    std::string_view name;
    // The other is very likely a slip of this one: capitals, a letter or two, or a part of the name.
    bool isSlip;
};

// The name that is most like `word`; `names` holds at least one.
NearestName FindNearestName(std::string_view word, std::span<const std::string_view> names);

}  // namespace ckscribe
