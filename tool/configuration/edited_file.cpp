#include "tool/configuration/edited_file.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/file.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "tool/file_access.h"

namespace ckscribe {

namespace {

// The suffix never changes: the next change finds and removes a copy that an interrupted change has left.
constexpr char kCopySuffix[] = ".ckscribe-new";

std::string Reason() { return std::strerror(errno); }

bool WriteAll(int file, const std::string& text) {
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t count = write(file, text.data() + written, text.size() - written);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return false;
        written += static_cast<std::size_t>(count);
    }
    return true;
}

// Copies extended attributes, access control lists among them. Returns false when one that stands for
// permissions cannot be copied.
bool CopyAttributes(int from, int to) {
    const ssize_t size = flistxattr(from, nullptr, 0);
    if (size <= 0) return true;
    std::vector<char> names(static_cast<std::size_t>(size));
    const ssize_t listed = flistxattr(from, names.data(), names.size());
    for (ssize_t place = 0; place < listed;) {
        const char* const name = names.data() + place;
        place += static_cast<ssize_t>(std::strlen(name)) + 1;
        const ssize_t length = fgetxattr(from, name, nullptr, 0);
        std::vector<char> value(static_cast<std::size_t>(length < 0 ? 0 : length));
        const bool isCopied = length >= 0 && fgetxattr(from, name, value.data(), value.size()) == length &&
                              fsetxattr(to, name, value.data(), value.size(), 0) == 0;
        if (!isCopied && std::strncmp(name, "system.posix_acl", 16) == 0) return false;
    }
    return true;
}

}  // namespace

EditedFile::~EditedFile() {
    if (!copyPath_.empty()) unlink(copyPath_.c_str());
    if (file_ >= 0) close(file_);
}

std::optional<std::string> EditedFile::Open(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.c_str(), nullptr), &std::free);
    if (!real) return fmt::format("{} cannot be opened: {}.", path, Reason());
    path_ = real.get();
    struct stat status;
    if (stat(path_.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        return fmt::format("{} is no regular file.", path_);
    if (const auto problem = OpenLocked()) return problem;
    if (status_.st_nlink > 1)
        return fmt::format("{} has {} names (hard links), and only one of them would get the change.", path_,
                           status_.st_nlink);
    if (!ReadText()) return fmt::format("{} cannot be read: {}.", path_, Reason());
    return std::nullopt;
}

// While this process waits for the lock, another may replace the file. The new file is opened then.
std::optional<std::string> EditedFile::OpenLocked() {
    for (;;) {
        file_ = open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
        if (file_ < 0) return fmt::format("{} cannot be opened: {}.", path_, Reason());
        while (flock(file_, LOCK_EX) != 0) {
            if (errno != EINTR) return fmt::format("{} cannot be locked: {}.", path_, Reason());
        }
        if (fstat(file_, &status_) == 0 && IsStillInPlace()) return std::nullopt;
        close(file_);
    }
}

bool EditedFile::IsStillInPlace() const {
    struct stat now;
    return stat(path_.c_str(), &now) != 0 || (now.st_dev == status_.st_dev && now.st_ino == status_.st_ino);
}

bool EditedFile::ReadText() {
    char piece[65536];
    for (;;) {
        const ssize_t count = read(file_, piece, sizeof piece);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return count == 0;
        text_.append(piece, static_cast<std::size_t>(count));
    }
}

std::optional<std::string> EditedFile::WriteCopy(const std::string& text) {
    const std::string path = path_ + kCopySuffix;
    unlink(path.c_str());
    const int copy = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (copy < 0) return fmt::format("{} cannot be created: {}. The file is as it was.", path, Reason());
    copyPath_ = path;
    const auto problem = FillCopy(copy, text);
    close(copy);
    return problem;
}

std::optional<std::string> EditedFile::FillCopy(int copy, const std::string& text) const {
    constexpr mode_t kPermissions = 07777;
    if (!WriteAll(copy, text))
        return fmt::format("{} cannot be written: {}. The file is as it was.", copyPath_, Reason());
    struct stat own;
    const bool isOwned =
        fstat(copy, &own) == 0 && own.st_uid == status_.st_uid && own.st_gid == status_.st_gid;
    if ((!isOwned && fchown(copy, status_.st_uid, status_.st_gid) != 0) || !CopyAttributes(file_, copy) ||
        fchmod(copy, status_.st_mode & kPermissions) != 0) {
        const std::string reason = Reason();
        return fmt::format("The owner and permissions of {} ({}) cannot be kept: {}. The file is as it was.",
                           path_, DescribeOwner(status_), reason);
    }
    if (fsync(copy) != 0)
        return fmt::format("{} cannot be written: {}. The file is as it was.", copyPath_, Reason());
    return std::nullopt;
}

std::optional<std::string> EditedFile::Replace() {
    struct stat now;
    const bool isAsRead = IsStillInPlace() && fstat(file_, &now) == 0 && now.st_size == status_.st_size &&
                          now.st_mtim.tv_sec == status_.st_mtim.tv_sec &&
                          now.st_mtim.tv_nsec == status_.st_mtim.tv_nsec;
    if (!isAsRead) return fmt::format("{} was changed by another program meanwhile. Try again.", path_);
    if (rename(copyPath_.c_str(), path_.c_str()) != 0)
        return fmt::format("{} cannot be replaced: {}. The file is as it was.", path_, Reason());
    copyPath_.clear();
    const int folder = open(FolderOf(path_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        fsync(folder);
        close(folder);
    }
    return std::nullopt;
}

}  // namespace ckscribe
