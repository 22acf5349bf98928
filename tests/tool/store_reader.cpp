// Prints what the configuration store reads. Its argument is the path of a file. Standard input holds lines
// "SECTION TAB KEY". Standard output gets a line for each: "=" and the value, or "-" when the key is not
// found.

#include <iostream>
#include <string>

#include "config/wendrafil_configuration.h"

namespace {

class ConfigurationAt : public WendrafilConfiguration {
public:
    explicit ConfigurationAt(const char* path) : path_(path) {}
    const char* GetConfFileName() const override { return path_; }

private:
    const char* path_;
};

}  // namespace

int main(int, char** words) {
    const ConfigurationAt store(words[1]);
    for (std::string line; std::getline(std::cin, line);) {
        const std::size_t tab = line.find('\t');
        char value[2000];
        const bool isFound =
            store.GetConfigurationEntry(line.substr(0, tab).c_str(), line.substr(tab + 1).c_str(), value,
                                        static_cast<int>(sizeof value)) != 0;
        std::cout << (isFound ? std::string("=") + value : "-") << '\n';
    }
}
