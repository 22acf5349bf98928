// Finds out what a file is for the dynamic loader.
#pragma once

#include <string>

#include "tool/audit/elf_symbols.h"

namespace ckscribe {

// Returns kNone also for a file that cannot be read or loaded.
ModuleKind KindOfModule(const std::string& path);

enum class ProgramKind {
    kDynamic,            // the GNU C library's loader loads it, and asks audit libraries
    kStatic,             // no loader is asked
    kOtherLoader,        // of another C library
    kOtherArchitecture,  // this machine may run it, and its loader cannot load our libraries
    kScript,             // begins with "#!"
    kUnknown,            // not readable, or no program
};

struct Program {
    ProgramKind kind = ProgramKind::kUnknown;
    // `interpreter` is that of a script, or of a program for another loader.
    std::string interpreter;
};

Program ProgramAt(const std::string& path);

}  // namespace ckscribe
