// The functions that a log can have records of, by their exported names ("C_SignInit") and by the names that
// text records print ("Sign" with the specifier "Init").
//
// Any thread may call these at any time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ckscribe {

// A function that is known by name. The numbers have no meaning outside this process.
enum class FunctionIndex : std::uint16_t {};

constexpr std::size_t IndexOf(FunctionIndex function) { return static_cast<std::size_t>(function); }

// What text records print for the functions that they have no name for.
inline constexpr std::string_view kUnknownType = "UnknownType";

// The exported name; "UnknownType" as it stands. Lives as long as the process.
std::string_view FunctionName(FunctionIndex function);

// How many there are at this moment; all indexes are below.
std::size_t FunctionCount();

// The function of an exported name. A name that is new to this library gets an index, too: events of a later
// version can be read. At most 10,000 names; what comes then is "UnknownType".
FunctionIndex FunctionOfName(std::string_view name);

// What a text record prints: "Sign_Init" in the new format's form. Up to three functions print the same.
struct PrintedFunction {
    std::string_view printed;
    FunctionIndex functions[3];  // the standard's first
    unsigned count = 0;
};

// Null for what no record prints.
const PrintedFunction* FindPrinted(std::string_view printed);
// The same from the old format's two words, "Sign" and "Init"; the specifier "None" is none.
const PrintedFunction* FindPrinted(std::string_view command, std::string_view specifier);

}  // namespace ckscribe
