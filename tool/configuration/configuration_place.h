// Which configuration file the library reads.
#pragma once

#include <optional>
#include <string>

#include "tool/findings.h"

namespace ckscribe {

// Why this cannot name a configuration on the command line; empty when it can. An empty word, such as a
// variable of the shell that is not set, does not stand for the default.
std::string WhyNoPath(const std::string& named);

// The path of the file that was named on the command line, as file or as folder, or else of the one that the
// library finds. With `findings`, tells which it is and why.
std::string ConfigurationPath(const std::string& named, Findings* findings = nullptr);

// The file's text, read as the library reads it. Nothing, and a finding that says why, when nothing comes.
std::optional<std::string> ReadConfiguration(const std::string& path, Findings& findings);

}  // namespace ckscribe
