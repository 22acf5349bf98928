// These numbers say which function a record is about, which part of it, and which end of the call.
//
// The numbers are part of the log's format and never change.
#pragma once

#include <cstdint>

namespace ckscribe {

// kXxx is a command of the standard. The vendor's commands have their numbers in functions/functions.def.
enum CommandType : std::uint32_t {
#define COMMAND(Name, Number) k##Name = Number,
#define UNNAMED_COMMAND COMMAND
#include "functions/standard_commands.def"
};

// A CommandSpecifier is a part of an operation that takes several calls: C_EncryptInit, C_EncryptUpdate,
// C_EncryptFinal, C_DigestKey.
enum class CommandSpecifier : std::uint32_t {
    kSingle = 0,
    kInit = 1,
    kUpdate = 2,
    kFinal = 3,
    kKey = 4,
};

enum class CommandPhase : std::uint32_t { kStart = 0, kEnd = 1 };

}  // namespace ckscribe

using ckscribe::CommandPhase;
using ckscribe::CommandSpecifier;
using ckscribe::CommandType;
