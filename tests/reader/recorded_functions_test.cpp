#include "reader/recorded_functions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ckscribe {
namespace {

std::vector<std::string_view> NamesOf(const PrintedFunction* printed) {
    std::vector<std::string_view> names;
    for (unsigned i = 0; printed != nullptr && i < printed->count; ++i)
        names.push_back(FunctionName(printed->functions[i]));
    return names;
}

using Names = std::vector<std::string_view>;

TEST(RecordedFunctions, PrintedNameFindsItsExportedFunctions) {
    EXPECT_EQ(NamesOf(FindPrinted("Login")), Names{"C_Login"});
    EXPECT_EQ(NamesOf(FindPrinted("Sign")), Names{"C_Sign"});
    EXPECT_EQ(NamesOf(FindPrinted("Sign_Init")), Names{"C_SignInit"});
    EXPECT_EQ(NamesOf(FindPrinted("Digest_Key")), Names{"C_DigestKey"});
    EXPECT_EQ(NamesOf(FindPrinted("DigestEncrypt_Update")), Names{"C_DigestEncryptUpdate"});
    EXPECT_EQ(NamesOf(FindPrinted("FindObjects_Init")), Names{"C_FindObjectsInit"});
    EXPECT_EQ(NamesOf(FindPrinted("GetTSV")), Names{"CA_GetTSV"});
    EXPECT_EQ(NamesOf(FindPrinted("InvokeServiceInit")), Names{"CA_InvokeServiceInit"});
    EXPECT_EQ(NamesOf(FindPrinted("Terminate")), Names{"C_Terminate"});
    EXPECT_EQ(NamesOf(FindPrinted("UnknownType")), Names{"UnknownType"});
    EXPECT_EQ(NamesOf(FindPrinted("GetFunctionList")), Names{"C_GetFunctionList"});
}

TEST(RecordedFunctions, OfFunctionsThatPrintTheSameNameTheStandardsComesFirst) {
    EXPECT_EQ(NamesOf(FindPrinted("FindObjects")), (Names{"C_FindObjects", "C_FindObjectsFinal"}));
    EXPECT_EQ(NamesOf(FindPrinted("OpenSession")), (Names{"C_OpenSession", "CA_OpenSession"}));
    EXPECT_EQ(NamesOf(FindPrinted("GetSessionInfo")), (Names{"C_GetSessionInfo", "CA_GetSessionInfo"}));
    EXPECT_EQ(NamesOf(FindPrinted("WaitForSlotEvent")), (Names{"C_WaitForSlotEvent", "CA_WaitForSlotEvent"}));
}

TEST(RecordedFunctions, WordsOfTheOldFormatFindTheSameFunctionAsTheNameOfTheNewFormat) {
    EXPECT_EQ(FindPrinted("Sign", "Init"), FindPrinted("Sign_Init"));
    EXPECT_EQ(FindPrinted("Login", "None"), FindPrinted("Login"));
    EXPECT_EQ(FindPrinted("Sign_Init", "None"), nullptr);
}

TEST(RecordedFunctions, NameThatNoRecordPrintsIsNotFound) {
    for (const char* const name : {"", "C_Login", "SignInit", "login", "Login_Init", "CA_GetTSV"})
        EXPECT_EQ(FindPrinted(name), nullptr) << name;
}

TEST(RecordedFunctions, NameOfALaterVersionGetsAnIndexOfItsOwn) {
    const FunctionIndex later = FunctionOfName("C_EncapsulateKey");
    EXPECT_EQ(FunctionName(later), "C_EncapsulateKey");
    EXPECT_EQ(FunctionOfName("C_EncapsulateKey"), later);
    EXPECT_NE(FunctionOfName("C_DecapsulateKey"), later);
    EXPECT_LT(IndexOf(later), FunctionCount());
    EXPECT_EQ(FunctionName(FunctionOfName("CA_GetTSV")), "CA_GetTSV");
}

}  // namespace
}  // namespace ckscribe
