// The directory of one run: the configuration that only its command reads, and what libckscribe.so writes
// there.
#pragma once

#include <string>

#include "tool/run/module_choice.h"
#include "tool/run/run_options.h"

namespace ckscribe {

// Made when the object is; goes with the object unless it is to be kept.
//
// Only the user can enter a directory that is kept. Any other lies in a folder that nobody can list, and
// nobody can guess its name. A process of the command that becomes another user has the name: it reads the
// configuration and adds to the logs. It cannot read them.
class PrivateDirectory {
public:
    // `kept` names a directory that stays; it is made if need be, and must not hold files of another run.
    // Empty: one in the first directory for temporary files that a configuration can name. Throws RunFailure.
    explicit PrivateDirectory(const std::string& kept);
    ~PrivateDirectory();
    PrivateDirectory(const PrivateDirectory&) = delete;
    PrivateDirectory& operator=(const PrivateDirectory&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const char* name) const { return path_ + name; }

    // Writes the configuration, the settings of the audit library, and the empty files that both append to.
    // `library` is libckscribe.so, `ownTarget` the target of a configuration that the user has already, or
    // empty.
    void Fill(const RunOptions& options, const ModuleChoice& choice, const std::string& library,
              const std::string& ownTarget);

    // Of a directory that is kept: makes the configuration name this module, as which it will serve without
    // `run`.
    void NameTarget(const std::string& module);

private:
    void WriteConfiguration(const RunOptions& options, const std::string& target) const;

    // Makes the files to which a process of another user adds.
    void MakeLogs(const RunOptions& options) const;

    std::string folder_;  // of a directory that is not kept: what lies around it, and goes with it
    std::string path_;
    bool isKept_;
};

// What libckscribe.so writes there, and where.
inline constexpr char kLogFile[] = "/log.txt";
inline constexpr char kErrorFile[] = "/logerror.txt";
inline constexpr char kEventsFile[] = "/events.jsonl";

// The value of LibUNIX64 in the configuration that would count without `run`, or an empty text.
std::string TargetOfOwnConfiguration();

}  // namespace ckscribe
