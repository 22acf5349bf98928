#pragma once

// Rewrites the whole configuration file in place. It hands the old text out line by line, and gathers the new
// text in memory. It truncates the file and writes it in one go, after everything else that can fail.
//
// Threads: one thread at a time uses an object.

#include <cstddef>
#include <string_view>

#include "config/file_text.h"
#include "config/growing_text.h"

namespace ckscribe {

class FileRewrite {
public:
    // A line of a rewritten file is at most this long, in characters without the line feed.
    static constexpr std::size_t kLineLimit = 838;

    // Reads the file at `path`, a text that must outlive the rewrite. Returns false if the file cannot be
    // read whole: a rewrite must not lose the rest.
    bool Read(const char* path);

    // Stores the next line of the old text, without its line feed. Returns false after the last line. COMPAT:
    // the line is cut at kLineLimit characters.
    bool NextLine(std::string_view* line);

    void Write(std::string_view text) { newText.Append(text); }
    void WriteLine(std::string_view line);

    // Writes the formatted text. A text of 840 characters or more is left out, and Commit then returns 0.
    void WriteFormatted(const char* format, ...) __attribute__((format(printf, 2, 3)));

    // Truncates the file, writes the new text and returns 1. Returns 0, with the file untouched, if there was
    // no memory for the text or the file cannot be opened for writing. Also returns 0 if a formatted text was
    // left out. Errors in writing are not reported.
    int Commit();

private:
    const char* filePath = nullptr;
    FileText oldText;
    std::size_t position = 0;  // of the next line in `oldText`
    GrowingText newText;
    bool isComplete = true;
};

// Returns whether a line holds a text anywhere.
inline bool Contains(std::string_view line, const char* text) {
    return line.find(text) != std::string_view::npos;
}

}  // namespace ckscribe
