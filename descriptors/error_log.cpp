#include "descriptors/error_log.h"

#include <cstdio>
#include <ctime>

#include "config/process_configuration.h"
#include "descriptors/log_settings.h"
#include "host/append_file.h"

bool ReportErrorInLog(const char* text) {
    const char* const path = configuration.CkLogErrorFile();
    if (*path == '\0') return true;
    ckscribe::AppendFile file;
    if (!file.OpenForAppendingAlone(path, ckscribe::PermissionsOfNewFiles())) return false;

    const std::time_t now = std::time(nullptr);
    std::tm local{};
    tzset();
    localtime_r(&now, &local);
    char stamp[500];
    if (std::strftime(stamp, sizeof stamp, "%y/%m/%d[%H:%M:%S]: ", &local) == 0) *stamp = '\0';

    // COMPAT: the entry begins with a new line and has none at its end. Two blanks stand behind the stamp.
    char line[sizeof stamp + 1300];
    const int length = std::snprintf(line, sizeof line, "\n %s %s", stamp, text);
    if (length < 0) return false;
    const std::size_t printed = static_cast<std::size_t>(length);
    return file.Append({line, printed < sizeof line ? printed : sizeof line - 1});
}
