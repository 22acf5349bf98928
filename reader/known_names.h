// Keeps each name that many records repeat once, for the life of the process. Views of the names stay valid.
//
// Any thread may add and ask at any time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ckscribe {

class KnownNames {
public:
    // A damaged log adds at most `most` names. All further names share the number 0.
    explicit KnownNames(std::size_t most = 100'000) : most(most) {}

    // Returns the number of a name, from 1, or 0 for a new name when there are too many.
    std::uint32_t NumberOf(std::string_view name) {
        const std::lock_guard lock(mutex);
        if (const auto found = numbers.find(name); found != numbers.end()) return found->second;
        if (names.size() == most) return 0;
        const auto number = static_cast<std::uint32_t>(names.size() + 1);
        numbers.emplace(names.emplace_back(name), number);
        return number;
    }

    // Returns the name of a number that NumberOf gave, or an empty text for 0.
    std::string_view NameOf(std::uint32_t number) const {
        if (number == 0) return {};
        const std::lock_guard lock(mutex);
        return names[number - 1];
    }

private:
    const std::size_t most;
    mutable std::mutex mutex;
    std::deque<std::string> names;
    std::unordered_map<std::string_view, std::uint32_t> numbers;
};

// Returns the names of the runs of events. A host on which each command is a process of its own has a hundred
// thousand runs on a day. Only its run distinguishes a call from others.
KnownNames& RunNames();

}  // namespace ckscribe
