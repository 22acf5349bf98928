// Who may do what with a file, found out without changing anything. Answers are for this process's effective
// user and groups.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace ckscribe {

// "owner root, group hsm, permissions 0640"
std::string DescribeOwner(const struct stat& status);

// The first part of the path, from its beginning, that is missing or may not be entered, with the reason.
// Nothing when its folder can be reached.
struct PathProblem {
    std::string part;
    int error;  // errno
};
std::optional<PathProblem> FindPathProblem(const std::string& path);

// The folder of a path: all before the last "/", "." without one.
std::string FolderOf(const std::string& path);

// The path with symbolic links at its end followed, also where the last one leads to no file.
std::string FollowLinks(std::string path);

// Opening for appending, as the library does it: 0, or errno. `readsToo`: for reading as well. The file is
// there; a regular one is opened and closed again, of others the permissions are asked.
int TryAppending(const std::string& path, const struct stat& status, bool readsToo);

// Creating the file, which is not there: 0, or errno.
int TryCreating(const std::string& path);

// Every folder above the file may be entered by everybody.
bool IsReachableForOthers(const std::string& path);

// Bytes that this user may still write to the file system of this file or folder; nothing when it does not
// tell.
std::optional<unsigned long long> FreeSpace(const std::string& path);

}  // namespace ckscribe
