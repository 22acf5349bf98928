// Opens files that the library writes and creates those that are missing, with the permissions that the
// configuration asks for.
#pragma once

#include <sys/types.h>

#include <optional>

namespace ckscribe {

// A new file gets exactly these permissions, whatever the umask. No value means 0666 less the umask.
using NewFilePermissions = std::optional<mode_t>;

// Opens `path` as open(2) does with `flags` | O_CREAT. Returns the descriptor, or -1 with errno set. A file
// that exists keeps its permissions. Other processes may open or create the same file meanwhile; then exactly
// one of them sets the permissions. Any thread may call it at any time; no cancellation strikes in it behind
// the host shield.
int OpenOrCreate(const char* path, int flags, NewFilePermissions permissions);

}  // namespace ckscribe
