#include "tool/check/check_target.h"

#include <elf.h>
#include <fcntl.h>
#include <fmt/core.h>
#include <fmt/ranges.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "functions/pkcs11_names.h"
#include "tool/check/target_probe.h"
#include "tool/harmless_text.h"

namespace ckscribe {

namespace {

constexpr char kKey[] = "LibUNIX64";
constexpr char kNameTarget[] = "Name the PKCS#11 library of the device: LibUNIX64 = PATH;";

// Returns why a library does not load, as far as the beginning of its file explains it, or else an empty
// text.
std::string ExplainFile(const std::string& path) {
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        return errno == ENOENT ? "There is no such file."
                               : fmt::format("It cannot be reached: {}.", std::strerror(errno));
    if (S_ISDIR(status.st_mode)) return "It is a directory.";
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0) return fmt::format("It cannot be read: {}.", std::strerror(errno));
    unsigned char head[EI_NIDENT + 4] = {};
    const ssize_t size = read(file, head, sizeof head);
    close(file);
    if (size < SELFMAG || std::memcmp(head, ELFMAG, SELFMAG) != 0)
        return "It is no library of this system (not ELF).";
    if (size < static_cast<ssize_t>(sizeof head)) return "The file ends after its first bytes.";
    constexpr unsigned char kOwnClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (head[EI_CLASS] != kOwnClass)
        return fmt::format("It is a library of {} bits, and this is a program of {}.",
                           head[EI_CLASS] == ELFCLASS32 ? 32 : 64, sizeof(void*) * 8);
    if (head[EI_NIDENT] != ET_DYN) return "It is no shared library.";
    return "";
}

std::string RemedyFor(const std::string& path, const std::string& error) {
    if (path.find('/') != path.npos && access(path.c_str(), R_OK) != 0) {
        if (errno != EACCES) return kNameTarget;
        return "Let the application's user read it and enter every folder above it.";
    }
    if (error.find("undefined symbol") != error.npos)
        return "Ask its vendor for a library that is complete, or install what defines that symbol.";
    if (error.find("cannot open shared object file") != error.npos && error.find(path) == error.npos)
        return "Install the library that it needs, or let LD_LIBRARY_PATH name its folder.";
    return kNameTarget;
}

void TellFailure(const std::string& path, int line, const ProbedTarget& target, Findings& findings) {
    const std::string explanation = path.find('/') == path.npos ? "" : ExplainFile(path);
    findings.Add(
        Level::kWrong, kKey, line,
        fmt::format(
            "The target does not load, and every call answers CKR_FUNCTION_NOT_SUPPORTED. The loader says: "
            "{}.{}{}",
            target.loaderError, explanation.empty() ? "" : " ", explanation),
        RemedyFor(path, target.loaderError));
}

// Returns how many names there are, and which ones if they are few or `all` is true.
std::string Listed(const std::vector<std::string>& names, bool all) {
    constexpr std::size_t kFew = 4;
    const std::string number = fmt::format("{} function{}", names.size(), names.size() == 1 ? "" : "s");
    if (names.size() > kFew && !all) return number;
    return fmt::format("{} ({})", number, fmt::join(names, ", "));
}

void TellMissing(const Setup& setup, const ProbedTarget& target, const TargetCheck& how, int line,
                 Findings& findings) {
    if (target.isListOnly) {
        findings.Add(Level::kOk, kKey, line,
                     "The target exports C_GetFunctionList and no other function of the standard: they are "
                     "taken from its "
                     "list.");
    } else if (!target.missingStandard.empty()) {
        findings.Add(
            Level::kNote, kKey, line,
            fmt::format("The target lacks {} of the standard, which answer CKR_FUNCTION_NOT_SUPPORTED.",
                        Listed(target.missingStandard, how.isVerbose)),
            how.isVerbose ? "" : "See which with -v.");
    }
    if (target.missingVendor.empty()) return;
    const bool isAnnounced = setup.settings.IsAnnouncing() != 0;
    findings.Add(
        isAnnounced ? Level::kNote : Level::kOk, kKey, line,
        fmt::format("The target lacks {} of the vendor's.{}", Listed(target.missingVendor, how.isVerbose),
                    isAnnounced
                        ? " Each is announced on the application's standard output, which programs that "
                          "speak through it do not bear."
                        : ""),
        isAnnounced ? "Write \"Announce = 0;\" to keep standard output as it is." : "");
}

std::string Result(unsigned long result) { return fmt::format("{} ({:#x})", GetErrorCode(result), result); }

void TellVersion(const ProbedTarget& target, int line, Findings& findings) {
    constexpr unsigned long kOk = 0;
    if (target.initializeResult && *target.initializeResult != kOk)
        findings.Add(Level::kWrong, kKey, line,
                     fmt::format("The target's C_Initialize answers {}.", Result(*target.initializeResult)),
                     "Set the target up; its documentation says how.");
    if (!target.infoResult) return;
    if (*target.infoResult == kOk) {
        findings.Add(Level::kOk, kKey, line, "The target says that it is: " + target.info + ".");
    } else if (!target.initializeResult) {
        findings.Add(
            Level::kOk, kKey, line,
            fmt::format(
                "The target's C_GetInfo answers {} before it is initialised; --initialize asks it after.",
                Result(*target.infoResult)));
    } else if (*target.initializeResult == kOk) {
        findings.Add(Level::kNote, kKey, line,
                     fmt::format("The target's C_GetInfo answers {}.", Result(*target.infoResult)));
    }
}

void TellTarget(Setup& setup, const ProbedTarget& target, const TargetCheck& how, const std::string& path,
                int line, Findings& findings) {
    if (!target.isLoaded) {
        TellFailure(path, line, target, findings);
    } else if (target.isCkscribe) {
        findings.Add(Level::kWrong, kKey, line,
                     fmt::format("{} is ckscribe itself: it is not bound, and every call answers "
                                 "CKR_FUNCTION_NOT_SUPPORTED.",
                                 path),
                     kNameTarget);
    } else if (!target.hasFunctionList) {
        findings.Add(Level::kWrong, kKey, line,
                     fmt::format("{} loads, but is no PKCS#11 library: it has no C_GetFunctionList.", path),
                     kNameTarget);
    } else {
        findings.Add(Level::kOk, kKey, line, fmt::format("The target {} loads.", path));
        if (target.needsCkscribe)
            findings.Add(Level::kNote, kKey, line,
                         "The target itself needs libckscribe.so: its own calls are logged, too.");
        TellMissing(setup, target, how, line, findings);
        TellVersion(target, line, findings);
    }
}

// Says where the loader looks for a path that is not absolute.
void TellPlace(const std::string& path, int line, Findings& findings) {
    if (path.starts_with('/')) return;
    if (path.find('/') == path.npos) {
        findings.Add(
            Level::kNote, kKey, line,
            fmt::format(
                "{} has no folder: the loader looks for it where it looks for libraries, which may differ "
                "from one application to the next.",
                InQuotes(path)),
            "Write the whole path.");
    } else {
        findings.Add(
            Level::kNote, kKey, line,
            fmt::format("{} is relative to the directory in which the application makes its first call.",
                        InQuotes(path)),
            "Write the whole path.");
    }
}

}  // namespace

void CheckTarget(Setup& setup, const TargetCheck& how, Findings& findings) {
    const int line = setup.Line(kKey);
    const std::string path = setup.settings.CkLogLibraryFileName();
    if (path.empty()) {
        findings.Add(
            Level::kWrong, kKey, line,
            "The path is empty, which stands for the application itself: there is no target, and every call "
            "answers CKR_FUNCTION_NOT_SUPPORTED.",
            kNameTarget);
        return;
    }
    if (line == 0)
        findings.Add(Level::kNote, kKey, 0, fmt::format("The key is missing: the target is {}.", path),
                     kNameTarget);
    TellPlace(path, line, findings);
    const ProbeResult result = ProbeTarget(path, how.initialize, how.seconds);
    if (result.target) {
        TellTarget(setup, *result.target, how, path, line, findings);
    } else {
        findings.Add(
            Level::kWrong, kKey, line,
            fmt::format("The target {} {} while it is loaded and asked who it is.", path, result.ending),
            "Try the target with another program; the application would fare the same.");
    }
}

}  // namespace ckscribe
