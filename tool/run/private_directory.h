// The private directory of one run holds the configuration that only its command reads, and the files that
// libckscribe.so writes.
#pragma once

#include <string>

#include "tool/run/module_choice.h"
#include "tool/run/run_options.h"

namespace ckscribe {

// The constructor makes the directory; the destructor removes it unless it is to be kept.
//
// Only the user can enter a directory that is kept. Any other directory lies in a folder that nobody can
// list, and nobody can guess its name. A process of the command that becomes another user has the name: it
// reads the configuration and adds to the logs. It cannot read the logs.
class PrivateDirectory {
public:
    // `kept` names a directory that stays; the constructor makes it if it is missing, and it must not hold
    // files of another run. If `kept` is empty, the directory lies in the first directory for temporary files
    // that a configuration can name. Throws RunFailure.
    explicit PrivateDirectory(const std::string& kept);
    ~PrivateDirectory();
    PrivateDirectory(const PrivateDirectory&) = delete;
    PrivateDirectory& operator=(const PrivateDirectory&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const char* name) const { return path_ + name; }

    // Writes the configuration, the settings of the audit library, and the empty files that both append to.
    // `library` is libckscribe.so. `ownTarget` is the target of the user's own configuration, or empty.
    void Fill(const RunOptions& options, const ModuleChoice& choice, const std::string& library,
              const std::string& ownTarget);

    // Makes the configuration in a directory that is kept name this module. The configuration then serves
    // without `run`, too.
    void NameTarget(const std::string& module);

private:
    void WriteConfiguration(const RunOptions& options, const std::string& target) const;

    // Makes the files that a process of another user appends to.
    void MakeLogs(const RunOptions& options) const;

    // `folder_` lies around a directory that is not kept, and is removed with it.
    std::string folder_;
    std::string path_;
    bool isKept_;
};

// libckscribe.so writes these files in the private directory.
inline constexpr char kLogFile[] = "/log.txt";
inline constexpr char kErrorFile[] = "/logerror.txt";
inline constexpr char kEventsFile[] = "/events.jsonl";

// Returns the value of LibUNIX64 in the configuration that would count without `run`, or an empty text when
// there is none.
std::string TargetOfOwnConfiguration();

}  // namespace ckscribe
