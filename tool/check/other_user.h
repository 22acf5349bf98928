// Becoming another user, for the rest of the process.
#pragma once

#include <optional>
#include <string>

namespace ckscribe {

// Takes on the user, group and supplementary groups that the system's tables give the user of this name, and
// sets HOME, USER and LOGNAME. Nothing when that is done, or why it is not; then the process is to end, since
// it may have changed in part. Only for a process of one thread.
std::optional<std::string> BecomeUser(const std::string& name);

}  // namespace ckscribe
