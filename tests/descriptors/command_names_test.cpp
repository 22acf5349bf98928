#include <gtest/gtest.h>

#include <climits>
#include <cstring>
#include <map>
#include <string>

#include "descriptors/command_descriptor.h"
#include "tests/descriptors/expected_command_names.h"
#include "tests/expected_functions.h"

using namespace ckscribe;

namespace {

std::string_view NameOfType(unsigned type) { return CommandDescriptor::GetCommandType(CommandType{type}); }
std::string_view NameOfSpecifier(unsigned specifier) {
    return CommandDescriptor::GetCommandSpecifier(CommandSpecifier{specifier});
}
std::string_view NameOfPhase(unsigned phase) {
    return CommandDescriptor::GetCommandPhase(CommandPhase{phase});
}
unsigned SpecifierOfName(const char* name) {
    return static_cast<unsigned>(CommandDescriptor::GetCommandSpecifier(name));
}
unsigned PhaseOfName(const char* name) {
    return static_cast<unsigned>(CommandDescriptor::GetCommandPhase(name));
}

TEST(CommandNames, EachCommandType_HasItsNameAndNoOtherNumberHasOne) {
    std::map<unsigned, std::string> names;
    for (const ExpectedCommandName& command : kExpectedStandardCommandNames)
        names[command.type] = command.name;
    for (const ExpectedFunction& function : kExpectedFunctions) {
        if (function.IsOfVendor()) names[function.type] = function.name.substr(3);
    }
    for (unsigned type = 0; type < 1000; ++type) {
        const auto found = names.find(type);
        EXPECT_EQ(NameOfType(type), found == names.end() ? "UnknownType" : found->second) << type;
    }
    EXPECT_EQ(NameOfType(UINT_MAX), "UnknownType");
    EXPECT_EQ(NameOfType(1U << 31), "UnknownType");
}

TEST(CommandNames, CommandTypesOfTheStandard_HaveTheirNumbers) {
    EXPECT_EQ(NameOfType(kInitialize), "Initialize");
    EXPECT_EQ(NameOfType(kTerminate), "Terminate");
    EXPECT_EQ(NameOfType(kWaitForSlotEvent), "WaitForSlotEvent");
    EXPECT_EQ(NameOfType(kOpenSession), "OpenSession");
    EXPECT_EQ(NameOfType(kVerifyRecover), "VerifyRecover");
    EXPECT_EQ(NameOfType(kDecryptVerify), "DecryptVerify");
    EXPECT_EQ(kGetFunctionStatus, 44U);
    EXPECT_EQ(kCancelFunction, 45U);
    EXPECT_EQ(kPerformSelfTest, 50U);
}

TEST(CommandNames, NameOfASpecifier_GivesItsNumberBack) {
    const char* const names[] = {"None", "Init", "Update", "Final", "Key"};
    for (unsigned specifier = 0; specifier < 5; ++specifier) {
        EXPECT_EQ(NameOfSpecifier(specifier), names[specifier]);
        EXPECT_EQ(SpecifierOfName(names[specifier]), specifier);
    }
    for (const unsigned specifier : {5U, 6U, 1000U, UINT_MAX}) {
        EXPECT_EQ(NameOfSpecifier(specifier), "UnknownSpecifier");
    }
    for (const char* name : {"", "none", "INIT", "Fin", "Final ", "UnknownSpecifier", "1"}) {
        EXPECT_EQ(SpecifierOfName(name), 5U) << name;
    }
}

TEST(CommandNames, Phase_HasANameInEachFormat) {
    bUseNewLogFormat.store(0);
    EXPECT_EQ(NameOfPhase(0), "Start");
    EXPECT_EQ(NameOfPhase(1), "End");
    for (const unsigned phase : {2U, 5U, UINT_MAX}) EXPECT_EQ(NameOfPhase(phase), "UnknownPhase");
    bUseNewLogFormat.store(1);
    EXPECT_EQ(NameOfPhase(0), "STRT");
    EXPECT_EQ(NameOfPhase(1), "FINI");
    for (const unsigned phase : {2U, 5U, UINT_MAX}) EXPECT_EQ(NameOfPhase(phase), "ERR!");
    bUseNewLogFormat.store(0);
}

TEST(CommandNames, OldNameOfAPhase_GivesItsNumberAndANewNameDoesNot) {
    for (const int format : {0, 1}) {
        bUseNewLogFormat.store(format);
        EXPECT_EQ(PhaseOfName("Start"), 0U);
        EXPECT_EQ(PhaseOfName("End"), 1U);
        for (const char* name : {"STRT", "FINI", "ERR!", "UnknownPhase", "start", "END", "", "End "}) {
            EXPECT_EQ(PhaseOfName(name), 5U) << name;
        }
    }
    bUseNewLogFormat.store(0);
}

}  // namespace
