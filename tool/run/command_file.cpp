#include "tool/run/command_file.h"

#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(__linux__)
#include <sys/xattr.h>
#endif

#include <cstdlib>
#include <string_view>

#include "tool/run/elf_file.h"

namespace ckscribe {

namespace {

constexpr int kMostInterpreters = 5;  // the system follows as many

bool MayBeRun(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
}

bool HasCapabilities(const std::string& path) {
#if defined(__linux__)
    return getxattr(path.c_str(), "security.capability", nullptr, 0) > 0;
#else
    static_cast<void>(path);
    return false;
#endif
}

// Returns whether the system gives the program rights that its caller lacks. Its loader then ignores the
// environment. Root lacks no rights.
bool RaisesRights(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return false;
    const bool changesUser = (status.st_mode & S_ISUID) != 0 && status.st_uid != getuid();
    const bool changesGroup = (status.st_mode & S_ISGID) != 0 && status.st_gid != getgid();
    return changesUser || changesGroup || (getuid() != 0 && HasCapabilities(path));
}

}  // namespace

std::string FileOfCommand(const std::string& word) {
    if (word.find('/') != std::string::npos) return word;
    const char* const variable = std::getenv("PATH");
    std::string_view path = variable != nullptr ? variable : "/bin:/usr/bin";
    for (;;) {
        const std::string_view folder = path.substr(0, path.find(':'));
        const std::string file = fmt::format("{}/{}", folder.empty() ? "." : folder, word);
        if (MayBeRun(file)) return file;
        if (folder.size() == path.size()) return "";
        path.remove_prefix(folder.size() + 1);
    }
}

Obstacle ObstacleOf(const std::string& file) {
    Program program = ProgramAt(file);
    std::string name = file;
    for (int i = 0; i < kMostInterpreters && program.kind == ProgramKind::kScript; ++i) {
        name = program.interpreter;
        program = ProgramAt(name);
    }
    constexpr char kChildren[] = "Calls of programs that it starts are logged.";
    if (RaisesRights(name))
        return {fmt::format(
            "{} is set-user-ID or set-group-ID, so that the system keeps libraries of others out of it. "
            "Run it as the user that it becomes.",
            name)};
    switch (program.kind) {
        case ProgramKind::kStatic:
            return {fmt::format("{} is linked statically, so that no loader can give it another module. {}",
                                name, kChildren)};
        case ProgramKind::kOtherLoader:
            return {fmt::format("{} is loaded by {}, which cannot be asked to load another module. {}", name,
                                program.interpreter, kChildren)};
        case ProgramKind::kOtherArchitecture:
            return {
                fmt::format(
                    "{} is of another architecture than libckscribe.so. Use a ckscribe that is built for it.",
                    name),
                false};
        case ProgramKind::kDynamic:
        case ProgramKind::kScript:
        case ProgramKind::kUnknown:
            return {};
    }
    return {};
}

}  // namespace ckscribe
