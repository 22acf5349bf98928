// This program is called like this: configuration_tool get SECTION KEY | set SECTION KEY VALUE | clear
// SECTION KEY | library | timeout MILLISECONDS

#include <cstdio>
#include <string_view>

#include "config/wendrafil_configuration.h"
#include "util/tolk_text.h"

int main(int argc, char** argv) {
    WendrafilConfiguration store;
    const std::string_view command = argc > 1 ? argv[1] : "";
    int isDone = 0;
    if (command == "get" && argc == 4) {
        char value[1024];
        isDone = store.GetConfigurationInfo(argv[2], argv[3], value, sizeof value);
        if (isDone) std::puts(value);
    } else if (command == "set" && argc == 5) {
        isDone = store.SetConfigurationInfo(argv[2], argv[3], argv[4]);
    } else if (command == "clear" && argc == 4) {
        isDone = store.ClearEntry(argv[2], argv[3]);
    } else if (command == "library" && argc == 2) {
        isDone = std::puts(store.LibraryFileName()) >= 0;
    } else if (command == "timeout" && argc == 3) {
        int milliseconds = 0;
        isDone = Tolk_atoi(argv[2], 10, &milliseconds) == 0 &&
                 store.SetOrmaNetClusterReceiveTimeout("one", milliseconds) == 1;
    }
    return isDone ? 0 : 1;
}
