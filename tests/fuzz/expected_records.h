// This file computes the record that a call must give, from the words of the call and the memory that they
// point to.
#pragma once

#include <p11-kit/pkcs11.h>

#include <array>
#include <string>
#include <vector>

#include "tests/faults/arguments_of_functions.h"
#include "tests/fuzz/call_memory.h"

// A record writes a child's value in one of these shapes. A kNumber is hexadecimal in the old format and
// decimal in the new one. A kShort is hexadecimal in the old format and signed decimal in the new one.
enum class Shape {
    kNumber,
    kHex,      // the low 32 bits
    kDecimal,  // all 64 bits
    kShort,    // the low 32 bits
    kBoolean,
    kBytes,
    kValue,      // bytes without a line of their own
    kText,       // bytes with their length
    kMechanism,  // a type and the bytes of its parameter
    kAttribute,  // a type and the bytes of its value
    kType,       // an attribute's type without its value
    kKeySizes,   // smallest, largest, flags
    kSession,    // slot, state, flags, error
    kChildren,
};

struct ExpectedChild {
    Shape shape = Shape::kChildren;
    std::string newLabel;
    std::string oldLabel;
    std::vector<CK_ULONG> numbers = {};
    std::string bytes = {};
    std::vector<ExpectedChild> children = {};
};

struct ExpectedRecord {
    std::string command;    // "Encrypt"
    std::string specifier;  // "Init", or empty
    bool isStart = true;
    CK_RV rv = CKR_OK;
    std::vector<ExpectedChild> children = {};
};

using CallWords = std::array<CK_ULONG, 20>;

// These functions read `memory` at once. Call ExpectedStart before the fuzzed call, and ExpectedEnd after it.
ExpectedRecord ExpectedStart(const FunctionArguments& function, const CallWords& words,
                             const CallMemory& memory);
ExpectedRecord ExpectedEnd(const FunctionArguments& function, const CallWords& words,
                           const CallMemory& memory, CK_RV rv);

// Ends the process with a sentence if a logged function has no row in expected_records.def.
void RequireRowForEachLoggedFunction();
