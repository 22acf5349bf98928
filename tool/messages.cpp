#include "tool/messages.h"

#include <fmt/core.h>

#include <cstdio>

namespace ckscribe {

void Say(std::string_view text) { fmt::print(stderr, "ckscribe: {}\n", text); }

}  // namespace ckscribe
