// Lets the process become another user until it ends.
#pragma once

#include <optional>
#include <string>

namespace ckscribe {

// Takes on the user, group and supplementary groups that the system's tables give the user of this name, and
// sets HOME, USER and LOGNAME. Returns nothing on success, else the reason. The process must then end,
// because it may have changed in part. Only a process of one thread may call this.
std::optional<std::string> BecomeUser(const std::string& name);

}  // namespace ckscribe
