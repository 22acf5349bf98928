#pragma once

// A rewrite of the whole configuration file, in place. The old text is handed out line by line; the new text
// is gathered in memory, so that all that can fail has been tried when the file is truncated and written in
// one go.

#include <cstddef>
#include <string_view>

#include "config/file_text.h"
#include "config/growing_text.h"

namespace ckscribe {

class FileRewrite {
public:
    // The longest line of a rewritten file, in characters without the line feed.
    static constexpr std::size_t kLineLimit = 838;

    // Reads the file at `path`, which must outlive the rewrite. False when it cannot be read, or not whole: a
    // rewrite must not lose what was not read.
    bool Read(const char* path);

    // The next line of the old text without its line feed, or false after the last. Deliberately cut at
    // kLineLimit characters.
    bool NextLine(std::string_view* line);

    void Write(std::string_view text) { newText.Append(text); }
    void WriteLine(std::string_view line);

    // Writes the formatted text. One of 840 characters or more is left out, and Commit tells.
    void WriteFormatted(const char* format, ...) __attribute__((format(printf, 2, 3)));

    // Truncates the file and writes the new text. 0 when there was no memory for the text or the file cannot
    // be opened for writing: it is untouched then. Also 0 when a formatted text was left out. Errors in
    // writing go unreported.
    int Commit();

private:
    const char* filePath = nullptr;
    FileText oldText;
    std::size_t position = 0;  // of the next line in the old text
    GrowingText newText;
    bool isComplete = true;
};

// Whether a line holds a text anywhere.
inline bool Contains(std::string_view line, const char* text) {
    return line.find(text) != std::string_view::npos;
}

}  // namespace ckscribe
