// EveryFunction calls every exported function. Tests use it for behaviour that all functions share.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "tests/calls/library_test.h"

using Names = std::vector<std::string>;

// The names stand in the order of functions/functions.def.
inline const Names kStandardFunctions = {
#define C_EVERY_ROW(Name, ...) "C_" #Name,
#include "functions/functions.def"
};
inline const Names kVendorFunctions = {
#define CA_EVERY_ROW(Name) "CA_" #Name,
#include "functions/functions.def"
};

// No function has more arguments.
using CallWords = std::array<TargetWord, 20>;

class EveryFunction : public LibraryTest {
protected:
    // Calls a function with these words, or this word, for its arguments.
    CK_RV CallWith(const std::string& function, const CallWords& words);
    CK_RV CallWith(const std::string& function, TargetWord word);

    // Returns those of `functions` whose calls write anything into the log.
    Names LoggedOf(const Names& functions);

    // Returns all functions that are logged with the current settings, alphabetically.
    Names Logged();
};

// Returns `names` without those in `others`, in the same order.
Names Without(const Names& names, const Names& others);
Names Sorted(Names names);
