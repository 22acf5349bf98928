// Computes the record that a call must give, from the words of the call and the memory that they point to.
#pragma once

#include <p11-kit/pkcs11.h>

#include <array>
#include <string>
#include <vector>

#include "tests/faults/arguments_of_functions.h"
#include "tests/fuzz/call_memory.h"

// A record writes a child's value in one of these shapes.
enum class Shape {
    kNumber,   // hexadecimal in the old format, decimal in the new one
    kHex,      // the low 32 bits
    kDecimal,  // all 64 bits
    kShort,    // the low 32 bits: hexadecimal in the old format, signed decimal in the new one
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

// These read `memory` at once. Ask for the start record before the call, and for the end record after it.
ExpectedRecord ExpectedStart(const FunctionArguments& function, const CallWords& words,
                             const CallMemory& memory);
ExpectedRecord ExpectedEnd(const FunctionArguments& function, const CallWords& words,
                           const CallMemory& memory, CK_RV rv);

// Ends the process with a sentence if a logged function has no row in expected_records.def.
void RequireRowForEachLoggedFunction();
