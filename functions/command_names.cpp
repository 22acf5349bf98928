#include "functions/command_names.h"

#include <array>
#include <cstddef>
#include <iterator>

namespace ckscribe {

namespace {

struct CommandName {
    unsigned type;
    std::string_view name;
};

constexpr CommandName kCommandNames[] = {
#define COMMAND(Name, Number) {Number, #Name},
#include "functions/standard_commands.def"
#define CA_LIST_ROW(Name, Type) {Type, #Name},
#define CA_ROW(Name, Type, ...) {Type, #Name},
#define CA_BARE_ROW(Name, Type, ...) {Type, #Name},
#include "functions/functions.def"
};

constexpr unsigned kHighestType = kCommandNames[std::size(kCommandNames) - 1].type;

// The index of this table is the type. A type without a name has an empty one.
constexpr std::array<std::string_view, kHighestType + 1> kNamesByType = [] {
    std::array<std::string_view, kHighestType + 1> names{};
    for (const CommandName& command : kCommandNames) names[command.type] = command.name;
    return names;
}();

constexpr std::string_view kSpecifierNames[] = {"None", "Init", "Update", "Final", "Key"};
constexpr unsigned kUnknownSpecifier = std::size(kSpecifierNames);
constexpr unsigned kUnknownPhase = 5;

}  // namespace

std::string_view NameOfCommand(CommandType type) {
    const std::string_view name = type <= kHighestType ? kNamesByType[type] : "";
    return !name.empty() ? name : "UnknownType";
}

std::string_view NameOfSpecifier(CommandSpecifier specifier) {
    const auto number = static_cast<std::uint32_t>(specifier);
    return number < std::size(kSpecifierNames) ? kSpecifierNames[number] : "UnknownSpecifier";
}

CommandSpecifier SpecifierOfName(std::string_view name) {
    for (unsigned i = 0; i < std::size(kSpecifierNames); ++i) {
        if (kSpecifierNames[i] == name) return CommandSpecifier{i};
    }
    return CommandSpecifier{kUnknownSpecifier};
}

std::string_view OldFormatNameOfPhase(CommandPhase phase) {
    if (phase == CommandPhase::kStart) return "Start";
    return phase == CommandPhase::kEnd ? "End" : "UnknownPhase";
}

std::string_view NewFormatNameOfPhase(CommandPhase phase) {
    if (phase == CommandPhase::kStart) return "STRT";
    return phase == CommandPhase::kEnd ? "FINI" : "ERR!";
}

CommandPhase PhaseOfOldFormatName(std::string_view name) {
    if (name == "Start") return CommandPhase::kStart;
    if (name == "End") return CommandPhase::kEnd;
    return CommandPhase{kUnknownPhase};
}

}  // namespace ckscribe
