// This file reads tests/expected_functions.def, the table of what the tests expect of every exported
// function.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

// A SecretArgument is an argument that no record may show. Arguments are counted from 0.
struct SecretArgument {
    // A kGiven secret is the caller's: the arguments are its address and its length. A kReturned secret is
    // the target's: the arguments are the address of the buffer and the address of its length. A kList has
    // several secrets of the caller's: the arguments are arrays of their addresses and of their lengths, and
    // their number.
    enum Kind {
        kGiven,
        kReturned,
        kList,
    };
    Kind kind;
    std::size_t address;
    std::size_t length;
    std::size_t count;  // only of a list
};

constexpr SecretArgument Given(std::size_t address, std::size_t length) {
    return {SecretArgument::kGiven, address, length, 0};
}
constexpr SecretArgument Returned(std::size_t address, std::size_t length) {
    return {SecretArgument::kReturned, address, length, 0};
}
constexpr SecretArgument List(std::size_t addresses, std::size_t lengths, std::size_t count) {
    return {SecretArgument::kList, addresses, lengths, count};
}

enum class LookUp { kRequired, kOptional, kNeverLookedUp };

struct ExpectedFunction {
    std::string name;  // "C_Sign"
    unsigned type;
    int classBit;
    int level;  // 0: never logged
    LookUp lookUp;
    std::vector<SecretArgument> secrets;

    bool IsOfVendor() const { return name.starts_with("CA_"); }
    bool IsLogged() const { return level != 0; }
};

inline const std::vector<ExpectedFunction> kExpectedFunctions = {
#define FUNCTION(Name, Type, Class, Level, LookUpOfName, ...) \
    {#Name, Type, Class, Level, LookUp::LookUpOfName, {__VA_ARGS__}},
#include "tests/expected_functions.def"
};

// Returns null for a name without a row.
inline const ExpectedFunction* FindExpectedFunction(const std::string& name) {
    const auto row =
        std::find_if(kExpectedFunctions.begin(), kExpectedFunctions.end(),
                     [&name](const ExpectedFunction& function) { return function.name == name; });
    return row == kExpectedFunctions.end() ? nullptr : &*row;
}

// Returns the names of the functions that `wanted` holds for, in the table's order.
template <class Wanted>
std::vector<std::string> NamesOfExpectedFunctions(const Wanted& wanted) {
    std::vector<std::string> names;
    for (const ExpectedFunction& function : kExpectedFunctions) {
        if (wanted(function)) names.push_back(function.name);
    }
    return names;
}

// Says what to do about a function without a row.
inline std::string HowToExpect(const std::string& name) {
    return name + " has no row in tests/expected_functions.def. Add FUNCTION(" + name +
           ", TYPE, CLASS, LEVEL, kRequired) there, at the place that it has in functions/functions.def, "
           "with "
           "the arguments of it that are secrets.";
}
