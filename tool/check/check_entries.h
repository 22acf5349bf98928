// This part of `ckscribe check` looks at the syntax of a configuration file.
#pragma once

#include "tool/configuration/configuration_text.h"
#include "tool/findings.h"

namespace ckscribe {

// Says which section counts, and why a key of "CkLog2" that stands in the file does not count. check_values.h
// explains the keys that count.
void CheckEntries(const ConfigurationText& text, Findings& findings);

}  // namespace ckscribe
