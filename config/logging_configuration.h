// Reads the section "CkLog2" of the configuration file.
#pragma once

#include <atomic>

#include "config/wendrafil_configuration.h"
#include "functions/function_classes.h"
#include "host/file_creation.h"

namespace ckscribe {

// The value of the key "FileMode".
struct FileModeSetting {
    NewFilePermissions permissions;  // none without the key, and none if the value is rejected
    bool isRejected = false;         // the key is there, and its value is not an octal number up to 0777
    char value[200] = {};            // empty without the key
};

// Where the data of calls stand: what goes in and out, and what objects hold.
enum class DataSetting {
    kShownInLog,  // without the key: in the text log, and not in events
    kShown,       // "0": in both
    kHidden,      // any other value: in neither. A key that protects fails to the safe side.
};

}  // namespace ckscribe

// Threads: any thread may call DoWeLogThis at any time. Mask and counter are relaxed atomics; a lost count
// only shifts the next look at the file. Callers of the other functions take turns. A pointer that an
// accessor returns is valid until that accessor is called again.
class CkLogConfig : public WendrafilConfiguration {
public:
    static const char* GetCkLogSectionName() { return "CkLog2"; }

    // The longest path that counts whole, and the longest mask, level or number. The rest is cut off.
    static constexpr int kLongestPath = kResultSize - 1;
    static constexpr int kLongestWord = 199;

    // The path of the target library: key "LibUNIX64", default "/usr/lib/libmordavek2.so".
    const char* CkLogLibraryFileName();

    // Reads key "LoggingMask", names of classes separated by blanks or vertical bars, and keeps the mask.
    // Without the key every function is logged; COMPAT: the result is 0 then. Unknown names are ignored, and
    // so are words after the twelfth.
    unsigned GetLoggingMask();

    // 1 when calls of this class are to be logged now, else 0. Each 500th query reads the mask anew first. If
    // the file cannot be opened or read then, the mask that was read last stays: a daemon that has given up
    // its rights, or changed its root, must not log more than its configuration allows.
    int DoWeLogThis(int classBit) {
        const unsigned query = reqToCheckConfigFile.load(std::memory_order_relaxed);
        reqToCheckConfigFile.store(query + 1, std::memory_order_relaxed);
        if (query % kQueriesPerLook == 0) [[unlikely]]
            RefreshLoggingMask();
        const unsigned wanted = static_cast<unsigned>(ALL_FUNC | classBit);
        return (loggingMask.load(std::memory_order_relaxed) & wanted) != 0 ? 1 : 0;
    }

    // Key "LoggingLevel": "DESTROY" 1, "MODIFY" 2, "ADMIN" 3, anything else or no key 4.
    int LoggingLevel();

    // Keys "NewFormat" and "Enabled": numbers, 0 without the key.
    int IsNewCkLogFormat();
    int IsLoggingEnabledMordavek();

    // Key "File", default "log.txt".
    const char* LogFileName();

    // Key "Error", default "logerror.txt". When the configuration file cannot be read, the path that was read
    // last counts.
    const char* CkLogErrorFile();

    // Key "Announce". 0 for a plain "0", with or without blanks around it: the library does not print on
    // standard output which functions the target lacks. 1 for anything else and without the key.
    int IsAnnouncing() const;

    // Key "FileMode": the permissions of files that the library creates, an octal number up to 0777.
    ckscribe::FileModeSetting FileMode() const;

    // Key "Events": the path of the events file, "%p" in it for the process number and "%%" for a percent
    // sign. Empty without the key: there is none then.
    const char* EventsFileName();

    // Key "HideData": what a plain 0, any other value, and no key at all say.
    ckscribe::DataSetting HideData() const;

    // Writes key "LoggingMask" and returns 1 for success. COMPAT: writes "ALL_FUNC" for exactly that text,
    // and an empty value for any other.
    int SetLoggingMask(const char* value);

private:
    static constexpr unsigned kQueriesPerLook = 500;

    void RefreshLoggingMask();
    // Keeps the mask of these names, or every class for null, as GetLoggingMask does.
    unsigned KeepMask(const char* names);
    int NumberOf(const char* key) const;
    const char* TextOf(const char* key, const char* missing, char* buffer) const;

    std::atomic<bool> isMaskRead{false};
    bool isErrorFileRead = false;
    char eventsFileName[kResultSize] = {};
};
