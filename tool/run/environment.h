// What the command finds in its environment.
#pragma once

#include <string>
#include <vector>

namespace ckscribe {

// This process's environment ("NAME=value") with run's own variables: the private configuration, and what
// makes the loader ask the audit library. Audit libraries that are there already stay.
// Without an audit library: the environment as it is.
std::vector<std::string> EnvironmentOfCommand(const std::string& directory, const std::string& auditLibrary);

}  // namespace ckscribe
