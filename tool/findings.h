// A Findings object keeps the findings of `ckscribe check`, in the order in which they are made.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tool/terminal.h"

namespace ckscribe {

enum class Level {
    kOk,     // as it should be
    kNote,   // not wrong, but perhaps not what was meant
    kWrong,  // something does not work, or does not do what was meant
};

struct Finding {
    Level level;
    std::string about;   // a key of the configuration, or a name such as "configuration"
    int line;            // of the configuration file, from 1; 0 for none
    std::string what;    // the fact, and what follows from it
    std::string remedy;  // what to do; empty for nothing
};

class Findings {
public:
    void Add(Level level, std::string_view about, int line, std::string what, std::string remedy = "");

    bool HasWrong() const { return Count(Level::kWrong) != 0; }
    std::size_t Count(Level level) const;
    const std::vector<Finding>& All() const { return findings_; }

    // Returns the findings for people, fit for a terminal. Each has two lines: what is, and what to do. The
    // last line counts the findings.
    std::string Text(const Palette& palette) const;

    // Returns the findings for programs:
    // {"findings":[{"level":"wrong","about":"Enabled","line":4,"what":"...","do":"..."}]} and a line feed. A
    // finding without a line has no "line". Bytes that are not UTF-8 become U+FFFD.
    std::string Json() const;

private:
    std::vector<Finding> findings_;
};

}  // namespace ckscribe
