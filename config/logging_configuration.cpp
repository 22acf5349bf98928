#include "config/logging_configuration.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "config/logging_words.h"
#include "host/host_shield.h"

namespace {

constexpr int kTextSize = CkLogConfig::kLongestWord + 1;

}  // namespace

const char* CkLogConfig::CkLogLibraryFileName() {
    WendrafilConfiguration::LibraryFileName(GetCkLogSectionName(), ckLogLibraryFileName, kResultSize);
    return ckLogLibraryFileName;
}

unsigned CkLogConfig::GetLoggingMask() {
    char names[kTextSize];
    if (!GetConfigurationInfo(GetCkLogSectionName(), "LoggingMask", names, sizeof names)) {
        loggingMask.store(ALL_FUNC, std::memory_order_relaxed);
        return 0;
    }
    const unsigned mask = ckscribe::LoggingMaskOf(names);
    loggingMask.store(mask, std::memory_order_relaxed);
    return mask;
}

void CkLogConfig::RefreshLoggingMask() {
    BehindHostShield([this] { GetLoggingMask(); });
}

int CkLogConfig::LoggingLevel() {
    char word[kTextSize];
    if (!GetConfigurationInfo(GetCkLogSectionName(), "LoggingLevel", word, sizeof word)) return 4;
    return ckscribe::LoggingLevelOf(word);
}

int CkLogConfig::IsNewCkLogFormat() { return NumberOf("NewFormat"); }

int CkLogConfig::IsLoggingEnabledMordavek() { return NumberOf("Enabled"); }

const char* CkLogConfig::LogFileName() { return TextOf("File", "log.txt", logFileName); }

const char* CkLogConfig::CkLogErrorFile() { return TextOf("Error", "logerror.txt", errorFileName); }

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
