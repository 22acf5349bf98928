#include "tool/run/installed_files.h"

#include <fmt/core.h>
#if defined(__FreeBSD__)
#include <limits.h>
#include <sys/auxv.h>
#endif

#include <filesystem>

#include "tool/run/run_failure.h"

namespace ckscribe {

namespace {

namespace fs = std::filesystem;

fs::path OwnDirectory() {
#if defined(__FreeBSD__)
    char path[PATH_MAX] = {};
    if (elf_aux_info(AT_EXECPATH, path, sizeof path) != 0)
        throw RunFailure("The system does not say where this command lies.");
    return fs::path(path).parent_path();
#else
    std::error_code error;
    const fs::path own = fs::read_symlink("/proc/self/exe", error);
    if (error) throw RunFailure("/proc/self/exe cannot be read: is /proc mounted?");
    return own.parent_path();
#endif
}

// Looks beside this command, and then in `installed`, the directory of such files relative to the command's.
std::string Find(const char* name, const char* installed) {
    const fs::path own = OwnDirectory();
    const fs::path beside = own / name;
    const fs::path elsewhere = (own / installed / name).lexically_normal();
    std::error_code ignored;
    for (const fs::path& path : {beside, elsewhere})
        if (fs::exists(path, ignored)) return path;
    throw RunFailure(fmt::format("There is no {}, neither {} nor {}. Install it beside this command.", name,
                                 beside.string(), elsewhere.string()));
}

}  // namespace

std::string PathOfLibrary() { return Find("libckscribe.so", CKSCRIBE_LIBRARY_FROM_COMMAND); }

std::string PathOfAuditLibrary() { return Find("libckscribe-audit.so", CKSCRIBE_AUDIT_FROM_COMMAND); }

}  // namespace ckscribe
