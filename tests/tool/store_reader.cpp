// This program prints what the configuration store reads. Standard input holds lines "PATH TAB SECTION TAB
// KEY". Standard output gets a line for each of them: "=" and the value, or "-" if the key is not found.

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

int main() {
    for (std::string line; std::getline(std::cin, line);) {
        const std::size_t section = line.find('\t') + 1;
        const std::size_t key = line.find('\t', section) + 1;
        const std::string path = line.substr(0, section - 1);
        const ConfigurationAt store(path.c_str());
        char value[2000];
        const bool isFound =
            store.GetConfigurationEntry(line.substr(section, key - section - 1).c_str(),
                                        line.substr(key).c_str(), value, static_cast<int>(sizeof value)) != 0;
        std::cout << (isFound ? std::string("=") + value : "-") << '\n';
    }
}
