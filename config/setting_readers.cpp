// Reads numbers and texts for the accessors of single settings.

#include <cstdio>
#include <cstdlib>

#include "config/wendrafil_configuration.h"

int WendrafilConfiguration::Number(const char* section, const char* key, int size, int missing) const {
    char text[kLongestNumber];
    return Text(section, key, text, size) ? std::atoi(text) : missing;
}

int WendrafilConfiguration::Scanned(const char* section, const char* key, int* value) const {
    char text[32];
    return Text(section, key, text, sizeof text) && std::sscanf(text, "%d", value) == 1;
}

int WendrafilConfiguration::ServerNumber(const char* key, int size, int missing) const {
    char text[kLongestNumber];
    return ServerText(key, text, size) ? std::atoi(text) : missing;
}

int WendrafilConfiguration::ServerText(const char* key, char* buffer, int size) const {
    return Text(server_section, key, buffer, size) || Text("OrmaSA Server", key, buffer, size);
}

int WendrafilConfiguration::ServerScanned(const char* key, int* value) const {
    char text[32];
    return ServerText(key, text, sizeof text) && std::sscanf(text, "%d", value) == 1;
}
