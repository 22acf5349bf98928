#include "tool/run/environment.h"

#include <string_view>

#include "tool/audit/names.h"

extern char** environ;

namespace ckscribe {

namespace {

constexpr char kAuditVariable[] = "LD_AUDIT";

bool IsVariable(std::string_view entry, std::string_view name) {
    return entry.starts_with(name) && entry.size() > name.size() && entry[name.size()] == '=';
}

// The list of audit libraries with ours first, and no other one of a run around this one.
std::string WithAuditLibrary(std::string_view others, const std::string& ours) {
    std::string list = ours;
    while (!others.empty()) {
        const std::string_view each = others.substr(0, others.find(':'));
        if (!each.empty() && !each.ends_with("/libckscribe-audit.so")) list.append(":").append(each);
        others.remove_prefix(each.size() < others.size() ? each.size() + 1 : each.size());
    }
    return list;
}

std::size_t CountOfVariables() {
    std::size_t count = 0;
    while (environ[count] != nullptr) ++count;
    return count;
}

}  // namespace

std::vector<std::string> EnvironmentOfCommand(const std::string& directory, const std::string& auditLibrary) {
    if (auditLibrary.empty()) return {environ, environ + CountOfVariables()};
    std::vector<std::string> variables;
    std::string_view others;
    for (char** each = environ; *each != nullptr; ++each) {
        const std::string_view entry = *each;
        if (IsVariable(entry, kAuditVariable)) others = entry.substr(sizeof kAuditVariable);
        const bool isOurs = IsVariable(entry, kAuditVariable) || IsVariable(entry, kRunVariable) ||
                            IsVariable(entry, kConfigurationVariable);
        if (!isOurs) variables.emplace_back(entry);
    }
    variables.push_back(std::string(kAuditVariable) + "=" + WithAuditLibrary(others, auditLibrary));
    variables.push_back(std::string(kRunVariable) + "=" + directory);
    variables.push_back(std::string(kConfigurationVariable) + "=" + directory);
    return variables;
}

}  // namespace ckscribe
