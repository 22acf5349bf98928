// What the command finds in its environment.
#pragma once

#include <string>
#include <vector>

#include "tool/run/redirection.h"

namespace ckscribe {

// This process's environment ("NAME=value") with run's own variables: what leads to the private directory,
// and the redirection. Without a redirection: the environment as it is.
std::vector<std::string> EnvironmentOfCommand(const std::string& directory, const Redirection& redirection);

}  // namespace ckscribe
