#include "tests/faults/arguments_of_functions.h"

#include <p11-kit/pkcs11.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>

#include "descriptors/vendor_structures.h"

namespace {

using Kind = ArgumentKind;

struct Row {
    const char* function;
    const char* parameters;  // "(CK_SLOT_ID slotID, CK_SLOT_INFO_PTR pInfo)"
};

constexpr Row kRows[] = {
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) {"C_" #Name, #Parameters},
#define CA_LIST_ROW(Name, Type) {"CA_" #Name, "(CK_FUNCTION_LIST_PTR_PTR ppFunctionList)"},
#define CA_ROW(Name, Type, Class, Level, Parameters) {"CA_" #Name, #Parameters},
#define CA_BARE_ROW(Name, ...) {"CA_" #Name, "()"},
#include "functions/functions.def"
};

// The type of the pointers in kArrays does not say that they are arrays, or their measure is not the next
// argument. A row holds for every function that has both arguments; the first row that fits counts.
struct ArrayRow {
    const char* pointer;
    const char* measure;
    Kind kind;
    const char* lengths = nullptr;
};
constexpr ArrayRow kArrays[] = {
    {"pSlotList", "pulCount", Kind::kOutputWords},
    {"pMechanismList", "pulCount", Kind::kOutputWords},
    {"phObject", "pulObjectCount", Kind::kOutputWords},
    {"RandomData", "ulRandomLen", Kind::kOutputBytes},
    {"pulContainers", "pulCount", Kind::kOutputWords},
    {"pulIds", "pulIdCount", Kind::kOutputWords},
    {"pulValues", "pulValueCount", Kind::kOutputWords},
    {"pulIds", "ulCount", Kind::kInputWords},
    {"pulValues", "ulCount", Kind::kInputWords},
    {"phObjects", "ulCount", Kind::kInputWords},
    {"phObjects", "ulHandleCount", Kind::kInputWords},
    {"phObjects", "pulHandleCount", Kind::kOutputWords},
    {"pBlob", "ulBlobLen", Kind::kInputBytes},
    {"pBlob", "pulBlobLen", Kind::kOutputBytes},
    {"pulSecretLens", "ulSecretCount", Kind::kInputWords},
    {"pulSecretLens", "ulN", Kind::kInputWords},
    {"ppSecrets", "ulSecretCount", Kind::kInputStrings, "pulSecretLens"},
    {"ppSecrets", "ulN", Kind::kInputStrings, "pulSecretLens"},
    {"pulInputLens", "ulInputCount", Kind::kInputWords},
    {"ppInputs", "ulInputCount", Kind::kInputStrings, "pulInputLens"},
    {"pulSignatureLens", "ulInputCount", Kind::kOutputWords},
    {"ppSignatures", "ulInputCount", Kind::kOutputStrings, "pulSignatureLens"},
};

// The bytes in kFixed have no measure and are no input text.
struct FixedRow {
    const char* function;
    const char* pointer;
    Kind kind;
    std::size_t size;
};
constexpr FixedRow kFixed[] = {
    {"C_InitToken", "pLabel", Kind::kInputBytes, 32},
    {"CA_GetConfigurationElementDescription", "pDescription", Kind::kOutputText, 0},
    {"CA_LogGetConfig", "pPath", Kind::kOutputText, 0},
};

const std::set<std::string> kNumberTypes = {"CK_ULONG",         "CK_SESSION_HANDLE", "CK_SLOT_ID",
                                            "CK_OBJECT_HANDLE", "CK_USER_TYPE",      "CK_FLAGS",
                                            "CK_MECHANISM_TYPE"};
const std::set<std::string> kBytesTypes = {"CK_BYTE_PTR", "CK_UTF8CHAR_PTR", "CK_CHAR_PTR"};
const std::map<std::string, std::size_t> kObjectTypes = {
    {"CK_ULONG_PTR", sizeof(CK_ULONG)},
    {"CK_OBJECT_HANDLE_PTR", sizeof(CK_ULONG)},
    {"CK_SESSION_HANDLE_PTR", sizeof(CK_ULONG)},
    {"CK_SLOT_ID_PTR", sizeof(CK_ULONG)},
    {"CK_INFO_PTR", sizeof(CK_INFO)},
    {"CK_SLOT_INFO_PTR", sizeof(CK_SLOT_INFO)},
    {"CK_TOKEN_INFO_PTR", sizeof(CK_TOKEN_INFO)},
    {"CK_SESSION_INFO_PTR", sizeof(CK_SESSION_INFO)},
    {"CK_MECHANISM_INFO_PTR", sizeof(CK_MECHANISM_INFO)},
    {"CA_M_OF_N_STATUS*", sizeof(CA_M_OF_N_STATUS)},
    {"CK_HA_STATUS*", sizeof(CK_HA_STATUS)},
};
const std::map<std::string, Kind> kOtherTypes = {
    {"CK_BBOOL", Kind::kBoolean},           {"CK_VOID_PTR", Kind::kAddress},
    {"CK_NOTIFY", Kind::kAddress},          {"CK_FUNCTION_LIST_PTR_PTR", Kind::kFunctionList},
    {"CK_MECHANISM_PTR", Kind::kMechanism}, {"CK_ATTRIBUTE_PTR", Kind::kTemplate},
};

[[noreturn]] void Fail(const std::string& function, const std::string& what) {
    std::fprintf(stderr, "%s: %s\n", function.c_str(), what.c_str());
    std::abort();
}

struct Parameter {
    std::string type;
    std::string name;
};

std::vector<Parameter> Split(std::string parameters) {
    parameters = parameters.substr(1, parameters.size() - 2);
    std::vector<Parameter> split;
    std::istringstream list(parameters);
    for (std::string text; std::getline(list, text, ',');) {
        std::istringstream words(text);
        Parameter& parameter = split.emplace_back();
        words >> parameter.type >> parameter.name;
    }
    return split;
}

class Reader {
public:
    explicit Reader(const Row& row) : function(row.function), parameters(Split(row.parameters)) {}

    FunctionArguments Read() const {
        FunctionArguments read{function, {}};
        for (std::size_t i = 0; i < parameters.size(); ++i) read.arguments.push_back(ArgumentAt(i));
        for (const Argument& argument : read.arguments) {
            const bool isCounted = argument.kind == Kind::kOutputBytes || argument.kind == Kind::kOutputWords;
            if (!isCounted || argument.measure == Argument::kNone) continue;
            Argument& count = read.arguments[argument.measure];
            if (count.kind == Kind::kOutputObject) count.kind = Kind::kOutputCount;
        }
        return read;
    }

private:
    Argument ArgumentAt(std::size_t i) const {
        const auto& [type, name] = parameters[i];
        Argument argument{name};
        for (const FixedRow& row : kFixed) {
            if (function != row.function || name != row.pointer) continue;
            argument.kind = row.kind;
            argument.size = row.size;
            return argument;
        }
        for (const ArrayRow& row : kArrays) {
            if (name != row.pointer || Find(row.measure) == Argument::kNone) continue;
            argument.kind = row.kind;
            argument.measure = Find(row.measure);
            if (row.lengths != nullptr) argument.lengths = Find(row.lengths);
            return argument;
        }
        if (kNumberTypes.contains(type)) return argument;
        if (kBytesTypes.contains(type)) return BytesAt(i);
        if (const auto object = kObjectTypes.find(type); object != kObjectTypes.end()) {
            argument.kind = Kind::kOutputObject;
            argument.size = object->second;
            return argument;
        }
        const auto other = kOtherTypes.find(type);
        if (other == kOtherTypes.end()) Fail(function, "unknown type " + type);
        argument.kind = other->second;
        if (argument.kind == Kind::kTemplate) argument.measure = i + 1;
        return argument;
    }

    // The length stands behind the bytes. If it is a pointer, the target fills the bytes.
    Argument BytesAt(std::size_t i) const {
        Argument argument{parameters[i].name};
        const std::string next = i + 1 < parameters.size() ? parameters[i + 1].type : "";
        argument.kind = next == "CK_ULONG"       ? Kind::kInputBytes
                        : next == "CK_ULONG_PTR" ? Kind::kOutputBytes
                                                 : Kind::kInputText;
        const bool isLength = !next.empty() && parameters[i + 1].name.ends_with("Len");
        const bool isCount = !next.empty() && parameters[i + 1].name.ends_with("Count");
        if (!isLength && !isCount) argument.kind = Kind::kInputText;
        if (argument.kind != Kind::kInputText) argument.measure = i + 1;
        return argument;
    }

    std::size_t Find(const std::string& name) const {
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            if (parameters[i].name == name) return i;
        }
        return Argument::kNone;
    }

    std::string function;
    std::vector<Parameter> parameters;
};

}  // namespace

std::size_t Argument::ElementSize() const {
    switch (kind) {
        case Kind::kInputWords:
        case Kind::kOutputWords:
        case Kind::kInputStrings:
        case Kind::kOutputStrings:
            return sizeof(CK_ULONG);
        case Kind::kTemplate:
            return sizeof(CK_ATTRIBUTE);
        default:
            return 1;
    }
}

std::size_t FunctionArguments::Index(const std::string& name) const {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i].name == name) return i;
    }
    Fail(function, "no argument " + name);
}

const std::vector<FunctionArguments>& ArgumentsOfFunctions() {
    static const std::vector<FunctionArguments> functions = [] {
        std::vector<FunctionArguments> read;
        for (const Row& row : kRows) read.push_back(Reader(row).Read());
        return read;
    }();
    return functions;
}
