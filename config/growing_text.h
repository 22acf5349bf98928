#pragma once

#include <cstddef>
#include <string_view>

namespace ckscribe {

// A text that grows in memory. If there is no memory left, it does not throw: IsWhole() is false from then
// on. One thread at a time uses an object.
class GrowingText {
public:
    GrowingText() = default;
    ~GrowingText();
    GrowingText(const GrowingText&) = delete;
    GrowingText& operator=(const GrowingText&) = delete;

    void Append(std::string_view text);

    // False after a text could not be appended.
    bool IsWhole() const { return isWhole; }

    std::string_view View() const { return {characters, length}; }

private:
    bool Reserve(std::size_t more);

    char* characters = nullptr;
    std::size_t length = 0;
    std::size_t capacity = 0;
    bool isWhole = true;
};

}  // namespace ckscribe
