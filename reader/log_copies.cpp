#include "reader/log_copies.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace ckscribe {

namespace {

bool CanBeReadOnceOnly(const std::string& path) {
    if (path == "-") return true;
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

// Returns whether it wrote all of `bytes`.
bool Write(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Returns why the copy failed, or an empty text on success.
std::string Copy(int from, int to) {
    std::vector<char> block(256 << 10);
    while (true) {
        const ssize_t count = read(from, block.data(), block.size());
        if (count == 0) return {};
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::strerror(errno);
        if (!Write(to, {block.data(), static_cast<std::size_t>(count)}))
            return std::string("a temporary copy cannot be written: ") + std::strerror(errno);
    }
}

}  // namespace

LogCopies::~LogCopies() {
    for (const std::string& copy : copies) unlink(copy.c_str());
}

void LogCopies::Replace(std::vector<std::string>& paths) {
    errors.resize(paths.size());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        std::string& path = paths[i];
        if (!CanBeReadOnceOnly(path)) continue;
        const char* const directory = std::getenv("TMPDIR");
        std::string name = directory != nullptr && *directory != '\0' ? directory : "/tmp";
        name += "/ckscribe.XXXXXX";
        const int copy = mkostemp(name.data(), O_CLOEXEC);
        if (copy < 0) {
            errors[i] = std::string("a temporary copy cannot be written: ") + std::strerror(errno);
            continue;
        }
        copies.push_back(name);
        const int log = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
        errors[i] = log < 0 ? std::strerror(errno) : Copy(log, copy);
        // The copy of a file tells when the file was written: standard input may be one.
        struct stat status {};
        if (log >= 0 && fstat(log, &status) == 0 && S_ISREG(status.st_mode)) {
            const timespec times[] = {status.st_atim, status.st_mtim};
            futimens(copy, times);
        }
        if (log > STDIN_FILENO) close(log);
        close(copy);
        path = name;
    }
}

std::string LogCopies::ErrorOf(std::size_t index) const {
    return index < errors.size() ? errors[index] : std::string();
}

}  // namespace ckscribe
