#include "tool/run/installed_files.h"

#include <fmt/core.h>

#include <filesystem>

#include "tool/run/run_failure.h"

namespace ckscribe {

namespace {

namespace fs = std::filesystem;

fs::path OwnDirectory() {
#if defined(__FreeBSD__)
    constexpr char kOwnImage[] = "/proc/curproc/file";
#else
    constexpr char kOwnImage[] = "/proc/self/exe";
#endif
    std::error_code error;
    const fs::path own = fs::read_symlink(kOwnImage, error);
    if (error) throw RunFailure(fmt::format("{} cannot be read: is /proc mounted?", kOwnImage));
    return own.parent_path();
}

// Beside this command, else in the directory that is installed for such files, seen from this command's.
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
