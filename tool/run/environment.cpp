#include "tool/run/environment.h"

#include <map>
#include <string_view>

#include "tool/audit/names.h"

extern char** environ;

namespace ckscribe {

std::vector<std::string> EnvironmentOfCommand(const std::string& directory, const Redirection& redirection) {
    std::map<std::string_view, std::string_view> own;
    if (!redirection.variable.empty())
        own = {{redirection.variable, redirection.value},
               {kRunVariable, directory},
               {kConfigurationVariable, directory}};
    std::vector<std::string> variables;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string_view entry = *each;
        if (!own.contains(entry.substr(0, entry.find('=')))) variables.emplace_back(entry);
    }
    for (const auto& [name, value] : own) variables.push_back(std::string(name).append("=").append(value));
    return variables;
}

}  // namespace ckscribe
