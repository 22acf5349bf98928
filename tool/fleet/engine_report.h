// Makes the report of `ckscribe report` from the rows of an engine instead of files.
#pragma once

#include <cstdint>

#include "tool/fleet/engine.h"
#include "tool/report_data.h"

namespace ckscribe {

// Returns the report of all calls that began at `since` (nanoseconds since 1970) or later. Every figure
// equals the one that the files of their events give. A log of a host counts as one log. Throws EngineError.
Report ReportFromEngine(Engine& engine, std::uint64_t since);

}  // namespace ckscribe
