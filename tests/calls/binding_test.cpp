// These tests use targets that lack functions, that cannot be loaded, and that are this library itself.
#include <dlfcn.h>
#include <unistd.h>

#include "tests/calls/every_function.h"
#include "tests/calls/interposing_library.h"

namespace {

// A StandardOutput collects what is written to standard output while the object lives.
class StandardOutput {
public:
    explicit StandardOutput(const std::string& path) : path(path), before(dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        EXPECT_NE(nullptr, std::freopen(path.c_str(), "w", stdout));
    }
    ~StandardOutput() { Restore(); }

    void Restore() {
        if (before < 0) return;
        std::fflush(stdout);
        dup2(before, STDOUT_FILENO);
        close(before);
        before = -1;
    }

private:
    const std::string path;
    int before;
};

class Binding : public EveryFunction {
protected:
    void UseTarget(const std::string& name) { Set("LibUNIX64", TargetNamed(name)); }

    // Returns what the library prints when it starts.
    std::string OutputOfStart() {
        const std::string path = directory.File("stdout");
        StandardOutput output(path);
        Exported<void()>("CkLogSpecialInitialize")();
        output.Restore();
        return Contents(path);
    }

    static std::string Announced(const Names& functions) {
        std::string lines;
        for (const std::string& name : functions) lines += "Failed to load function '" + name + "'.\n";
        return lines;
    }

    // Calls all functions but the two that need arguments. Returns those that get to the target.
    Names Forwarded() {
        script.result = 0x80000999;
        Names forwarded;
        for (const Names& functions :
             {kStandardFunctions, Without(kVendorFunctions, {"CA_GetFunctionList"})}) {
            for (const std::string& function : functions) {
                script.received.clear();
                const CK_RV rv = CallWith(function, 0);
                if (script.received.empty()) {
                    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, rv) << function;
                    continue;
                }
                EXPECT_EQ(0x80000999u, rv) << function;
                EXPECT_EQ(function, script.received.front().function);
                forwarded.push_back(function);
            }
        }
        return forwarded;
    }

    Names EverythingBut(const Names& missing) {
        Names all = kStandardFunctions;
        all.insert(all.end(), kVendorFunctions.begin(), kVendorFunctions.end());
        return Without(Without(all, {"C_GetFunctionStatus", "CA_GetFunctionList"}), missing);
    }

    void ExpectNothingForwarded() {
        EXPECT_EQ("", OutputOfStart());
        EXPECT_EQ(Names{}, Forwarded());
        ClearLog();
        RestartClock();
        api.C_Logout(0x51);
        EXPECT_EQ(WithIds(R"(

10:15:30 <id>:STRTLogout {Sesn=81 }
10:15:30 <id>:FINILogout ***CKR_FUNCTION_NOT_SUPPORTED***12345clks {})"),
                  Log());
    }
};

const Names kDualFunctions = {"C_DigestEncryptUpdate", "C_DecryptDigestUpdate", "C_SignEncryptUpdate",
                              "C_DecryptVerifyUpdate"};

// The library looks up the standard functions in this order.
const Names kBindingOrder = {"C_Initialize",
                             "C_Finalize",
                             "C_GetFunctionList",
                             "C_WaitForSlotEvent",
                             "C_GetInfo",
                             "C_GetSlotList",
                             "C_GetSlotInfo",
                             "C_GetTokenInfo",
                             "C_GetMechanismList",
                             "C_GetMechanismInfo",
                             "C_InitToken",
                             "C_InitPIN",
                             "C_SetPIN",
                             "C_OpenSession",
                             "C_CloseSession",
                             "C_CloseAllSessions",
                             "C_GetSessionInfo",
                             "C_Login",
                             "C_Logout",
                             "C_GetOperationState",
                             "C_SetOperationState",
                             "C_CreateObject",
                             "C_CopyObject",
                             "C_DestroyObject",
                             "C_GetObjectSize",
                             "C_GetAttributeValue",
                             "C_SetAttributeValue",
                             "C_FindObjectsInit",
                             "C_FindObjects",
                             "C_FindObjectsFinal",
                             "C_EncryptInit",
                             "C_Encrypt",
                             "C_EncryptUpdate",
                             "C_EncryptFinal",
                             "C_DecryptInit",
                             "C_Decrypt",
                             "C_DecryptUpdate",
                             "C_DecryptFinal",
                             "C_DigestInit",
                             "C_Digest",
                             "C_DigestUpdate",
                             "C_DigestKey",
                             "C_DigestFinal",
                             "C_SignInit",
                             "C_Sign",
                             "C_SignUpdate",
                             "C_SignFinal",
                             "C_SignRecoverInit",
                             "C_SignRecover",
                             "C_VerifyInit",
                             "C_Verify",
                             "C_VerifyUpdate",
                             "C_VerifyFinal",
                             "C_VerifyRecoverInit",
                             "C_VerifyRecover",
                             "C_GenerateKey",
                             "C_GenerateKeyPair",
                             "C_WrapKey",
                             "C_UnwrapKey",
                             "C_DeriveKey",
                             "C_SeedRandom",
                             "C_GenerateRandom",
                             "C_CancelFunction",
                             "C_DigestEncryptUpdate",
                             "C_DecryptDigestUpdate",
                             "C_SignEncryptUpdate",
                             "C_DecryptVerifyUpdate"};

}  // namespace

TEST_F(Binding, TargetHasEveryFunction_AllButFunctionStatusAreForwarded) {
    EXPECT_EQ("", OutputOfStart());
    EXPECT_EQ(EverythingBut({}), Forwarded());
}

TEST_F(Binding, TargetLacksOneFunction_ItIsAnnouncedAndTheOthersAreForwarded) {
    UseTarget("scripted_target_without_self_test");
    EXPECT_EQ("Failed to load function 'CA_PerformSelfTest'.\n", OutputOfStart());
    EXPECT_EQ(EverythingBut({"CA_PerformSelfTest"}), Forwarded());
}

TEST_F(Binding, TargetLacksTheCalledFunction_CallIsLoggedWithItsResult) {
    UseTarget("scripted_target_without_self_test");
    OutputOfStart();
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, CallWith("CA_PerformSelfTest", 0));
    EXPECT_EQ(WithIds(R"(

10:15:30 <id>:STRTPerformSelfTest {}
10:15:30 <id>:FINIPerformSelfTest ***CKR_FUNCTION_NOT_SUPPORTED***12345clks {})"),
              Log());
}

TEST_F(Binding, TargetLacksDualFunctions_TheyAreAnnounced) {
    UseTarget("scripted_target_without_dual_functions");
    EXPECT_EQ(Announced(kDualFunctions), OutputOfStart());
    EXPECT_EQ(EverythingBut(kDualFunctions), Forwarded());
}

TEST_F(Binding, TargetLacksEveryFunction_TheyAreAnnouncedInTheOrderOfTheirLookUp) {
    UseTarget("scripted_target_without_functions");
    EXPECT_EQ(Announced(kBindingOrder) + Announced(kVendorFunctions), OutputOfStart());
    EXPECT_EQ(Names{}, Forwarded());
    EXPECT_EQ(1, script.loads);
}

TEST_F(Binding, TargetIsMissing_NothingIsForwarded) {
    Set("LibUNIX64", directory.File("nothing.so"));
    ExpectNothingForwarded();
}

TEST_F(Binding, TargetIsNoLibrary_NothingIsForwarded) {
    WriteFile(directory.File("text.so"), "This is no library.");
    Set("LibUNIX64", directory.File("text.so"));
    ExpectNothingForwarded();
}

TEST_F(Binding, TargetIsThisLibrary_NothingIsForwarded) {
    Set("LibUNIX64", kLibraryPath);
    ExpectNothingForwarded();
}

TEST_F(Binding, TargetIsALinkToThisLibrary_NothingIsForwarded) {
    std::filesystem::create_symlink(kLibraryPath, directory.File("link.so"));
    Set("LibUNIX64", directory.File("link.so"));
    ExpectNothingForwarded();
}

TEST_F(Binding, TargetIsACopiedLinkToThisLibrary_NothingIsForwarded) {
    std::filesystem::create_symlink(kLibraryPath, directory.File("link.so"));
    std::filesystem::create_directory(directory.File("other"));
    std::filesystem::copy_symlink(directory.File("link.so"), directory.File("other/copy.so"));
    std::filesystem::create_symlink(directory.File("other/copy.so"), directory.File("link to copy.so"));
    Set("LibUNIX64", directory.File("link to copy.so"));
    ExpectNothingForwarded();
}

TEST_F(Binding, TargetIsAHardLinkToThisLibrary_NothingIsForwarded) {
    // The link lies beside the library: the temporary directory may be on another file system.
    const std::string link = std::string(kLibraryPath) + ".link-" + std::to_string(getpid());
    std::filesystem::create_hard_link(kLibraryPath, link);
    Set("LibUNIX64", link);
    ExpectNothingForwarded();
    std::filesystem::remove(link);
}

// The copy is a library of its own: it is loaded, reads the same configuration, and finds itself.
TEST_F(Binding, TargetIsACopyOfThisLibrary_CallEndsInTheCopy) {
    std::filesystem::copy_file(kLibraryPath, directory.File("copy.so"));
    Set("LibUNIX64", directory.File("copy.so"));
    Load();
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, api.C_Logout(0x51));
    EXPECT_EQ(WithIds(R"(

10:15:30 <id>:STRTLogout {Sesn=81 }

10:15:30 <id>:STRTLogout {Sesn=81 }
10:15:30 <id>:FINILogout ***CKR_FUNCTION_NOT_SUPPORTED***12345clks {}
10:15:30 <id>:FINILogout ***CKR_FUNCTION_NOT_SUPPORTED***12595clks {})"),
              Log());
}

// The loader looks for the functions that this target lacks, and finds them in this library.
TEST_F(Binding, TargetDependsOnThisLibrary_NoFunctionOfThisLibraryIsBound) {
    UseTarget("scripted_target_on_top_of_library");
    EXPECT_EQ("Failed to load function 'C_Sign'.\nFailed to load function 'CA_PerformSelfTest'.\n",
              OutputOfStart());
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, CallWith("C_Sign", 0));
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, CallWith("CA_PerformSelfTest", 0));
    EXPECT_EQ(EverythingBut({"C_Sign", "CA_PerformSelfTest"}), Forwarded());
    // The two libraries hold each other until this one lets its target go.
    Exported<void()>("CkLogSpecialFinalize")();
}

TEST_F(Binding, TargetExportsItsFunctions_ItsListIsNotAskedFor) {
    UseTarget("scripted_target_without_self_test");
    OutputOfStart();
    EXPECT_EQ(0u, script.received.size());
}

TEST_F(Binding, TargetExportsOnlyItsList_FunctionsOfTheListAreForwarded) {
    UseTarget("scripted_target_that_exports_its_list");
    EXPECT_EQ("", OutputOfStart());
    EXPECT_EQ(EverythingBut({}), Forwarded());
    EXPECT_EQ("", Errors());
}

// The loader looks for the functions that this target lacks, and finds them in the library that it depends
// on.
TEST_F(Binding, TargetExportsOnlyItsListAndDependsOnAnotherPkcs11Library_FunctionsOfTheListAreForwarded) {
    UseTarget("scripted_target_that_exports_its_list_and_has_a_dependency");
    EXPECT_EQ("", OutputOfStart());
    EXPECT_EQ(EverythingBut({}), Forwarded());
    EXPECT_EQ("", Errors());
}

TEST_F(Binding, TargetExportsItsListAndOneFunction_OthersAreMissing) {
    UseTarget("scripted_target_that_exports_its_list_and_logout");
    const Names missing = Without(kBindingOrder, {"C_GetFunctionList", "C_Logout"});
    EXPECT_EQ(Announced(missing), OutputOfStart());
    EXPECT_EQ(EverythingBut(missing), Forwarded());
}

// The application holds the target, so that it keeps the list that this library has overwritten.
TEST_F(Binding, TargetExportsOnlyItsListAndOutlivesAStop_ItsOwnFunctionsAreFoundAgain) {
    UseTarget("scripted_target_that_exports_its_list");
    void* const target = dlopen(TargetNamed("scripted_target_that_exports_its_list").c_str(), RTLD_NOW);
    Load();
    CK_FUNCTION_LIST* list = nullptr;
    for (int starts = 0; starts < 3; ++starts) {
        script.result = CKR_OK;
        EXPECT_EQ(CKR_OK, api.C_GetFunctionList(&list));
        EXPECT_EQ(reinterpret_cast<void*>(api.C_Logout), reinterpret_cast<void*>(list->C_Logout));
        EXPECT_EQ(EverythingBut({}), Forwarded());
        script.result = CKR_OK;
        Exported<void()>("CkLogSpecialFinalize")();
    }
    EXPECT_EQ("", OutputOfStart());
    Exported<void()>("CkLogSpecialFinalize")();
    dlclose(target);
}

TEST_F(Binding, TargetExportsOnlyItsListAndOutlivesThisLibrary_NextLoadBindsItsOwnFunctions) {
    UseTarget("scripted_target_that_exports_its_list");
    void* const target = dlopen(TargetNamed("scripted_target_that_exports_its_list").c_str(), RTLD_NOW);
    for (int loads = 0; loads < 2; ++loads) {
        script.result = CKR_OK;
        Load();
        CK_FUNCTION_LIST* list = nullptr;
        EXPECT_EQ(CKR_OK, api.C_GetFunctionList(&list));
        EXPECT_EQ(EverythingBut({}), Forwarded());
        Unload();
    }
    dlclose(target);
}

// ---- Announcements ---------------------------------------------------------------------------------------

TEST_F(Binding, AnnounceIsZero_MissingFunctionsAreNotAnnounced) {
    UseTarget("scripted_target_without_functions");
    for (const char* value : {"0", "0 "}) {
        Set("Announce", value);
        Restart();
        EXPECT_EQ("", OutputOfStart()) << value;
    }
    EXPECT_EQ(CKR_FUNCTION_NOT_SUPPORTED, CallWith("C_Sign", 0));
}

TEST_F(Binding, AnnounceIsAnythingElse_MissingFunctionsAreAnnounced) {
    UseTarget("scripted_target_without_self_test");
    for (const char* value : {"1", "", "no", "00", "-0", "0x0", "false"}) {
        Set("Announce", value);
        Restart();
        EXPECT_EQ("Failed to load function 'CA_PerformSelfTest'.\n", OutputOfStart()) << value;
    }
}

TEST_F(Binding, AnnounceIsTakenAway_NextStartAnnouncesAgain) {
    UseTarget("scripted_target_without_self_test");
    Set("Announce", "0");
    EXPECT_EQ("", OutputOfStart());
    Unset("Announce");
    Restart();
    EXPECT_EQ("Failed to load function 'CA_PerformSelfTest'.\n", OutputOfStart());
}

TEST_F(Binding, FirstCallMissesFunctions_ApplicationSeesNoErrorOfTheLoader) {
    for (const char* target : {"scripted_target_without_functions", "scripted_target_without_self_test"}) {
        UseTarget(target);
        Restart();
        dlerror();
        OutputOfStart();
        EXPECT_EQ(nullptr, dlerror()) << target;
    }
}

// An application may have another library's functions of the same names in its global scope.
TEST_F(Binding, AnotherLibraryExportsTheSameNames_CallsReachTheTargetAllTheSame) {
    void* const other = dlopen(TargetNamed("libinterposing_library").c_str(), RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(nullptr, other) << dlerror();
    ASSERT_EQ(dlsym(other, "C_Sign"), dlsym(RTLD_DEFAULT, "C_Sign"));
    Load();
    CK_FUNCTION_LIST* list = nullptr;
    ASSERT_EQ(CKR_OK, api.C_GetFunctionList(&list));
    EXPECT_NE(dlsym(other, "C_Sign"), reinterpret_cast<void*>(list->C_Sign));
    EXPECT_EQ(ExportedAddress("C_Sign"), reinterpret_cast<void*>(list->C_Sign));
    EXPECT_EQ(EverythingBut({}), Forwarded());

    ClearLog();
    RestartClock();
    script.result = CKR_OK;
    EXPECT_EQ(CKR_OK, list->C_Logout(0x51));
    EXPECT_EQ(WithIds("\n\n10:15:30 <id>:STRTLogout {Sesn=81 }\n10:15:30 <id>:FINILogout CKR_OK12345clks {}"),
              Log());
    Unload();
    dlclose(other);
}
