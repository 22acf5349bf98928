// The names of commands, of their parts and of the two ends of a call, as records show them.
//
// Every function is pure, never fails and returns constant text: any thread may call them at any time.
#pragma once

#include <string_view>

#include "functions/command_type.h"

namespace ckscribe {

// The name without "C_" or "CA_"; "UnknownType" for a number without a name.
std::string_view NameOfCommand(CommandType type);

// "None", "Init", "Update", "Final", "Key"; "UnknownSpecifier" for any other number.
std::string_view NameOfSpecifier(CommandSpecifier specifier);
// The way back, compared exactly; 5 for any other text.
CommandSpecifier SpecifierOfName(std::string_view name);

// "Start", "End"; "UnknownPhase" for any other number.
std::string_view OldFormatNameOfPhase(CommandPhase phase);
// "STRT", "FINI"; "ERR!" for any other number.
std::string_view NewFormatNameOfPhase(CommandPhase phase);
// The way back from a name of the old format, compared exactly; 5 for any other text.
CommandPhase PhaseOfOldFormatName(std::string_view name);

}  // namespace ckscribe
