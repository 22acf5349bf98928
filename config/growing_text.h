#pragma once

#include <string>
#include <string_view>

namespace ckscribe {

// A GrowingText is a text that grows in memory. If there is no memory left, it does not throw: IsWhole() is
// false from then on. One thread at a time uses an object.
class GrowingText {
public:
    void Append(std::string_view more) {
        if (!isWhole) return;
        try {
            text.append(more);
        } catch (...) {
            isWhole = false;
        }
    }

    // Returns false after a text could not be appended.
    bool IsWhole() const { return isWhole; }

    std::string_view View() const { return text; }

private:
    std::string text;
    bool isWhole = true;
};

}  // namespace ckscribe
