#include "config/logging_configuration.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "config/logging_words.h"
#include "host/host_shield.h"
#include "util/without_blanks.h"

namespace {

constexpr int kTextSize = CkLogConfig::kLongestWord + 1;

constexpr char kMaskKey[] = "LoggingMask";

ckscribe::NewFilePermissions Permissions(std::string_view octal) {
    constexpr mode_t kMost = 0777;
    if (octal.empty()) return {};
    mode_t permissions = 0;
    for (const char digit : octal) {
        if (digit < '0' || digit > '7') return {};
        permissions = permissions * 8 + static_cast<mode_t>(digit - '0');
        if (permissions > kMost) return {};
    }
    return permissions;
}

}  // namespace

const char* CkLogConfig::CkLogLibraryFileName() {
    WendrafilConfiguration::LibraryFileName(GetCkLogSectionName(), ckLogLibraryFileName, kResultSize);
    return ckLogLibraryFileName;
}

unsigned CkLogConfig::GetLoggingMask() {
    char names[kTextSize];
    const bool isFound = GetConfigurationInfo(GetCkLogSectionName(), kMaskKey, names, sizeof names) != 0;
    return KeepMask(isFound ? names : nullptr);
}

unsigned CkLogConfig::KeepMask(const char* names) {
    isMaskRead.store(true, std::memory_order_relaxed);
    if (names == nullptr) {
        loggingMask.store(ALL_FUNC, std::memory_order_relaxed);
        return 0;
    }
    const unsigned mask = ckscribe::LoggingMaskOf(names);
    loggingMask.store(mask, std::memory_order_relaxed);
    return mask;
}

void CkLogConfig::RefreshLoggingMask() {
    ckscribe::BehindHostShield([this] {
        if (GetLibraryType() != 0 || !isMaskRead.load(std::memory_order_relaxed)) {
            GetLoggingMask();
            return;
        }
        char names[kTextSize];
        const Found found = LookUp(GetCkLogSectionName(), kMaskKey, names, sizeof names);
        if (found != Found::kNoText) KeepMask(found == Found::kEntry ? names : nullptr);
    });
}

int CkLogConfig::LoggingLevel() {
    char word[kTextSize];
    if (!GetConfigurationInfo(GetCkLogSectionName(), "LoggingLevel", word, sizeof word)) return 4;
    return ckscribe::LoggingLevelOf(word);
}

int CkLogConfig::IsNewCkLogFormat() { return NumberOf("NewFormat"); }

int CkLogConfig::IsLoggingEnabledMordavek() { return NumberOf("Enabled"); }

const char* CkLogConfig::LogFileName() { return TextOf("File", "log.txt", logFileName); }

const char* CkLogConfig::CkLogErrorFile() {
    char path[kResultSize];
    const bool isFile = GetLibraryType() == 0;
    const Found found = isFile ? LookUp(GetCkLogSectionName(), "Error", path, sizeof path) : Found::kNoEntry;
    if (found == Found::kNoText && isErrorFileRead) return errorFileName;
    isErrorFileRead = isErrorFileRead || found != Found::kNoText;
    std::snprintf(errorFileName, kResultSize, "%s", found == Found::kEntry ? path : "logerror.txt");
    return errorFileName;
}

int CkLogConfig::IsAnnouncing() const {
    char text[kTextSize];
    const bool isThere = GetConfigurationInfo(GetCkLogSectionName(), "Announce", text, sizeof text);
    return isThere && ckscribe::WithoutBlanks(text) == "0" ? 0 : 1;
}

ckscribe::FileModeSetting CkLogConfig::FileMode() const {
    ckscribe::FileModeSetting setting;
    if (!GetConfigurationInfo(GetCkLogSectionName(), "FileMode", setting.value, sizeof setting.value))
        return setting;
    const std::string_view value = setting.value;
    const bool mayBeCut = value.size() == sizeof setting.value - 1;
    if (!mayBeCut) setting.permissions = Permissions(ckscribe::WithoutBlanks(value));
    setting.isRejected = !setting.permissions;
    return setting;
}

const char* CkLogConfig::EventsFileName() { return TextOf("Events", "", eventsFileName); }

ckscribe::DataSetting CkLogConfig::HideData() const {
    char value[kTextSize];
    if (!GetConfigurationInfo(GetCkLogSectionName(), "HideData", value, sizeof value))
        return ckscribe::DataSetting::kShownInLog;
    return ckscribe::WithoutBlanks(value) == "0" ? ckscribe::DataSetting::kShown
                                                 : ckscribe::DataSetting::kHidden;
}

int CkLogConfig::SetLoggingMask(const char* value) {
    const bool everything = value != nullptr && std::strcmp(value, "ALL_FUNC") == 0;
    return SetConfigurationInfo(GetCkLogSectionName(), "LoggingMask", everything ? "ALL_FUNC" : "") ? 1 : 0;
}

int CkLogConfig::NumberOf(const char* key) const {
    char text[kTextSize];
    return GetConfigurationInfo(GetCkLogSectionName(), key, text, sizeof text) ? std::atoi(text) : 0;
}

const char* CkLogConfig::TextOf(const char* key, const char* missing, char* buffer) const {
    *buffer = '\0';
    if (!GetConfigurationInfo(GetCkLogSectionName(), key, buffer, kResultSize)) {
        std::snprintf(buffer, kResultSize, "%s", missing);
    }
    return buffer;
}
