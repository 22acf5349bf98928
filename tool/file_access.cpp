#include "tool/file_access.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <grp.h>
#include <limits.h>
#include <pwd.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace ckscribe {

namespace {

std::string UserName(uid_t user) {
    const passwd* const entry = getpwuid(user);
    return entry != nullptr ? entry->pw_name : std::to_string(user);
}

std::string GroupName(gid_t group) {
    const ::group* const entry = getgrgid(group);
    return entry != nullptr ? entry->gr_name : std::to_string(group);
}

// Linux refuses to open another user's file in a folder that everybody may write to if the call could also
// create the file (sysctl fs.protected_regular, fs.protected_fifos).
bool IsProtectedInSharedFolder(const std::string& path, const struct stat& status) {
    const char* const name = S_ISFIFO(status.st_mode) ? "fifos" : "regular";
    int protection = 0;
    std::ifstream(fmt::format("/proc/sys/fs/protected_{}", name)) >> protection;
    struct stat folder;
    if (protection == 0 || stat(FolderOf(FollowLinks(path)).c_str(), &folder) != 0) return false;
    const bool isShared =
        (folder.st_mode & S_IWOTH) != 0 || (protection >= 2 && (folder.st_mode & S_IWGRP) != 0);
    return isShared && (folder.st_mode & S_ISVTX) != 0 && status.st_uid != geteuid() &&
           status.st_uid != folder.st_uid;
}

int Access(const std::string& path, int rights) {
    return faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0 ? 0 : errno;
}

}  // namespace

std::string DescribeOwner(const struct stat& status) {
    return fmt::format("owner {}, group {}, permissions {:04o}", UserName(status.st_uid),
                       GroupName(status.st_gid), status.st_mode & 07777u);
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == path.npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string FollowLinks(std::string path) {
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        char target[PATH_MAX];
        const ssize_t size = readlink(path.c_str(), target, sizeof target);
        if (size < 0) break;
        const std::string next(target, static_cast<std::size_t>(size));
        path = next.starts_with('/') ? next : FolderOf(path) + "/" + next;
    }
    return path;
}

std::optional<PathProblem> FindPathProblem(const std::string& path) {
    for (std::size_t slash = path.find('/', 1); slash != path.npos; slash = path.find('/', slash + 1)) {
        const std::string folder = path.substr(0, slash);
        struct stat status;
        if (stat(folder.c_str(), &status) != 0) return PathProblem{folder, errno};
        if (!S_ISDIR(status.st_mode)) return PathProblem{folder, ENOTDIR};
        if (const int error = Access(folder, X_OK)) return PathProblem{folder, error};
    }
    return std::nullopt;
}

int TryAppending(const std::string& path, const struct stat& status, bool readsToo) {
    if (IsProtectedInSharedFolder(path, status)) return EACCES;
    if (!S_ISREG(status.st_mode)) return Access(path, W_OK);
    const int file =
        open(path.c_str(), (readsToo ? O_RDWR : O_WRONLY) | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return errno;
    close(file);
    return 0;
}

int TryCreating(const std::string& path) { return Access(FolderOf(path), W_OK | X_OK); }

bool IsReachableForOthers(const std::string& path) {
    const std::unique_ptr<char, decltype(&std::free)> folder(realpath(FolderOf(path).c_str(), nullptr),
                                                             &std::free);
    if (!folder) return false;
    for (std::string above = folder.get();; above = FolderOf(above)) {
        struct stat status;
        if (stat(above.c_str(), &status) != 0 || (status.st_mode & S_IXOTH) == 0) return false;
        if (above == "/") return true;
    }
}

std::optional<unsigned long long> FreeSpace(const std::string& path) {
    struct statvfs system;
    // File systems without storage (/dev, /proc) have no blocks.
    if (statvfs(path.c_str(), &system) != 0 || system.f_blocks == 0) return std::nullopt;
    return static_cast<unsigned long long>(system.f_bavail) * system.f_frsize;
}

}  // namespace ckscribe
