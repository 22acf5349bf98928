// Says of each argument of each exported function what a caller or a reader of memory has to know: what
// lies behind a pointer, who fills it, and which other argument says how much of it there is.
//
// The source is functions/functions.def: the types of the parameters, and their names where a type is not
// enough. A row that cannot be understood ends the process. Therefore every function is covered.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

enum class ArgumentKind {
    kNumber,         // by value; also a length, a count, a handle
    kBoolean,        // by value, one byte of its word
    kAddress,        // a pointer that only the target follows
    kInputBytes,     // bytes that the application fills
    kInputWords,     // an array of words that the application fills
    kInputText,      // bytes up to a terminator
    kInputStrings,   // an array of addresses of byte strings; `lengths` is the argument with their lengths
    kMechanism,      // CK_MECHANISM with its parameter
    kTemplate,       // CK_ATTRIBUTE elements with their values
    kOutputBytes,    // bytes that the target fills
    kOutputWords,    // an array of words that the target fills
    kOutputText,     // bytes up to a terminator that the target fills
    kOutputStrings,  // an array of addresses of buffers that the target fills, with `lengths` like
                     // kInputStrings
    kOutputCount,    // a word: the room of a buffer on the way in, what the target has for it on the way out
    kOutputObject,   // one object of `size` bytes that the target fills: a word or a structure
    kFunctionList,   // where the target puts the address of a function list
};

struct Argument {
    std::string name;  // as in functions/functions.def
    ArgumentKind kind = ArgumentKind::kNumber;

    // The index of the argument that says how many bytes or elements there are (by value, or kOutputCount);
    // kNone for a fixed number, which `size` is then, or for a text.
    std::size_t measure = kNone;
    std::size_t lengths = kNone;
    std::size_t size = 0;

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    bool IsPointer() const { return kind != ArgumentKind::kNumber && kind != ArgumentKind::kBoolean; }
    // The bytes of an element of what `measure` counts.
    std::size_t ElementSize() const;
};

struct FunctionArguments {
    std::string function;             // "C_Login", "CA_GetTime"
    std::vector<Argument> arguments;  // none for functions of the vendor whose records show no argument

    // Returns the index of an argument. Ends the process when there is none of that name.
    std::size_t Index(const std::string& name) const;
};

// Every function of functions/functions.def that the library exports, in that order.
const std::vector<FunctionArguments>& ArgumentsOfFunctions();
