// Which function a record is about, which part of it, and which end of the call.
//
// The numbers are part of the log's format and never change.
#pragma once

#include <cstdint>

namespace ckscribe {

// kXxx: a command of the standard. The vendor's commands have their numbers in functions/functions.def.
enum CommandType : std::uint32_t {
#define COMMAND(Name, Number) k##Name = Number,
#define UNNAMED_COMMAND COMMAND
#include "functions/standard_commands.def"
};

// The parts of an operation that takes several calls: C_EncryptInit, C_EncryptUpdate, C_EncryptFinal,
// C_DigestKey.
enum CommandSpecifier : std::uint32_t {
    kSinglePart = 0,
    kInitPart = 1,
    kUpdatePart = 2,
    kFinalPart = 3,
    kKeyPart = 4,
};

enum CommandPhase : std::uint32_t { kStartPhase = 0, kEndPhase = 1 };

}  // namespace ckscribe

using ckscribe::CommandPhase;
using ckscribe::CommandSpecifier;
using ckscribe::CommandType;
