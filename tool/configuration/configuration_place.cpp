#include "tool/configuration/configuration_place.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "config/file_text.h"
#include "config/logging_configuration.h"
#include "host/environment.h"
#include "tool/file_access.h"
#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

constexpr char kAbout[] = "configuration";
constexpr char kVariable[] = "WendrafilConfigurationPath";
constexpr char kFileName[] = "Wendrafil.conf";
constexpr std::size_t kLongestDirectory = 256;

bool IsDirectory(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool IsFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool IsRegular(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string NamedPath(const std::string& named, Findings* findings) {
    const std::string path = IsDirectory(named) ? named + "/" + kFileName : named;
    if (findings == nullptr) return path;
    findings->Add(Level::kOk, kAbout, 0,
                  fmt::format("{} is the file that was named on the command line.", path));
    if (IsFile(path) && !path.ends_with(std::string("/") + kFileName) && path != kFileName)
        findings->Add(Level::kNote, kAbout, 0,
                      fmt::format("The library reads only files of the name {}.", kFileName),
                      fmt::format("Rename it before {} names its folder.", kVariable));
    return path;
}

void TellVariable(const std::string& value, const std::string& path, Findings& findings) {
    if (value.size() > kLongestDirectory) {
        findings.Add(Level::kWrong, kAbout, 0,
                     fmt::format("{} has {} characters, and only the first {} count: the file is {}.",
                                 kVariable, value.size(), kLongestDirectory, path),
                     "Choose a folder with a shorter path.");
    } else if (IsFile(value)) {
        findings.Add(Level::kWrong, kAbout, 0,
                     fmt::format("{} names a file, {}, but has to name the folder: the library looks for {}.",
                                 kVariable, value, path),
                     fmt::format("Set {}={}", kVariable, FolderOf(value)));
    } else if (!IsDirectory(value)) {
        findings.Add(
            Level::kWrong, kAbout, 0,
            fmt::format("{} names {}, which is no folder that can be reached: the library looks for {}.",
                        kVariable, InQuotes(value), path),
            fmt::format("Set {} to the folder of {}.", kVariable, kFileName));
    } else {
        findings.Add(
            Level::kOk, kAbout, 0,
            fmt::format("{} is the file, since {} names its folder. (Programs with raised rights, such as "
                        "set-user-ID, read /etc/{} instead.)",
                        path, kVariable, kFileName));
        if (!value.starts_with('/'))
            findings.Add(
                Level::kNote, kAbout, 0,
                fmt::format("{} is relative to the directory in which the application loads the library.",
                            InQuotes(value)),
                fmt::format("Write the whole path into {}.", kVariable));
    }
}

std::string WhyUnreadable(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) {
        const int error = errno;
        const auto problem = FindPathProblem(path);
        if (problem) return fmt::format("{}: {}", problem->part, std::strerror(problem->error));
        return error == ENOENT ? "there is no such file" : std::strerror(error);
    }
    if (S_ISDIR(status.st_mode)) return "it is a directory";
    if (!S_ISREG(status.st_mode)) return "it is no regular file";
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
    const std::string reason = std::strerror(errno);
    if (file < 0) return fmt::format("{} ({})", reason, DescribeOwner(status));
    close(file);
    return status.st_size == 0 ? "it is empty" : "nothing could be read";
}

std::string_view HowToMakeReadable(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return errno == ENOENT ? "Create it" : "Let the application's user read it";
    if (!S_ISREG(status.st_mode)) return "Put a regular file in its place";
    return status.st_size == 0
               ? "Write a section \"CkLog2 = {\" ... \"}\" with the keys LibUNIX64, Enabled and File"
               : "Let the application's user read it";
}

void TellReadable(const std::string& path, Findings& findings) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0) return;
    findings.Add(Level::kOk, kAbout, 0, fmt::format("It can be read ({}).", DescribeOwner(status)));
    if ((status.st_mode & S_IWOTH) != 0 && S_ISREG(status.st_mode) && IsReachableForOthers(path))
        findings.Add(
            Level::kNote, kAbout, 0,
            fmt::format("Everybody may change {}, and so choose the library that the application loads.",
                        path),
            "chmod o-w " + path);
}

}  // namespace

std::string WhyNoPath(const std::string& named) { return named.empty() ? "The path is empty." : ""; }

std::string ConfigurationPath(const std::string& named, Findings* findings) {
    if (!named.empty()) return NamedPath(named, findings);
    const std::string path = CkLogConfig().GetConfFileName();
    if (findings == nullptr) return path;
    const char* const value = std::getenv(kVariable);
    if (value == nullptr) {
        findings->Add(Level::kOk, kAbout, 0,
                      fmt::format("{} is the file, since {} is not set.", path, kVariable));
    } else if (TrustedEnvironment(kVariable) == nullptr) {
        findings->Add(
            Level::kWrong, kAbout, 0,
            fmt::format("{} is the file: this process has raised rights, so that {} does not count.", path,
                        kVariable),
            "Run it without set-user-ID, set-group-ID and file capabilities.");
    } else {
        TellVariable(value, path, *findings);
    }
    return path;
}

std::optional<std::string> ReadConfiguration(const std::string& path, Findings& findings) {
    ckscribe::FileText file;
    // The library reads only regular files.
    if (!IsRegular(path) || !file.Read(path.c_str())) {
        findings.Add(
            Level::kWrong, kAbout, 0,
            fmt::format("{} cannot be read: {}. Every setting has its default, and nothing is logged.", path,
                        WhyUnreadable(path)),
            fmt::format("{}, or set {} to the folder of another {}.", HowToMakeReadable(path), kVariable,
                        kFileName));
        return std::nullopt;
    }
    TellReadable(path, findings);
    const std::string_view text(file.text.get());
    if (text.size() < file.size)
        findings.Add(Level::kWrong, kAbout, 0,
                     fmt::format("Of the file's {} bytes the first {} count: a byte 0 follows.", file.size,
                                 text.size()),
                     "Save it as plain text (UTF-8).");
    return std::string(text);
}

}  // namespace ckscribe
