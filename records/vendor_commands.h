// kCmdXxx is the command type of CA_Xxx.
#pragma once

#include "functions/command_type.h"

namespace ckscribe {

#define CA_ROW(Name, Type, ...) inline constexpr CommandType kCmd##Name{Type};
#define CA_BARE_ROW CA_ROW
#include "functions/functions.def"

}  // namespace ckscribe
