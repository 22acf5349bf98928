// Reads the settings of the client library that have rules of their own.

#include <cstdlib>
#include <cstring>

#include "config/wendrafil_configuration.h"
#include "util/tolk_text.h"

namespace {

unsigned long HexOrDecimal(const char* text) {
    const bool isHex = text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    return std::strtoul(text, nullptr, isHex ? 16 : 10);
}

}  // namespace

bool WendrafilConfiguration::GetAllowPTK() const {
    char value[80];
    return Text("Misc", "AllowPTK", value, sizeof value) && value[0] == '1';
}

bool WendrafilConfiguration::IsKeyInHW() const {
    char value[200];
    return Text("Misc", "KeysInHW", value, sizeof value) && Tolk_stricmp(value, "YES") == 0;
}

int WendrafilConfiguration::ExplicitAppId(unsigned long& major, unsigned long& minor) const {
    char value[80] = "";
    const int hasMajor = Text("Misc", "AppIdMajor", value, sizeof value);
    major = HexOrDecimal(value);
    // COMPAT: the buffer still holds the major number. It counts as the minor one if that is missing.
    const int hasMinor = Text("Misc", "AppIdMinor", value, sizeof value);
    minor = HexOrDecimal(value);
    return hasMajor || hasMinor;
}

const char* WendrafilConfiguration::EnablerLogFileName() {
    logFileName[0] = '\0';
    Text("Misc", "LogFile", logFileName, kResultSize);
    return logFileName;
}

int WendrafilConfiguration::GetEntrustCAPasswd(char* buffer) const {
    return Text("Misc", "TokenInitString", buffer, 100) ? static_cast<int>(std::strlen(buffer)) : 0;
}

int WendrafilConfiguration::InstanceOrmaCR(int* out) const {
    char value[32];
    if (!Text("CardReader", "InstanceOrmaCR", value, sizeof value)) return 0;
    *out = std::atoi(value);
    return 1;
}
