#include "config/file_rewrite.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

void WriteAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = write(file, text.data(), text.size());
        if (written > 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            return;
    }
}

}  // namespace

FileRewrite::~FileRewrite() { std::free(text_); }

bool FileRewrite::Read(const char* path) {
    path_ = path;
    return old_.Read(path) && old_.isWhole;
}

bool FileRewrite::NextLine(std::string_view* line) {
    const std::string_view rest(old_.text.get() + position_, old_.size - position_);
    if (rest.empty()) return false;
    const std::size_t length = std::min(rest.find('\n'), rest.size());
    position_ += std::min(length + 1, rest.size());
    *line = rest.substr(0, std::min(length, kLineLimit));
    return true;
}

bool FileRewrite::Reserve(std::size_t more) {
    if (capacity_ - length_ >= more) return true;
    const std::size_t capacity = 2 * (length_ + more);
    char* text = static_cast<char*>(std::realloc(text_, capacity));
    if (text == nullptr) return hasMemory_ = false;
    text_ = text;
    capacity_ = capacity;
    return true;
}

void FileRewrite::Write(std::string_view text) {
    if (text.empty() || !hasMemory_ || !Reserve(text.size())) return;
    std::memcpy(text_ + length_, text.data(), text.size());
    length_ += text.size();
}

void FileRewrite::WriteLine(std::string_view line) {
    Write(line);
    Write("\n");
}

void FileRewrite::WriteFormatted(const char* format, ...) {
    char text[840];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    if (length >= 0 && static_cast<std::size_t>(length) < sizeof text)
        Write(std::string_view(text, static_cast<std::size_t>(length)));
    else
        isComplete_ = false;
}

int FileRewrite::Commit() {
    if (!hasMemory_) return 0;
    const int file = OpenFile(path_, O_WRONLY | O_CREAT | O_TRUNC);
    if (file < 0) return 0;
    WriteAll(file, std::string_view(text_, length_));
    close(file);
    return isComplete_;
}
