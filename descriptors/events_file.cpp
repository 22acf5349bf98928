#include "descriptors/events_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "descriptors/error_log.h"
#include "descriptors/log_settings.h"
#include "descriptors/loss_report.h"
#include "descriptors/record_environment.h"
#include "host/append_file.h"
#include "util/cache_line.h"
#include "util/undestroyed.h"

namespace ckscribe {

alignas(ckscribe::kCacheLine) std::atomic<int> areEventsOpen{0};

namespace {

constexpr std::size_t kLongestName = 500;
constexpr std::size_t kLongestDirectory = 1000;

alignas(ckscribe::kCacheLine) ckscribe::Undestroyed<AppendFile> eventsFile;

LossReport lossReport;

// A forked child opens its own file by these names. Its current directory may be another one by then.
char openName[kLongestName + 1] = {};
char directory[kLongestDirectory + 1] = {};  // stands in front of a relative name; else empty
bool isForAnotherProcess = false;

bool NamesProcess(const char* name) {
    for (; *name != '\0'; ++name) {
        if (*name != '%') continue;
        if (name[1] == 'p') return true;
        if (name[1] == '%') ++name;
    }
    return false;
}

// A Path grows piece by piece. A piece that does not fit makes it unusable.
class Path {
public:
    void Append(std::string_view more) {
        if (more.size() > kRoom - length) isWhole = false;
        if (!isWhole) return;
        std::memcpy(text + length, more.data(), more.size());
        length += more.size();
        text[length] = '\0';
    }
    bool IsWhole() const { return isWhole; }
    const char* Text() const { return text; }

    static constexpr std::size_t kRoom = kLongestDirectory + 2 * kLongestName;

private:
    std::size_t length = 0;
    bool isWhole = true;
    char text[kRoom + 1] = {};
};

// Replaces "%p" and "%%". A percent sign in front of any other letter stands for itself, and so does the
// letter.
void AppendExpanded(Path& path, const char* name) {
    char number[20];
    std::snprintf(number, sizeof number, "%d", recordEnvironment.processId());
    for (; *name != '\0'; ++name) {
        if (name[0] == '%' && name[1] == 'p') {
            path.Append(number);
            ++name;
        } else {
            path.Append({name, 1});
            if (name[0] == '%' && name[1] == '%') ++name;
        }
    }
}

void ReportFailure(const char* path) {
    char text[Path::kRoom + 100];
    std::snprintf(text, sizeof text, "Could not open events file %s.", path);
    ReportErrorInLog(text);
}

// A process may have the right to append and none to read, as one of `ckscribe run` that became another user.
bool Open(const char* path) {
    const NewFilePermissions permissions = PermissionsOfNewFiles();
    return eventsFile.object.Open(path, permissions) ||
           (errno == EACCES && eventsFile.object.OpenForAppendingAlone(path, permissions));
}

void OpenForThisProcess() {
    Path path;
    path.Append(directory);
    AppendExpanded(path, openName);
    isForAnotherProcess = false;
    lossReport.Forget();
    const bool isOpen = path.IsWhole() && Open(path.Text());
    areEventsOpen.store(isOpen ? 1 : 0, std::memory_order_relaxed);
    if (!isOpen) ReportFailure(path.Text());
}

void RememberDirectory() {
    *directory = '\0';
    if (*openName == '/' || !NamesProcess(openName)) return;
    if (getcwd(directory, kLongestDirectory) == nullptr || *directory != '/') {
        *directory = '\0';
        return;
    }
    std::strcat(directory, "/");
}

}  // namespace

void OpenEvents(const char* name) {
    CloseEvents();
    if (*name == '\0') return;
    std::snprintf(openName, sizeof openName, "%s", name);
    RememberDirectory();
    OpenForThisProcess();
}

void CloseEvents() {
    eventsFile.object.Close();
    areEventsOpen.store(0, std::memory_order_relaxed);
}

void AppendToEvents(std::string_view lines) {
    if (isForAnotherProcess) OpenForThisProcess();
    // A full disk may have cut the line in front. It must not take the next one with it.
    if (eventsFile.object.EndsInPart() && !eventsFile.object.Append("\n")) return;
    eventsFile.object.Append(lines);
}

void ReportLossOfEvents() { lossReport.After(eventsFile.object, "events file"); }

void OpenEventsAnewInChild() { isForAnotherProcess = AreEventsOpen() && NamesProcess(openName); }

}  // namespace ckscribe
