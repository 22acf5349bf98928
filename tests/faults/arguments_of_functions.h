// This file says of each argument of each exported function what a caller or a reader of memory has to know.
// It says what lies behind a pointer, who fills that memory, and which other argument says how much of it
// there is.
//
// The facts come from functions/functions.def: from the types of the parameters, and from their names where a
// type is not enough. A row that cannot be understood ends the process. Therefore every function is covered.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The target fills the buffers of kOutputStrings. `lengths` is the argument with the lengths of the strings
// or buffers of kInputStrings and kOutputStrings. A kOutputCount is the room of a buffer on the way in, and
// what the target has for the buffer on the way out. A kOutputObject is one object of `size` bytes that the
// target fills. The target puts the address of a function list at the place of a kFunctionList.
enum class ArgumentKind {
    kNumber,         // by value; also a length, a count, a handle
    kBoolean,        // by value, one byte of its word
    kAddress,        // a pointer that only the target follows
    kInputBytes,     // bytes that the application fills
    kInputWords,     // an array of words that the application fills
    kInputText,      // bytes up to a terminator
    kInputStrings,   // an array of addresses of byte strings
    kMechanism,      // CK_MECHANISM with its parameter
    kTemplate,       // CK_ATTRIBUTE elements with their values
    kOutputBytes,    // bytes that the target fills
    kOutputWords,    // an array of words that the target fills
    kOutputText,     // bytes up to a terminator that the target fills
    kOutputStrings,  // an array of addresses of buffers
    kOutputCount,    // a word
    kOutputObject,   // a word or a structure
    kFunctionList,   // a place for a list's address
};

struct Argument {
    std::string name;  // as in functions/functions.def
    ArgumentKind kind = ArgumentKind::kNumber;

    // `measure` is the index of the argument that says how many bytes or elements there are (by value, or
    // kOutputCount). It is kNone for a text, and for a fixed number, which `size` then is.
    std::size_t measure = kNone;
    std::size_t lengths = kNone;
    std::size_t size = 0;

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    bool IsPointer() const { return kind != ArgumentKind::kNumber && kind != ArgumentKind::kBoolean; }
    // Returns how many bytes an element of what `measure` counts has.
    std::size_t ElementSize() const;
};

struct FunctionArguments {
    std::string function;  // "C_Login", "CA_GetTime"
    // Functions of the vendor whose records show no argument have none here.
    std::vector<Argument> arguments;

    // Returns the index of an argument. Ends the process if no argument has that name.
    std::size_t Index(const std::string& name) const;
};

// Returns every function of functions/functions.def that the library exports, in that order.
const std::vector<FunctionArguments>& ArgumentsOfFunctions();
