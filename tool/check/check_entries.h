// What `ckscribe check` says about the syntax of a configuration file.
#pragma once

#include "tool/configuration/configuration_text.h"
#include "tool/findings.h"

namespace ckscribe {

// Tells which section counts, and of each key of "CkLog2" that stands in the file and does not count why it
// does not. What the keys that count mean is told by check_values.h.
void CheckEntries(const ConfigurationText& text, Findings& findings);

}  // namespace ckscribe
