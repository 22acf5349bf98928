#include "config/logging_configuration.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "host/host_shield.h"

namespace {

constexpr int kTextSize = 200;
constexpr char kSeparators[] = " |";
constexpr int kMostClasses = 12;

struct NamedClass {
    std::string_view name;
    FunctionClass bit;
};

constexpr NamedClass kClasses[] = {
    {"GEN_FUNC", GEN_FUNC},
    {"SLOT_TOKEN_FUNC", SLOT_TOKEN_FUNC},
    {"SESSION_FUNC", SESSION_FUNC},
    {"OBJ_MNGMNT_FUNC", OBJ_MNGMNT_FUNC},
    {"ENC_DEC_FUNC", ENC_DEC_FUNC},
    {"DIGEST_FUNC", DIGEST_FUNC},
    {"SIGN_VERIFY_FUNC", SIGN_VERIFY_FUNC},
    {"KEY_MNGMNT_FUNC", KEY_MNGMNT_FUNC},
    {"MISC_FUNC", MISC_FUNC},
    {"ALL_FUNC", ALL_FUNC},
    {"QUORVANTH_FUNC", QUORVANTH_FUNC},
};

unsigned ClassBit(std::string_view name) {
    for (const NamedClass& known : kClasses) {
        if (known.name == name) return static_cast<unsigned>(known.bit);
    }
    return 0;
}

unsigned MaskOf(std::string_view names) {
    unsigned mask = 0;
    for (int i = 0; i < kMostClasses; ++i) {
        const std::size_t begin = names.find_first_not_of(kSeparators);
        if (begin == names.npos) break;
        names.remove_prefix(begin);
        const std::string_view name = names.substr(0, names.find_first_of(kSeparators));
        mask |= ClassBit(name);
        names.remove_prefix(name.size());
    }
    return mask;
}

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
    const unsigned mask = MaskOf(names);
    loggingMask.store(mask, std::memory_order_relaxed);
    return mask;
}

void CkLogConfig::RefreshLoggingMask() {
    BehindHostShield([this] { GetLoggingMask(); });
}

int CkLogConfig::LoggingLevel() {
    char word[kTextSize];
    if (!GetConfigurationInfo(GetCkLogSectionName(), "LoggingLevel", word, sizeof word)) return 4;
    if (std::strcmp(word, "DESTROY") == 0) return 1;
    if (std::strcmp(word, "MODIFY") == 0) return 2;
    if (std::strcmp(word, "ADMIN") == 0) return 3;
    return 4;
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
