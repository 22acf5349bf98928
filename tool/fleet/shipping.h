// Brings those calls of events files into an engine that the state does not have yet.
#pragma once

#include <string>
#include <vector>

#include "tool/fleet/engine.h"
#include "tool/fleet/shipping_state.h"

namespace ckscribe {

// Reads the files, inserts the rows of their calls, and moves the state on after each insertion that the
// engine has confirmed. Says what cannot be read, and returns the exit status. Throws EngineError and
// StateError; the state then holds what was done before.
int ShipCalls(const std::vector<std::string>& paths, const std::string& host, ShippingState& state,
              Engine& engine);

}  // namespace ckscribe
