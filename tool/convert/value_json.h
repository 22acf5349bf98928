// Returns values as JSON, in the form of the children of an event.
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "reader/value.h"

namespace ckscribe {

nlohmann::ordered_json JsonOf(const std::vector<Value>& values);

// Returns one line of JSON, whatever bytes its strings hold.
std::string LineOf(const nlohmann::ordered_json& json);

}  // namespace ckscribe
