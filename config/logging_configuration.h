// Reads the section "CkLog2" of the configuration file.
#pragma once

#include <atomic>

#include "config/wendrafil_configuration.h"
#include "functions/function_classes.h"
#include "host/file_creation.h"

namespace ckscribe {

// A FileModeSetting holds the value of the key "FileMode".
struct FileModeSetting {
    // There are no permissions if the key is missing or the value is rejected.
    NewFilePermissions permissions;
    // The key is there, and its value is not an octal number up to 0777.
    bool isRejected = false;
    char value[200] = {};  // empty if the key is missing
};

// A DataSetting says where the data of calls may appear. Data are what goes in and out, and what objects
// hold.
enum class DataSetting {
    kShownInLog,  // the key is missing: data appear in the text log, and not in events
    kShown,       // "0": data appear in both
    kHidden,      // any other value: data appear in neither. A key that protects fails to the safe side.
};

}  // namespace ckscribe

// Threads: any thread may call DoWeLogThis at any time. Accesses to mask and counter are relaxed: a lost
// count only shifts the next look at the file. The caller serialises all other functions. A pointer that an
// accessor returns is valid until that accessor is called again.
class CkLogConfig : public WendrafilConfiguration {
public:
    static const char* GetCkLogSectionName() { return "CkLog2"; }

    // These are the longest path, and the longest mask, level or number, in characters. The rest is cut off.
    static constexpr int kLongestPath = kResultSize - 1;
    static constexpr int kLongestWord = 199;

    // Returns the path of the target library: key "LibUNIX64", default "/usr/lib/libmordavek2.so".
    const char* CkLogLibraryFileName();

    // Reads key "LoggingMask", names of classes between blanks or vertical bars. Keeps the mask and returns
    // it. If the key is missing, every function is logged. COMPAT: the result is 0 then. COMPAT: unknown
    // names and words after the twelfth are ignored.
    unsigned GetLoggingMask();

    // Returns 1 if calls of this class are logged now, else 0. Each 500th query reads the mask anew first. If
    // the file cannot be opened or read then, the last mask stays. A daemon that has given up its rights, or
    // changed its root, must not log more than its configuration allows.
    int DoWeLogThis(int classBit) {
        const unsigned query = reqToCheckConfigFile.load(std::memory_order_relaxed);
        reqToCheckConfigFile.store(query + 1, std::memory_order_relaxed);
        if (query % kQueriesPerLook == 0) [[unlikely]]
            RefreshLoggingMask();
        const unsigned wanted = static_cast<unsigned>(ALL_FUNC | classBit);
        return (loggingMask.load(std::memory_order_relaxed) & wanted) != 0 ? 1 : 0;
    }

    // Returns 1 if key "LoggingLevel" is "DESTROY", 2 for "MODIFY", 3 for "ADMIN", and 4 for anything else or
    // if the key is missing.
    int LoggingLevel();

    // These return the numbers of keys "NewFormat" and "Enabled", and 0 if the key is missing.
    int IsNewCkLogFormat();
    int IsLoggingEnabledMordavek();

    // Returns key "File", the path of the log; default "log.txt".
    const char* LogFileName();

    // Returns key "Error", the path of the error file; default "logerror.txt". If the configuration file
    // cannot be read, returns the path that was read last.
    const char* CkLogErrorFile();

    // Returns 0 if key "Announce" is "0", with or without blanks around it: the library then does not print
    // on standard output which functions the target lacks. Returns 1 for anything else and if the key is
    // missing.
    int IsAnnouncing() const;

    // Returns key "FileMode": the permissions of files that the library creates, an octal number up to 0777.
    ckscribe::FileModeSetting FileMode() const;

    // Returns key "Events", the path of the events file. In it, "%p" stands for the process number and "%%"
    // for a percent sign. Returns an empty text if the key is missing: there is no events file then.
    const char* EventsFileName();

    // Returns the meaning of key "HideData".
    ckscribe::DataSetting HideData() const;

    // Writes key "LoggingMask". Returns 1 for success, else 0. COMPAT: writes "ALL_FUNC" for exactly that
    // text, and an empty value for any other.
    int SetLoggingMask(const char* value);

private:
    static constexpr unsigned kQueriesPerLook = 500;

    void RefreshLoggingMask();
    // Keeps the mask of these names, and every class for null, as GetLoggingMask does.
    unsigned KeepMask(const char* names);
    int NumberOf(const char* key) const;
    const char* TextOf(const char* key, const char* missing, char* buffer) const;

    std::atomic<bool> isMaskRead{false};
    bool isErrorFileRead = false;
    char eventsFileName[kResultSize] = {};
};
