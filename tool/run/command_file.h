// The file of the command that is to run, and whether its calls can be logged.
#pragma once

#include <string>

namespace ckscribe {

// The file that the system runs for this word: itself when it holds a slash, else the first one in PATH that
// may be run. Empty when there is none.
std::string FileOfCommand(const std::string& word);

// What keeps the calls of a program from being logged.
struct Obstacle {
    std::string sentence;     // empty when there is none
    bool mayRedirect = true;  // false: its loader would print an error about the audit library
};

// A script is what its interpreter is.
Obstacle ObstacleOf(const std::string& file);

}  // namespace ckscribe
