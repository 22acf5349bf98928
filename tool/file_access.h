// Finds out who may do what with a file, and changes nothing. Answers hold for this process's effective user
// and groups.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

namespace ckscribe {

// Returns "owner root, group hsm, permissions 0640".
std::string DescribeOwner(const struct stat& status);

// FindPathProblem returns the first part of the path, from its beginning, that is missing or may not be
// entered, with the reason. It returns nothing when the file's folder can be reached.
struct PathProblem {
    std::string part;
    int error;  // errno
};
std::optional<PathProblem> FindPathProblem(const std::string& path);

// Returns the folder of a path: all before the last "/", or "." without one.
std::string FolderOf(const std::string& path);

// Returns the path after following symbolic links at its end, also where the last one leads to no file.
std::string FollowLinks(std::string path);

// Tries to open an existing file for appending as the library does, and with `readsToo` for reading as well.
// Returns 0, or errno. Opens and closes a regular file, and only asks for the permissions of any other file.
int TryAppending(const std::string& path, const struct stat& status, bool readsToo);

// Asks whether a file that does not exist could be created. Returns 0, or errno. Creates nothing.
int TryCreating(const std::string& path);

// Returns whether everybody may enter every folder above the file.
bool IsReachableForOthers(const std::string& path);

// Returns how many bytes this user may still write to the file system of this file or folder, or nothing when
// the file system does not say.
std::optional<unsigned long long> FreeSpace(const std::string& path);

}  // namespace ckscribe
