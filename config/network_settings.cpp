// Reads the settings of the network server that have rules of their own. Reads and edits the list of servers.

#include <algorithm>
#include <cstring>

#include "config/wendrafil_configuration.h"

namespace {

// Returns the index of the server called `name`, or -1.
int FindServer(const WendrafilConfiguration& store, const char* name, bool server) {
    char entry[50];
    for (int index = 0; store.GetOrmaNetServerName(index, entry, sizeof entry, server); ++index) {
        if (std::strcmp(entry, name) == 0) return index;
    }
    return -1;
}

// Returns the key of the first index that is missing or empty.
ckscribe::NumberedName FreeKey(const WendrafilConfiguration& store, const char* section,
                               const char* pattern) {
    char entry[2];
    for (int index = 0;; ++index) {
        const ckscribe::NumberedName key(pattern, index);
        if (!store.GetConfigurationInfo(section, key, entry, sizeof entry) || entry[0] == '\0') return key;
    }
}

}  // namespace

int WendrafilConfiguration::GetAttackTimeout() const {
    const int timeout = ServerNumber("AttackTimeout", 200, 10);
    return timeout == 0 ? 10 : std::min(timeout, 20);
}

int WendrafilConfiguration::GetServerThreadCount() const {
    const int threads = ServerNumber("NTLSThreads", 200, 1);
    return threads == 0 ? 1 : threads;
}

int WendrafilConfiguration::GetSourceIPChecking(bool& check) const {
    char value[9];
    const int isFound = Text("OrmaSA Server", "SRC_IP_CHK", value, sizeof value);
    check = !(isFound && std::strncmp(value, "disable", 7) == 0);
    return isFound;
}

int WendrafilConfiguration::GetListOfServers(int& count, char** names, bool server) const {
    char name[50];
    for (count = 0; GetOrmaNetServerName(count, name, sizeof name, server); ++count) {
        if (names != nullptr && names[count] != nullptr) std::strcpy(names[count], name);
    }
    return count > 0;
}

int WendrafilConfiguration::SetOrmaNetServerName(const char* name, bool server) {
    if (FindServer(*this, name, server) >= 0) return 2;
    return Set(NetSection(server), FreeKey(*this, NetSection(server), "ServerName%02d"), name);
}

int WendrafilConfiguration::ReplaceOrmaNetServerName(const char* oldName, const char* newName, int,
                                                     bool server) {
    const int index = FindServer(*this, oldName, server);
    return index < 0 ? -1 : Set(NetSection(server), ckscribe::NumberedName("ServerName%02d", index), newName);
}

int WendrafilConfiguration::DeleteOrmaNetServerPair(const char* name, bool server) {
    const char* section = NetSection(server);
    const int index = FindServer(*this, name, server);
    if (index < 0) return 3;
    return Set(section, ckscribe::NumberedName("ServerName%02d", index), "") &&
           Set(section, ckscribe::NumberedName("ServerPort%02d", index), "") &&
           Set(section, ckscribe::NumberedName("ServerHtl%02d", index), "");
}

int WendrafilConfiguration::SetServerPort(const int* port, bool server) {
    return Set(NetSection(server), FreeKey(*this, NetSection(server), "ServerPort%02d"), *port);
}

int WendrafilConfiguration::SetServerHtlRequired(int required, bool server, int index) {
    const char* section = NetSection(server);
    const char* value = required == 1 ? "1" : "0";
    if (index < 0) return Set(section, FreeKey(*this, section, "ServerHtl%02d"), value);
    return Set(section, ckscribe::NumberedName("ServerHtl%02d", index), value);
}
