// Changes a file as a whole. Readers see the old file or the new one, even if the change is interrupted at
// any point.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace ckscribe {

// Processes that change a file through this class wait for each other, from Open to the destructor.
class EditedFile {
public:
    EditedFile() = default;
    ~EditedFile();
    EditedFile(const EditedFile&) = delete;
    EditedFile& operator=(const EditedFile&) = delete;

    // Reads the file that `path` leads to, through symbolic links. Returns nothing, or why the file cannot be
    // changed.
    std::optional<std::string> Open(const std::string& path);

    const std::string& Text() const { return text_; }

    // Writes the new text to a copy with the same owner, permissions and extended attributes. Returns
    // nothing, or why that failed. The destructor removes the copy unless it has taken the file's place.
    std::optional<std::string> WriteCopy(const std::string& text);
    const std::string& CopyPath() const { return copyPath_; }

    // Puts the copy into the file's place. Returns nothing, or why the file is unchanged.
    std::optional<std::string> Replace();

private:
    std::optional<std::string> OpenLocked();
    bool IsStillInPlace() const;
    bool ReadText();
    std::optional<std::string> FillCopy(int copy, const std::string& text) const;

    std::string path_;      // without symbolic links
    std::string copyPath_;  // empty when there is none
    int file_ = -1;
    struct stat status_ = {};
    std::string text_;
};

}  // namespace ckscribe
