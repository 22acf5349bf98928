// The library hands out lists of functions. They have this library's entry points and the target's version.
#include <algorithm>

#include "tests/calls/every_function.h"

namespace {

using GetVendorList = CK_RV(void** list);

class FunctionList : public EveryFunction {
protected:
    void UseTargetWithConstLists() { Set("LibUNIX64", TargetNamed("scripted_target_with_const_lists")); }

    CK_FUNCTION_LIST* List() {
        Load();
        CK_FUNCTION_LIST* list = nullptr;
        EXPECT_EQ(CKR_OK, api.C_GetFunctionList(&list));
        return list;
    }

    // Returns the vendor's list as words: the version, and then the pointers.
    TargetWord* VendorList() {
        void* list = nullptr;
        EXPECT_EQ(CKR_OK, Exported<GetVendorList>("CA_GetFunctionList")(&list));
        return static_cast<TargetWord*>(list);
    }

    // Returns the functions whose place in the list holds what this library exports under their name.
    Names OwnFunctionsIn(const CK_FUNCTION_LIST& list) {
        Names own;
#define C_EVERY_ROW(Name, ...) \
    if (list.C_##Name == api.C_##Name) own.push_back("C_" #Name);
#include "functions/functions.def"
        return own;
    }
    Names OwnFunctionsIn(const TargetWord* vendorList) {
        Names own;
        for (std::size_t i = 0; i < kVendorFunctions.size(); ++i) {
            const std::string& name = kVendorFunctions[i];
            if (vendorList[i + 1] == reinterpret_cast<TargetWord>(ExportedAddress(name.c_str())))
                own.push_back(name);
        }
        return own;
    }

    static void ExpectVersion(CK_VERSION expected, CK_VERSION version) {
        EXPECT_EQ(expected.major, version.major);
        EXPECT_EQ(expected.minor, version.minor);
    }
    static void ExpectVendorVersion(const TargetWord* vendorList) {
        ExpectVersion(kTargetVendorListVersion, *reinterpret_cast<const CK_VERSION*>(vendorList));
    }
};

}  // namespace

TEST_F(FunctionList, ListIsAskedFor_TargetsListHasEntryPointsOfThisLibrary) {
    Load();
    CK_FUNCTION_LIST* list = nullptr;
    CK_FUNCTION_LIST* targetsList = nullptr;
    script.answer = [&] { targetsList = list; };
    EXPECT_EQ(CKR_OK, api.C_GetFunctionList(&list));
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(targetsList, list);
    EXPECT_EQ(kStandardFunctions, OwnFunctionsIn(*list));
    ExpectVersion(kTargetListVersion, list->version);
}

TEST_F(FunctionList, ListIsAskedForAgain_EntryPointsStay) {
    CK_FUNCTION_LIST* const list = List();
    EXPECT_EQ(list, List());
    EXPECT_EQ(kStandardFunctions, OwnFunctionsIn(*list));
}

TEST_F(FunctionList, CallGoesThroughTheList_IsLogged) {
    CK_FUNCTION_LIST* const list = List();
    ClearLog();
    RestartClock();
    EXPECT_EQ(CKR_OK, list->C_Logout(0x51));
    EXPECT_EQ(WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }\n10:15:30 <id>:FINILogout CKR_OK12345clks {}"),
              Log());
    EXPECT_EQ("C_Logout", script.received.back().function);
}

TEST_F(FunctionList, TargetsListIsReadOnly_CopyIsHandedOut) {
    UseTargetWithConstLists();
    Load();
    CK_FUNCTION_LIST* list = nullptr;
    CK_FUNCTION_LIST* targetsList = nullptr;
    script.answer = [&] { targetsList = list; };
    EXPECT_EQ(CKR_OK, api.C_GetFunctionList(&list));
    ASSERT_NE(nullptr, list);
    EXPECT_NE(targetsList, list);
    EXPECT_EQ(kStandardFunctions, OwnFunctionsIn(*list));
    ExpectVersion(kTargetListVersion, list->version);
    EXPECT_EQ(Names{}, OwnFunctionsIn(*targetsList));
    EXPECT_EQ(list, List());
}

TEST_F(FunctionList, TargetRefusesTheList_ItsListIsUntouched) {
    Load();
    CK_FUNCTION_LIST* list = nullptr;
    script.result = CKR_GENERAL_ERROR;
    EXPECT_EQ(CKR_GENERAL_ERROR, api.C_GetFunctionList(&list));
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(Names{}, OwnFunctionsIn(*list));
    ExpectVersion(kTargetListVersion, list->version);
}

TEST_F(FunctionList, ArgumentIsNull_TargetDecides) {
    Load();
    EXPECT_EQ(CKR_OK, api.C_GetFunctionList(nullptr));
    script.result = CKR_ARGUMENTS_BAD;
    EXPECT_EQ(CKR_ARGUMENTS_BAD, api.C_GetFunctionList(nullptr));
}

TEST_F(FunctionList, TargetGivesNoListInSuccess_NothingIsWritten) {
    Load();
    CK_FUNCTION_LIST* list = nullptr;
    script.answer = [&] { list = nullptr; };
    EXPECT_EQ(CKR_OK, api.C_GetFunctionList(&list));
    EXPECT_EQ(nullptr, list);
}

TEST_F(FunctionList, TargetIsMissing_ListIsRefused) {
    Set("LibUNIX64", directory.File("nothing.so"));
    Load();
    CK_FUNCTION_LIST* list = &api;
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, api.C_GetFunctionList(&list));
    EXPECT_EQ(&api, list);
}

TEST_F(FunctionList, TargetIsLoadedAgain_ItsListGetsEntryPointsAgain) {
    List();
    Restart();
    EXPECT_EQ(kStandardFunctions, OwnFunctionsIn(*List()));
}

TEST_F(FunctionList, VendorsListIsAskedFor_TargetsListHasEntryPointsOfThisLibrary) {
    void* list = nullptr;
    void* targetsList = nullptr;
    script.answer = [&] { targetsList = list; };
    EXPECT_EQ(CKR_OK, Exported<GetVendorList>("CA_GetFunctionList")(&list));
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(targetsList, list);
    EXPECT_EQ(kVendorFunctions, OwnFunctionsIn(static_cast<TargetWord*>(list)));
    ExpectVendorVersion(static_cast<TargetWord*>(list));
}

TEST_F(FunctionList, TargetsVendorListIsReadOnly_CopyIsHandedOut) {
    UseTargetWithConstLists();
    void* list = nullptr;
    void* targetsList = nullptr;
    script.answer = [&] { targetsList = list; };
    EXPECT_EQ(CKR_OK, Exported<GetVendorList>("CA_GetFunctionList")(&list));
    ASSERT_NE(nullptr, list);
    EXPECT_NE(targetsList, list);
    EXPECT_EQ(kVendorFunctions, OwnFunctionsIn(static_cast<TargetWord*>(list)));
    ExpectVendorVersion(static_cast<TargetWord*>(list));
    EXPECT_EQ(Names{}, OwnFunctionsIn(static_cast<TargetWord*>(targetsList)));
    EXPECT_EQ(list, VendorList());
}

TEST_F(FunctionList, VendorsListIsAskedForAgain_EntryPointsStay) {
    TargetWord* const list = VendorList();
    EXPECT_EQ(list, VendorList());
    EXPECT_EQ(kVendorFunctions, OwnFunctionsIn(list));
}

TEST_F(FunctionList, CallGoesThroughTheVendorsList_IsLogged) {
    const TargetWord* const list = VendorList();
    // The version comes first.
    const auto found = std::find(kVendorFunctions.begin(), kVendorFunctions.end(), "CA_PerformSelfTest");
    const auto place = static_cast<std::size_t>(found - kVendorFunctions.begin()) + 1;
    EXPECT_EQ(CKR_OK, reinterpret_cast<CK_RV (*)()>(list[place])());
    EXPECT_EQ(WithIds(R"(

10:15:30 <id>:STRTPerformSelfTest {}
10:15:30 <id>:FINIPerformSelfTest CKR_OK12345clks {})"),
              Log());
    EXPECT_EQ("CA_PerformSelfTest", script.received.back().function);
}

TEST_F(FunctionList, TargetGivesNoVendorListInSuccess_NothingIsWritten) {
    void* list = nullptr;
    script.answer = [&] { list = nullptr; };
    EXPECT_EQ(CKR_OK, Exported<GetVendorList>("CA_GetFunctionList")(&list));
    EXPECT_EQ(nullptr, list);
}

TEST_F(FunctionList, TargetHasNoVendorList_ListIsRefused) {
    Set("LibUNIX64", TargetNamed("scripted_target_without_functions"));
    void* list = this;
    testing::internal::CaptureStdout();  // every function is announced there
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, Exported<GetVendorList>("CA_GetFunctionList")(&list));
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(this, list);
}

TEST_F(FunctionList, TargetIsLoadedAgain_ItsVendorListGetsEntryPointsAgain) {
    VendorList();
    Restart();
    EXPECT_EQ(kVendorFunctions, OwnFunctionsIn(VendorList()));
}

TEST_F(FunctionList, TargetRefusesTheVendorsList_ItsListIsUntouched) {
    void* list = nullptr;
    script.result = CKR_GENERAL_ERROR;
    EXPECT_EQ(CKR_GENERAL_ERROR, Exported<GetVendorList>("CA_GetFunctionList")(&list));
    ASSERT_NE(nullptr, list);
    EXPECT_EQ(Names{}, OwnFunctionsIn(static_cast<TargetWord*>(list)));
    ExpectVendorVersion(static_cast<TargetWord*>(list));
}

TEST_F(FunctionList, VendorsListIsAskedFor_NothingIsLogged) {
    VendorList();
    EXPECT_EQ("", Log());
}

TEST_F(FunctionList, VendorsListIsAskedForWithNull_LibraryDoesNotStart) {
    EXPECT_EQ(0x20u, Exported<GetVendorList>("CA_GetFunctionList")(nullptr));
    EXPECT_EQ(0, script.loads);
    EXPECT_FALSE(std::filesystem::exists(LogPath()));
    VendorList();
    EXPECT_EQ(1, script.loads);
    EXPECT_TRUE(std::filesystem::exists(LogPath()));
}

TEST_F(FunctionList, VendorsListIsAskedForWithNullAfterTheStart_IsRefused) {
    VendorList();
    script.received.clear();
    EXPECT_EQ(0x20u, Exported<GetVendorList>("CA_GetFunctionList")(nullptr));
    EXPECT_EQ(0u, script.received.size());
}
