// Makes the environment of the command.
#pragma once

#include <string>
#include <vector>

#include "tool/run/redirection.h"

namespace ckscribe {

// Returns this process's environment ("NAME=value") with the variables that lead to the private directory,
// and with the redirection. Without a redirection it returns the environment unchanged.
std::vector<std::string> EnvironmentOfCommand(const std::string& directory, const Redirection& redirection);

}  // namespace ckscribe
