// The target's constructor and destructor call functions of the library. A target makes such calls if it is
// itself an application of PKCS#11.

#include <dlfcn.h>

#include <vector>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"

namespace {

using OneWord = CK_RV(TargetWord);

Library* library = nullptr;
std::vector<CK_RV> results;  // of the target's own calls
int loads = 0;

void CallLibrary() {
    CK_FUNCTION_LIST* list = nullptr;
    results.push_back((*library)->C_Logout(41));
    results.push_back((*library)->C_GetFunctionList(&list));
    results.push_back(library->Exported<OneWord>("CA_PerformSelfTest")(42));
    library->Exported<void()>("CkLogSpecialInitialize")();
    library->Finalize();
    results.push_back((*library)->C_Logout(43));
}

const std::vector<CK_RV> kNoneSupported(4, CKR_FUNCTION_NOT_SUPPORTED);

bool IsTargetLoaded() {
    void* const handle = dlopen(SCRIPTED_TARGET, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

CK_RV AnswerWithSession(const char*, const TargetWord* arguments, std::size_t) { return arguments[0] + 1000; }

class TargetThatCallsTheLibrary : public FaultsTest {
protected:
    static void Load() {
        library = new Library;
        targetAnswer = AnswerWithSession;
    }
};

TEST_F(TargetThatCallsTheLibrary, ConstructorCalls_AnswerNotSupportedAndTheStartGoesOn) {
    EXPECT_TRUE(Survives([] {
        Load();
        onTargetLoaded = [] {
            ++loads;
            CallLibrary();
        };
        EXPECT_EQ((*library)->C_Logout(1), 1001U);
        EXPECT_EQ(results, kNoneSupported);
        EXPECT_EQ((*library)->C_Logout(2), 1002U);
        EXPECT_EQ(loads, 1);
        library->Close();
        EXPECT_FALSE(IsTargetLoaded());
    }));
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.remainder, "");
    ASSERT_EQ(log.records.size(), 4U);
    EXPECT_EQ(log.records[0].FirstNumber(), 1U);
    EXPECT_EQ(log.records[2].FirstNumber(), 2U);
}

TEST_F(TargetThatCallsTheLibrary, DestructorCallsDuringAStop_AnswerNotSupportedAndTheStopGoesOn) {
    EXPECT_TRUE(Survives([] {
        Load();
        onTargetLoaded = [] { ++loads; };
        EXPECT_EQ((*library)->C_Logout(1), 1001U);
        onTargetUnloaded = CallLibrary;
        library->Finalize();
        onTargetUnloaded = nullptr;
        EXPECT_EQ(results, kNoneSupported);
        EXPECT_FALSE(IsTargetLoaded());
        EXPECT_EQ(loads, 1);
        EXPECT_EQ((*library)->C_Logout(2), 1002U);
        EXPECT_EQ(loads, 2);
        library->Close();
        EXPECT_FALSE(IsTargetLoaded());
    }));
    EXPECT_EQ(ParseLog(Log()).records.size(), 4U);
}

}  // namespace
