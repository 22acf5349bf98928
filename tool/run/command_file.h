// Finds the file of the command that `ckscribe run` is to run, and says whether its calls can be logged.
#pragma once

#include <string>

namespace ckscribe {

// Returns the file that the system runs for this word: the word itself if it holds a slash, else the first
// executable file of this name in PATH. Returns an empty text when there is none.
std::string FileOfCommand(const std::string& word);

// An obstacle keeps the calls of a program from being logged.
struct Obstacle {
    std::string sentence;  // empty when there is none
    // If `mayRedirect` is false, the program's loader would print an error about the audit library.
    bool mayRedirect = true;
};

// Returns what keeps the calls of this program from being logged. For a script it asks about the interpreter.
Obstacle ObstacleOf(const std::string& file);

}  // namespace ckscribe
