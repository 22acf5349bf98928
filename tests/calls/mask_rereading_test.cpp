// The library reads the mask from the configuration file at every 500th query. A call of a standard function
// makes two queries, one before and one after; a call of a vendor's function makes one.
#include "tests/calls/every_function.h"

namespace {

class MaskRereading : public EveryFunction {
protected:
    void SetMask(const std::string& mask) {
        Set("LoggingMask", mask);
        WriteConfiguration();
    }

    // Makes 2 * `calls` queries.
    void Logout(int calls) {
        for (int i = 0; i < calls; ++i) api.C_Logout(0x51);
    }

    // Returns the text that one call writes.
    std::string LogOfLogout() {
        ClearLog();
        RestartClock();
        Logout(1);
        return Log();
    }

    void SelfTest(int calls) {
        for (int i = 0; i < calls; ++i) CallWith("CA_PerformSelfTest", 0);
    }
    std::string LogOfSelfTest() {
        ClearLog();
        RestartClock();
        SelfTest(1);
        return Log();
    }

    const std::string kStart = WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }");
    const std::string kEnd = WithIds("\n10:15:30 <id>:FINILogout CKR_OK12345clks {}");
};

}  // namespace

TEST_F(MaskRereading, MaskChanges_CountsFromTheNext500thQueryOn) {
    SetMask("SESSION_FUNC");
    Load();
    EXPECT_EQ(kStart + kEnd, LogOfLogout());  // queries 0 and 1
    SetMask("GEN_FUNC");
    Logout(248);
    EXPECT_EQ(kStart + kEnd, LogOfLogout());  // 498 and 499
    EXPECT_EQ("", LogOfLogout());             // 500
    SetMask("SESSION_FUNC");
    Logout(248);
    EXPECT_EQ("", LogOfLogout());             // 998 and 999
    EXPECT_EQ(kStart + kEnd, LogOfLogout());  // 1000
}

TEST_F(MaskRereading, MaskChangesDuringACall_CallHasOneRecord) {
    SetMask("SESSION_FUNC");
    Load();
    CallWith("CA_GetTSV", 0);  // query 0
    Logout(249);
    SetMask("GEN_FUNC");
    EXPECT_EQ(kStart, LogOfLogout());  // 499 and 500
    Logout(249);
    SetMask("SESSION_FUNC");
    EXPECT_EQ(kEnd, LogOfLogout());  // 999 and 1000
}

TEST_F(MaskRereading, MaskChangesDuringACallOfTheVendor_CallHasBothRecordsOrNone) {
    const std::string both = WithIds(R"(

10:15:30 <id>:STRTPerformSelfTest {}
10:15:30 <id>:FINIPerformSelfTest CKR_OK12345clks {})");
    SetMask("QUORVANTH_FUNC");
    Load();
    SelfTest(499);  // queries 0 to 498
    SetMask("GEN_FUNC");
    EXPECT_EQ(both, LogOfSelfTest());  // 499
    EXPECT_EQ("", LogOfSelfTest());    // 500
    SelfTest(498);
    SetMask("QUORVANTH_FUNC");
    EXPECT_EQ("", LogOfSelfTest());    // 999
    EXPECT_EQ(both, LogOfSelfTest());  // 1000
}

TEST_F(MaskRereading, LibraryStartsAgain_CountGoesOn) {
    SetMask("SESSION_FUNC");
    Load();
    Logout(249);  // queries 0 to 497
    SetMask("GEN_FUNC");
    Exported<void()>("CkLogSpecialFinalize")();
    // The start reads the mask whatever the count is.
    EXPECT_EQ("", LogOfLogout());  // 498 and 499
    SetMask("SESSION_FUNC");
    EXPECT_EQ(kStart + kEnd, LogOfLogout());  // 500
}
