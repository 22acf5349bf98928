// Reads the notices that the audit libraries of the command's processes write about modules.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tool/run/followed_file.h"
#include "tool/run/private_directory.h"

namespace ckscribe {

// Collects the notices. It keeps each path once, however many processes load it.
class Notices {
public:
    explicit Notices(const PrivateDirectory& directory);

    // Reads the new notices.
    void Read();

    std::vector<std::string> traced;           // modules that are logged
    std::vector<std::string> untouched;        // loaded at run time and not logged
    std::vector<std::string> linked;           // came with what is linked with them
    std::vector<std::string> otherInterfaces;  // left for their interfaces besides PKCS#11's
    std::vector<std::string> configurations;   // directories in the processes' kConfigurationVariable
    int lost = 0;                              // processes without kConfigurationVariable

private:
    void Take(std::string_view notice);

    FollowedFile file_;
};

}  // namespace ckscribe
