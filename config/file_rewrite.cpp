#include "config/file_rewrite.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>

namespace ckscribe {

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

bool FileRewrite::Read(const char* path) {
    filePath = path;
    return oldText.Read(path) && oldText.isWhole;
}

bool FileRewrite::NextLine(std::string_view* line) {
    const std::string_view rest(oldText.text.get() + position, oldText.size - position);
    if (rest.empty()) return false;
    const std::size_t length = std::min(rest.find('\n'), rest.size());
    position += std::min(length + 1, rest.size());
    *line = rest.substr(0, std::min(length, kLineLimit));
    return true;
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
        isComplete = false;
}

int FileRewrite::Commit() {
    if (!newText.IsWhole()) return 0;
    const int file = OpenFile(filePath, O_WRONLY | O_CREAT | O_TRUNC);
    if (file < 0) return 0;
    WriteAll(file, newText.View());
    close(file);
    return isComplete;
}

}  // namespace ckscribe
