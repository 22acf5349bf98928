#include "descriptors/command_descriptor.h"

#include <array>
#include <iterator>
#include <string_view>

using std::string_view_literals::operator""sv;

namespace {

struct CommandName {
    unsigned type;
    std::string_view name;
};

constexpr CommandName kCommandNames[] = {
    {kInitialize, "Initialize"},
    {kFinalize, "Finalize"},
    {kGetFunctionList, "GetFunctionList"},
    {kTerminate, "Terminate"},
    {kGetInfo, "GetInfo"},
    {kGetSlotList, "GetSlotList"},
    {kGetSlotInfo, "GetSlotInfo"},
    {kGetTokenInfo, "GetTokenInfo"},
    {kGetMechanismList, "GetMechanismList"},
    {kGetMechanismInfo, "GetMechanismInfo"},
    {kWaitForSlotEvent, "WaitForSlotEvent"},
    {kInitToken, "InitToken"},
    {kInitPIN, "InitPIN"},
    {kSetPIN, "SetPIN"},
    {kOpenSession, "OpenSession"},
    {kCloseSession, "CloseSession"},
    {kCloseAllSessions, "CloseAllSessions"},
    {kGetSessionInfo, "GetSessionInfo"},
    {kLogin, "Login"},
    {kLogout, "Logout"},
    {kGetOperationState, "GetOperationState"},
    {kSetOperationState, "SetOperationState"},
    {kCreateObject, "CreateObject"},
    {kCopyObject, "CopyObject"},
    {kDestroyObject, "DestroyObject"},
    {kGetObjectSize, "GetObjectSize"},
    {kGetAttributeValue, "GetAttributeValue"},
    {kSetAttributeValue, "SetAttributeValue"},
    {kFindObjects, "FindObjects"},
    {kEncrypt, "Encrypt"},
    {kDecrypt, "Decrypt"},
    {kDigest, "Digest"},
    {kSign, "Sign"},
    {kSignRecover, "SignRecover"},
    {kVerify, "Verify"},
    {kVerifyRecover, "VerifyRecover"},
    {kGenerateKey, "GenerateKey"},
    {kGenerateKeyPair, "GenerateKeyPair"},
    {kWrapKey, "WrapKey"},
    {kUnwrapKey, "UnwrapKey"},
    {kDeriveKey, "DeriveKey"},
    {kSeedRandom, "SeedRandom"},
    {kGenerateRandom, "GenerateRandom"},
    {kDigestEncrypt, "DigestEncrypt"},
    {kDecryptDigest, "DecryptDigest"},
    {kSignEncrypt, "SignEncrypt"},
    {kDecryptVerify, "DecryptVerify"},
#define CA_LIST_ROW(Name, Type) {Type, #Name},
#define CA_ROW(Name, Type, ...) {Type, #Name},
#define CA_BARE_ROW(Name, Type, ...) {Type, #Name},
#include "functions/functions.def"
};

constexpr unsigned kHighestType = kCommandNames[std::size(kCommandNames) - 1].type;

// Indexed by type; empty where a type has no name.
constexpr std::array<std::string_view, kHighestType + 1> kNamesByType = [] {
    std::array<std::string_view, kHighestType + 1> names{};
    for (const CommandName& command : kCommandNames) names[command.type] = command.name;
    return names;
}();

constexpr std::string_view kSpecifierNames[] = {"None", "Init", "Update", "Final", "Key"};
constexpr unsigned kUnknownSpecifier = std::size(kSpecifierNames);
constexpr unsigned kUnknownPhase = 5;

}  // namespace

std::string_view CommandDescriptor::GetCommandType(CommandType type) {
    const std::string_view name = type <= kHighestType ? kNamesByType[type] : "";
    return !name.empty() ? name : "UnknownType";
}

std::string_view CommandDescriptor::GetCommandSpecifier(CommandSpecifier specifier) {
    return specifier < std::size(kSpecifierNames) ? kSpecifierNames[specifier] : "UnknownSpecifier";
}

CommandSpecifier CommandDescriptor::GetCommandSpecifier(const char* name) {
    for (unsigned i = 0; i < std::size(kSpecifierNames); ++i) {
        if (kSpecifierNames[i] == name) return CommandSpecifier{i};
    }
    return CommandSpecifier{kUnknownSpecifier};
}

std::string_view CommandDescriptor::GetCommandPhase(CommandPhase phase) {
    switch (phase) {
        case kStart:
            return UseNewLogFormat() ? "STRT"sv : "Start"sv;
        case kEnd:
            return UseNewLogFormat() ? "FINI"sv : "End"sv;
    }
    return UseNewLogFormat() ? "ERR!"sv : "UnknownPhase"sv;
}

CommandPhase CommandDescriptor::GetCommandPhase(const char* name) {
    if (name == "Start"sv) return kStart;
    if (name == "End"sv) return kEnd;
    return CommandPhase{kUnknownPhase};
}
