// Reads and edits the settings of high availability that have rules of their own.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "config/wendrafil_configuration.h"

int WendrafilConfiguration::Switch(const char* key, bool& on) const {
    char value[9];
    const int isFound = Text("HAConfiguration", key, value, sizeof value);
    if (!isFound || value[0] == '#') {
        on = false;
    } else if (std::strncmp(value, "enable", 6) == 0) {
        on = true;
    }
    return isFound;
}

int WendrafilConfiguration::GetHALogfilemaxlen(int& length) const {
    constexpr int kDefault = 0x40000;
    char value[19];
    const int isFound = Text("HAConfiguration", "logLen", value, sizeof value);
    length = isFound ? std::atoi(value) : 0;
    if (isFound && (value[0] == '#' || length < 0)) length = kDefault;
    return isFound;
}

int WendrafilConfiguration::GetHAAutoRecoverCount(int& count) const {
    char value[5];
    const int isFound = Text("HAConfiguration", "reconnAtt", value, sizeof value);
    count = isFound ? std::atoi(value) : 0;
    return isFound;
}

int WendrafilConfiguration::SetHAAutoRecoverCount(int count) {
    char value[6];
    std::snprintf(value, sizeof value, "%.5s", static_cast<const char*>(ckscribe::NumberedName("%d", count)));
    return Set("HAConfiguration", "reconnAtt", value);
}

int WendrafilConfiguration::UpHARecovery(const char* key) {
    const unsigned next = static_cast<unsigned>(GetHARecovery(key)) + 1;  // unsigned numbers may wrap around
    return Set("HARecovery", key, static_cast<int>(next));
}
