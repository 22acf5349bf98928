#include "tool/check/other_user.h"

#include <fmt/core.h>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace ckscribe {

std::optional<std::string> BecomeUser(const std::string& name) {
    const passwd* const user = getpwnam(name.c_str());
    if (user == nullptr) return fmt::format("There is no user {}.", name);
    if (user->pw_uid == geteuid() && geteuid() != 0) return std::nullopt;
    if (geteuid() != 0) return "Only root can look at a set-up as another user.";
    if (initgroups(user->pw_name, user->pw_gid) != 0 || setgid(user->pw_gid) != 0 ||
        setuid(user->pw_uid) != 0)
        return fmt::format("This process cannot become user {}: {}.", name, std::strerror(errno));
    setenv("HOME", user->pw_dir, 1);
    setenv("USER", user->pw_name, 1);
    setenv("LOGNAME", user->pw_name, 1);
    return std::nullopt;
}

}  // namespace ckscribe
