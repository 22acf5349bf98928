// Calls of every exported function, for what holds of all of them alike.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "tests/calls/library_test.h"

using Names = std::vector<std::string>;

// In the order of functions/functions.def.
inline const Names kStandardFunctions = {
#define C_EVERY_ROW(Name, ...) "C_" #Name,
#include "functions/functions.def"
};
inline const Names kVendorFunctions = {
#define CA_EVERY_ROW(Name) "CA_" #Name,
#include "functions/functions.def"
};

// As many words as any function has arguments.
using CallWords = std::array<TargetWord, 20>;

class EveryFunction : public LibraryTest {
protected:
    // Calls a function with these words, or this word, for its arguments.
    CK_RV CallWith(const std::string& function, const CallWords& words);
    CK_RV CallWith(const std::string& function, TargetWord word);

    // The functions among these that write anything into the log when they are called.
    Names LoggedOf(const Names& functions);

    // Those of both lists that are logged with the settings as they are now, alphabetically.
    Names Logged();
};

// `names` without those in `others`, in the same order.
Names Without(const Names& names, const Names& others);
Names Sorted(Names names);
