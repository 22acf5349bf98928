// Finds the functions that a log can have records of, by their exported names ("C_SignInit") and by the names
// that text records print ("Sign" with the specifier "Init").
//
// Any thread may call these at any time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ckscribe {

// A FunctionIndex stands for a function whose name is known. Its number has no meaning outside this process.
enum class FunctionIndex : std::uint16_t {};

constexpr std::size_t IndexOf(FunctionIndex function) { return static_cast<std::size_t>(function); }

// Text records print this for the functions that they have no name for.
inline constexpr std::string_view kUnknownType = "UnknownType";

// Returns the exported name, or "UnknownType". It lives as long as the process.
std::string_view FunctionName(FunctionIndex function);

// Returns the count of functions at this moment. All indexes are smaller.
std::size_t FunctionCount();

// Returns the function of an exported name. A new name gets an index, too: events of a later version can be
// read. After 10,000 new names every further one becomes "UnknownType".
FunctionIndex FunctionOfName(std::string_view name);

// A PrintedFunction is a name that text records print, in the form of the new format: "Sign_Init". Up to
// three functions print the same name.
struct PrintedFunction {
    std::string_view printed;
    FunctionIndex functions[3];  // the standard's first
    unsigned count = 0;
};

// Returns null for a name that no record prints.
const PrintedFunction* FindPrinted(std::string_view printed);
// Does the same for the two words of the old format, "Sign" and "Init". The specifier "None" means that there
// is none.
const PrintedFunction* FindPrinted(std::string_view command, std::string_view specifier);

}  // namespace ckscribe
