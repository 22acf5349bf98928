#include "tool/check/check_files.h"

#include <fmt/core.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

#include "tool/configuration/value_problems.h"
#include "tool/file_access.h"
#include "tool/harmless_text.h"
#include "tool/shell_text.h"

namespace ckscribe {

namespace {

constexpr unsigned long long kMebibyte = 1024 * 1024;
constexpr unsigned long long kLittleSpace = 100 * kMebibyte;

// A WrittenTo is a file that the library writes.
struct WrittenTo {
    std::string_view key;
    std::string_view name;  // for sentences
    std::string path;
    bool readsToo;   // it is opened for reading, too
    bool showsData;  // it shows the application's data in clear
};

std::string CurrentDirectory() {
    char directory[4096];
    return getcwd(directory, sizeof directory) != nullptr ? directory : "the current directory";
}

// Reads this process's umask from /proc, because umask() would set it.
mode_t Umask() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("Umask:")) return static_cast<mode_t>(std::stoul(line.substr(6), nullptr, 8));
    }
    const mode_t mask = umask(0);
    umask(mask);
    return mask;
}

mode_t ModeOfNewFile(const Setup& setup) {
    const auto asked = setup.settings.FileMode().permissions;
    return asked ? *asked : 0666 & ~Umask();
}

class FileCheck {
public:
    FileCheck(const Setup& setup, const WrittenTo& file, Findings& findings)
        : setup_(setup), file_(file), line_(setup.Line(file.key)), findings_(findings) {}

    void Run() {
        if (HasWrongValue()) return;
        TellRelative();
        struct stat status;
        if (stat(file_.path.c_str(), &status) == 0) {
            CheckExisting(status);
        } else if (errno == ENOENT) {
            CheckMissing();
        } else {
            TellUnreachable(file_.path, errno);
        }
    }

private:
    void Add(Level level, std::string what, std::string remedy = "") {
        findings_.Add(level, file_.key, line_, std::move(what), std::move(remedy));
    }

    // A wrong value already has a finding. The file that the value names is not the one that its author
    // means.
    bool HasWrongValue() const {
        const auto value = setup_.Value(file_.key);
        const auto problem = value ? FindValueProblem(*FindLoggingKey(file_.key), *value) : std::nullopt;
        return problem && problem->level == Level::kWrong;
    }

    void TellRelative() {
        if (file_.path.starts_with('/')) return;
        const std::string from = line_ == 0 ? "The key is missing: the" : "The";
        Add(Level::kNote,
            fmt::format(
                "{} {} is {}, relative to the directory in which the application makes its first call "
                "(here it would be {}).",
                from, file_.name, InQuotes(file_.path), CurrentDirectory()),
            fmt::format("Write the whole path: {} = /FOLDER/{};", file_.key, file_.path));
    }

    void TellUnreachable(const std::string& path, int error) {
        const auto problem = FindPathProblem(path);
        if (problem && problem->error == ENOENT) {
            Add(Level::kWrong,
                fmt::format("The folder {} does not exist: the {} cannot be created.", problem->part,
                            file_.name),
                "Create it: mkdir -p " + ShellWord(FolderOf(path)));
        } else if (problem && problem->error == ENOTDIR) {
            Add(Level::kWrong,
                fmt::format("{} is no folder: the {} cannot be created.", problem->part, file_.name),
                "Name a file in a folder.");
        } else {
            Add(Level::kWrong,
                fmt::format("The {} {} cannot be reached: {}: {}.", file_.name, file_.path,
                            problem ? problem->part : path, std::strerror(problem ? problem->error : error)),
                "Let the application's user enter every folder above it.");
        }
    }

    void CheckMissing() {
        const std::string path = FollowLinks(file_.path);
        if (path.ends_with('/')) {
            Add(Level::kWrong, fmt::format("The {} {} names a folder.", file_.name, file_.path),
                "Name a file in it.");
            return;
        }
        if (FindPathProblem(path)) {
            TellUnreachable(path, ENOENT);
            return;
        }
        if (const int error = TryCreating(path)) {
            struct stat folder = {};
            stat(FolderOf(path).c_str(), &folder);
            Add(Level::kWrong,
                fmt::format("The {} {} is not there and cannot be created in {} ({}): {}.", file_.name,
                            file_.path, FolderOf(path), DescribeOwner(folder), std::strerror(error)),
                "Let the application's user write to that folder.");
            return;
        }
        Add(Level::kOk,
            fmt::format("The {} {} is not there yet and can be created.", file_.name, file_.path));
        CheckReaders(ModeOfNewFile(setup_), true);
        CheckSpace(FolderOf(path));
    }

    void CheckExisting(const struct stat& status) {
        if (S_ISDIR(status.st_mode)) {
            Add(Level::kWrong,
                fmt::format("The {} {} is a directory: nothing is written.", file_.name, file_.path),
                "Name a file in it.");
        } else if (S_ISSOCK(status.st_mode) || S_ISBLK(status.st_mode)) {
            Add(Level::kWrong,
                fmt::format("The {} {} is no file that can be appended to.", file_.name, file_.path),
                "Name a file.");
        } else if (const int error = TryAppending(file_.path, status, file_.readsToo)) {
            TellNotWritable(status, error);
        } else {
            TellWritable(status);
        }
    }

    void TellNotWritable(const struct stat& status, int error) {
        const bool lacksReading = file_.readsToo && TryAppending(file_.path, status, false) == 0;
        Add(Level::kWrong,
            fmt::format("The {} {} ({}) cannot be opened for appending{}: {}.", file_.name, file_.path,
                        DescribeOwner(status), lacksReading ? ", which needs the right to read, too" : "",
                        std::strerror(error)),
            lacksReading ? "Let the application's user read and write it."
                         : "Let the application's user write to it.");
    }

    void TellWritable(const struct stat& status) {
        if (S_ISFIFO(status.st_mode)) {
            Add(Level::kNote,
                fmt::format("The {} {} is a FIFO: what nobody reads is lost.", file_.name, file_.path),
                "Keep a reader running, or name a file.");
        } else if (S_ISCHR(status.st_mode)) {
            Add(Level::kNote,
                fmt::format("The {} {} is a device and no file: what it does not take is lost.", file_.name,
                            file_.path),
                "Name a file.");
        } else {
            Add(Level::kOk, fmt::format("The {} {} can be appended to ({}, {} bytes).", file_.name,
                                        file_.path, DescribeOwner(status), status.st_size));
            CheckReaders(status.st_mode & 07777u, false);
            CheckSpace(file_.path);
        }
    }

    void CheckReaders(mode_t mode, bool isNew) {
        if (!file_.showsData || (mode & S_IROTH) == 0) return;
        const bool isReachable = IsReachableForOthers(FollowLinks(file_.path));
        Add(isReachable ? Level::kWrong : Level::kNote,
            fmt::format("The {} shows data in clear, and its permissions {} {:04o}: {}", file_.name,
                        isNew ? "would be" : "are", mode,
                        isReachable ? "everybody may read it." : "only a folder above it keeps others out."),
            isNew ? "Write \"FileMode = 0600;\", or hide data with \"HideData = 1;\"."
                  : fmt::format("chmod o-rwx {} (\"FileMode = 0600;\" for new files), or hide data with "
                                "\"HideData = 1;\".",
                                file_.path));
    }

    void CheckSpace(const std::string& place) {
        const auto space = FreeSpace(place);
        if (!space || *space >= kLittleSpace) return;
        Add(*space == 0 ? Level::kWrong : Level::kNote,
            fmt::format("There are {} MiB free where {} lies{}.", *space / kMebibyte, file_.path,
                        *space == 0 ? ": records are lost" : ""),
            "Make room, or name a file elsewhere.");
    }

    const Setup& setup_;
    const WrittenTo& file_;
    const int line_;
    Findings& findings_;
};

void CheckLog(Setup& setup, Findings& findings) {
    const std::string path = setup.settings.LogFileName();
    if (!setup.IsLogging()) {
        if (const int line = setup.Line("File"))
            findings.Add(Level::kOk, "File", line, fmt::format("The log would be {}.", InQuotes(path)));
        return;
    }
    if (path.empty()) {
        findings.Add(Level::kWrong, "File", setup.Line("File"), "The path is empty: no log can be opened.",
                     "Write the whole path of the log.");
        return;
    }
    const bool showsData = setup.settings.HideData() != DataSetting::kHidden;
    FileCheck(setup, {"File", "log", path, true, showsData}, findings).Run();
}

void CheckErrorFile(Setup& setup, Findings& findings) {
    const std::string path = setup.settings.CkLogErrorFile();
    if (path.empty()) {
        findings.Add(Level::kNote, "Error", setup.Line("Error"),
                     "The path is empty: the library's own troubles are reported nowhere.",
                     "Write the whole path of a file.");
        return;
    }
    FileCheck(setup, {"Error", "error file", path, false, false}, findings).Run();
}

// Replaces "%p" by the process number and "%%" by a percent sign.
std::string EventsPath(const std::string& pattern) {
    std::string path;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::string two = pattern.substr(i, 2);
        if (two == "%p" || two == "%%") {
            path += two == "%p" ? std::to_string(getpid()) : "%";
            ++i;
        } else {
            path += pattern[i];
        }
    }
    return path;
}

void CheckEvents(Setup& setup, Findings& findings) {
    if (!setup.HasEvents()) return;
    const bool showsData = setup.settings.HideData() == DataSetting::kShown;
    FileCheck(setup, {"Events", "events file", EventsPath(setup.settings.EventsFileName()), true, showsData},
              findings)
        .Run();
}

void CheckForOneFileTwice(Setup& setup, Findings& findings) {
    const std::string log = setup.settings.LogFileName();
    if (setup.IsLogging() && !log.empty() && log == setup.settings.CkLogErrorFile())
        findings.Add(Level::kNote, "Error", setup.Line("Error"), "Log and error file are the same file.",
                     "Name another file for one of them.");
    if (setup.IsLogging() && setup.HasEvents() && log == setup.settings.EventsFileName())
        findings.Add(Level::kWrong, "Events", setup.Line("Events"), "Log and events file are the same file.",
                     "Name another file for one of them.");
    const std::string errors = setup.settings.CkLogErrorFile();
    if (setup.HasEvents() && errors == setup.settings.EventsFileName())
        findings.Add(Level::kWrong, "Events", setup.Line("Events"),
                     "Events and error file are the same file.", "Name another file for one of them.");
}

}  // namespace

void CheckFiles(Setup& setup, Findings& findings) {
    CheckLog(setup, findings);
    CheckErrorFile(setup, findings);
    CheckEvents(setup, findings);
    CheckForOneFileTwice(setup, findings);
}

}  // namespace ckscribe
