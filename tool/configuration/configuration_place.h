// Finds and reads the configuration file that the library reads.
#pragma once

#include <optional>
#include <string>

#include "tool/findings.h"

namespace ckscribe {

// Returns why this word cannot name a configuration on the command line, or an empty text when it can. An
// empty word, for example from a shell variable that is not set, does not stand for the default.
std::string WhyNoPath(const std::string& named);

// Returns the path of the file that was named on the command line, as file or as folder, or else of the file
// that the library finds. With `findings` it says which file it is and why.
std::string ConfigurationPath(const std::string& named, Findings* findings = nullptr);

// Returns the file's text, read as the library reads it. When the library gets no text, it returns nothing
// and adds a finding that says why.
std::optional<std::string> ReadConfiguration(const std::string& path, Findings& findings);

}  // namespace ckscribe
