// A file that is changed as a whole: readers see the old one or the new one, also when the change is
// interrupted at any point.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace ckscribe {

// Other processes that change the file through this class wait for each other from Open to the end of the
// object.
class EditedFile {
public:
    EditedFile() = default;
    ~EditedFile();
    EditedFile(const EditedFile&) = delete;
    EditedFile& operator=(const EditedFile&) = delete;

    // Reads the file that `path` leads to, through symbolic links. Nothing, or why it cannot be changed.
    std::optional<std::string> Open(const std::string& path);

    const std::string& Text() const { return text_; }

    // Writes the new text to a copy with the same owner, permissions and extended attributes. Nothing, or why
    // not. The copy goes with the object unless it takes the file's place.
    std::optional<std::string> WriteCopy(const std::string& text);
    const std::string& CopyPath() const { return copyPath_; }

    // Puts the copy into the file's place. Nothing, or why the file is as it was.
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
