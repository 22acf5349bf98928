// Knows the names of commands, of their parts and of the two ends of a call, as records show them.
//
// Every function is pure, never fails and returns constant text: any thread may call them at any time.
#pragma once

#include <string_view>

#include "functions/command_type.h"

namespace ckscribe {

// Returns the name without "C_" or "CA_", or "UnknownType" for a number without a name.
std::string_view NameOfCommand(CommandType type);

// Returns "None", "Init", "Update", "Final" or "Key", or "UnknownSpecifier" for any other number.
std::string_view NameOfSpecifier(CommandSpecifier specifier);
// Returns the specifier of such a name. The text must match exactly; any other text gives 5.
CommandSpecifier SpecifierOfName(std::string_view name);

// Returns "Start" or "End", or "UnknownPhase" for any other number.
std::string_view OldFormatNameOfPhase(CommandPhase phase);
// Returns "STRT" or "FINI", or "ERR!" for any other number.
std::string_view NewFormatNameOfPhase(CommandPhase phase);
// Returns the phase of a name of the old format. The text must match exactly; any other text gives 5.
CommandPhase PhaseOfOldFormatName(std::string_view name);

}  // namespace ckscribe
