// Which calls are logged: the mask of classes and the level.
#include <map>

#include "tests/calls/every_function.h"

namespace {

const std::map<std::string, Names> kStandardClasses = {
    {"GEN_FUNC", {"C_Initialize", "C_Finalize", "C_GetInfo", "C_GetFunctionList"}},
    {"SLOT_TOKEN_FUNC",
     {"C_GetSlotList", "C_GetSlotInfo", "C_GetTokenInfo", "C_GetMechanismList", "C_GetMechanismInfo",
      "C_InitToken", "C_InitPIN", "C_SetPIN", "C_WaitForSlotEvent"}},
    {"SESSION_FUNC",
     {"C_OpenSession", "C_CloseSession", "C_CloseAllSessions", "C_GetSessionInfo", "C_GetOperationState",
      "C_SetOperationState", "C_Login", "C_Logout"}},
    {"OBJ_MNGMNT_FUNC",
     {"C_CreateObject", "C_CopyObject", "C_DestroyObject", "C_GetObjectSize", "C_GetAttributeValue",
      "C_SetAttributeValue", "C_FindObjectsInit", "C_FindObjects", "C_FindObjectsFinal"}},
    {"ENC_DEC_FUNC",
     {"C_EncryptInit", "C_Encrypt", "C_EncryptUpdate", "C_EncryptFinal", "C_DecryptInit", "C_Decrypt",
      "C_DecryptUpdate", "C_DecryptFinal", "C_DecryptVerifyUpdate"}},
    {"DIGEST_FUNC",
     {"C_DigestInit", "C_Digest", "C_DigestUpdate", "C_DigestKey", "C_DigestFinal", "C_DigestEncryptUpdate",
      "C_DecryptDigestUpdate"}},
    {"SIGN_VERIFY_FUNC",
     {"C_SignInit", "C_Sign", "C_SignUpdate", "C_SignFinal", "C_SignRecoverInit", "C_SignRecover",
      "C_VerifyInit", "C_Verify", "C_VerifyUpdate", "C_VerifyFinal", "C_VerifyRecoverInit", "C_VerifyRecover",
      "C_SignEncryptUpdate"}},
    {"KEY_MNGMNT_FUNC", {"C_GenerateKey", "C_GenerateKeyPair", "C_WrapKey", "C_UnwrapKey", "C_DeriveKey"}},
    {"MISC_FUNC", {"C_SeedRandom", "C_GenerateRandom", "C_GetFunctionStatus", "C_CancelFunction"}},
};

const Names kVendorSlotFunctions = {
    "CA_InitRolePIN",
    "CA_InitSlotRolePIN",
    "CA_TokenInsert",
    "CA_TokenInsertNoAuth",
    "CA_TokenZeroize",
    "CA_TokenDelete",
    "CA_GetTokenStatus",
    "CA_GetTokenObjectUID",
    "CA_GetTokenObjectHandle",
    "CA_GetTokenStorageInformation",
    "CA_GetUnauthTokenInsertionStatus",
    "CA_DisableUnauthTokenInsertion",
};
const Names kVendorAdministeringFunctions = {"CA_SetRDK", "CA_Zeroize", "CA_FactoryReset"};

// What the class of the vendor's functions holds.
const Names kVendorClass = Without(Without(kVendorFunctions, {"CA_GetFunctionList"}), kVendorSlotFunctions);

const Names kDestroying = {"C_InitToken", "C_InitPIN", "C_DestroyObject"};
const Names kModifying = {"C_CreateObject", "C_CopyObject",      "C_SetAttributeValue",
                          "C_GenerateKey",  "C_GenerateKeyPair", "C_WrapKey",
                          "C_UnwrapKey",    "C_DeriveKey",       "C_CancelFunction"};
const Names kAdministering = {"C_Initialize", "C_Finalize", "C_Login", "C_Logout", "C_SetPIN"};

Names operator+(Names names, const Names& more) {
    names.insert(names.end(), more.begin(), more.end());
    return names;
}

class ClassMask : public EveryFunction {
protected:
    Names LoggedWithMask(const std::string& mask) {
        Set("LoggingMask", mask);
        return Logged();
    }

    // The functions of the standard only.
    Names StandardLoggedWithMask(const std::string& mask) {
        Set("LoggingMask", mask);
        Restart();
        return Sorted(LoggedOf(kStandardFunctions));
    }
};

class Level : public EveryFunction {
protected:
    Names LoggedAtLevel(const std::string& level) {
        Set("LoggingLevel", level);
        return Logged();
    }
};

}  // namespace

TEST_F(ClassMask, ListsHaveTheirFunctions) {
    EXPECT_EQ(68u, kStandardFunctions.size());
    EXPECT_EQ(227u, kVendorFunctions.size());
    std::size_t classified = 0;
    for (const auto& [name, functions] : kStandardClasses) classified += functions.size();
    EXPECT_EQ(68u, classified);
}

TEST_F(ClassMask, SelectsTheStandardFunctionsOfAClass) {
    for (const auto& [name, functions] : kStandardClasses)
        EXPECT_EQ(Sorted(functions), StandardLoggedWithMask(name)) << name;
}

TEST_F(ClassMask, OfMiscellaneousFunctionsSelectsNothingElse) {
    EXPECT_EQ((Names{"C_CancelFunction", "C_GenerateRandom", "C_GetFunctionStatus", "C_SeedRandom"}),
              LoggedWithMask("MISC_FUNC"));
}

TEST_F(ClassMask, OfSlotsSelectsTwelveFunctionsOfTheVendorToo) {
    EXPECT_EQ(Sorted(kStandardClasses.at("SLOT_TOKEN_FUNC") + kVendorSlotFunctions),
              LoggedWithMask("SLOT_TOKEN_FUNC"));
}

TEST_F(ClassMask, OfSessionsAndTheVendor) {
    EXPECT_EQ(Sorted(kStandardClasses.at("SESSION_FUNC") + kVendorClass),
              LoggedWithMask("SESSION_FUNC|QUORVANTH_FUNC"));
}

TEST_F(ClassMask, OfAllClassesSelectsEverything) {
    EXPECT_EQ(Sorted(kStandardFunctions + Without(kVendorFunctions, {"CA_GetFunctionList"})),
              LoggedWithMask("ALL_FUNC"));
}

TEST_F(ClassMask, ThatIsAbsentSelectsEverything) {
    EXPECT_EQ(Sorted(kStandardFunctions + Without(kVendorFunctions, {"CA_GetFunctionList"})), Logged());
}

TEST_F(ClassMask, WithoutAKnownNameSelectsNothing) {
    for (const char* mask : {"", "NONE", "sign_verify_func", "SIGN_VERIFY", "SIGN_VERIFY_FUNC,GEN_FUNC"})
        EXPECT_EQ(Names{}, LoggedWithMask(mask)) << mask;
}

TEST_F(ClassMask, HasNamesBetweenBlanksOrBars) {
    const Names both = Sorted(kStandardClasses.at("GEN_FUNC") + kStandardClasses.at("SIGN_VERIFY_FUNC"));
    for (const char* mask : {"GEN_FUNC|SIGN_VERIFY_FUNC", "GEN_FUNC | SIGN_VERIFY_FUNC",
                             "GEN_FUNC SIGN_VERIFY_FUNC", "||SIGN_VERIFY_FUNC  |unknown| GEN_FUNC "})
        EXPECT_EQ(both, StandardLoggedWithMask(mask)) << mask;
}

TEST_F(Level, DestroyLogsWhatDestroys) { EXPECT_EQ(Sorted(kDestroying), LoggedAtLevel("DESTROY")); }

TEST_F(Level, ModifyLogsWhatChangesObjectsToo) {
    EXPECT_EQ(Sorted(kDestroying + kModifying), LoggedAtLevel("MODIFY"));
}

TEST_F(Level, AdminLogsAdministrationTooAndFifteenFunctionsOfTheVendor) {
    EXPECT_EQ(Sorted(kDestroying + kModifying + kAdministering + kVendorSlotFunctions +
                     kVendorAdministeringFunctions),
              LoggedAtLevel("ADMIN"));
}

TEST_F(Level, OfAnyOtherNameLogsEverything) {
    const Names everything = Sorted(kStandardFunctions + Without(kVendorFunctions, {"CA_GetFunctionList"}));
    EXPECT_EQ(everything, LoggedAtLevel("admin"));
    EXPECT_EQ(everything, LoggedAtLevel("ADMIN "));
    EXPECT_EQ(everything, LoggedAtLevel("0"));
}

TEST_F(Level, DoesNotOverrideTheMask) {
    Set("LoggingMask", "SESSION_FUNC");
    EXPECT_EQ((Names{"C_Login", "C_Logout"}), LoggedAtLevel("ADMIN"));
}

TEST_F(EveryFunction, ReturnsTheTargetsResultWhenItIsNotLogged) {
    Set("LoggingMask", "NONE");
    script.result = 0x80000999;
    for (const std::string& function : Without(kStandardFunctions, {"C_GetFunctionStatus"}))
        EXPECT_EQ(0x80000999u, CallWith(function, 0)) << function;
    for (const std::string& function : Without(kVendorFunctions, {"CA_GetFunctionList"}))
        EXPECT_EQ(0x80000999u, CallWith(function, 0)) << function;
    EXPECT_EQ("", Log());
}
