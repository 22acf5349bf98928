// The library overwrites the function lists of the target. The lists outlive the library, and another thread
// may stop the library while one is asked for.

#include <dlfcn.h>
#include <sys/resource.h>

#include <thread>

#include "tests/faults/application.h"

namespace {

using GetVendorList = CK_RV(void** list);
using OneWord = CK_RV(TargetWord);

// The targets' lists have the order of their headers: the version, and then a pointer for each function.
constexpr std::size_t kPlaceOfVendorFunction = 5;

CK_RV AnswerWithSession(const char*, const TargetWord* arguments, std::size_t) { return arguments[0] + 1000; }

// A Target is the target as another part of the application has it, loaded before the library or after it.
class Target {
public:
    explicit Target(const char* path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {}
    void* Address(const std::string& name) const { return dlsym(handle, name.c_str()); }

private:
    void* handle;
};

// Returns the functions of a list that are not the target's own.
std::string ForeignFunctionsIn(const CK_FUNCTION_LIST& list, const Target& target) {
    std::string foreign;
#define C_EVERY_ROW(Name, ...) \
    if (reinterpret_cast<void*>(list.C_##Name) != target.Address("C_" #Name)) foreign += "C_" #Name " ";
#include "functions/functions.def"
    return foreign;
}
std::string ForeignFunctionsIn(void* const* vendorList, const Target& target) {
    std::string foreign;
    std::size_t place = 1;
#define CA_EVERY_ROW(Name) \
    if (vendorList[place++] != target.Address("CA_" #Name)) foreign += "CA_" #Name " ";
#include "functions/functions.def"
    return foreign;
}

CK_FUNCTION_LIST* ListOf(Library& library) {
    CK_FUNCTION_LIST* list = nullptr;
    EXPECT_EQ(library->C_GetFunctionList(&list), CKR_OK);
    return list;
}

void** VendorListOf(const Library& library) {
    void* list = nullptr;
    EXPECT_EQ(library.Exported<GetVendorList>("CA_GetFunctionList")(&list), CKR_OK);
    return static_cast<void**>(list);
}

CK_RV ForeignLogout(CK_SESSION_HANDLE) { return 0x4711; }

class FunctionListsOfTarget : public FaultsTest {};

TEST_F(FunctionListsOfTarget, DlcloseGivesEachListBackWhatStoodInIt) {
    EXPECT_TRUE(Survives([] {
        const Target target(SCRIPTED_TARGET);
        Library library;
        CK_FUNCTION_LIST* const list = ListOf(library);
        void** const vendorList = VendorListOf(library);
        EXPECT_NE(ForeignFunctionsIn(*list, target), "");
        EXPECT_NE(ForeignFunctionsIn(vendorList, target), "");
        library.Close();
        EXPECT_EQ(ForeignFunctionsIn(*list, target), "");
        EXPECT_EQ(ForeignFunctionsIn(vendorList, target), "");
        EXPECT_EQ(list->version.minor, kTargetListVersion.minor);
        targetAnswer = AnswerWithSession;
        EXPECT_EQ(list->C_Logout(7), 1007U);
    }));
}

TEST_F(FunctionListsOfTarget, NoFileCanBeOpened_DlcloseGivesEachListBackNevertheless) {
    EXPECT_TRUE(Survives([] {
        const Target target(SCRIPTED_TARGET);
        Library library;
        CK_FUNCTION_LIST* const list = ListOf(library);
        void** const vendorList = VendorListOf(library);
        const rlimit none = {0, 0};
        ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
        library.Close();
        EXPECT_EQ(ForeignFunctionsIn(*list, target), "");
        EXPECT_EQ(ForeignFunctionsIn(vendorList, target), "");
    }));
}

TEST_F(FunctionListsOfTarget, DlcloseLeavesEntriesThatTheApplicationPutThere) {
    EXPECT_TRUE(Survives([] {
        const Target target(SCRIPTED_TARGET);
        Library library;
        CK_FUNCTION_LIST* const list = ListOf(library);
        void** const vendorList = VendorListOf(library);
        list->C_Logout = ForeignLogout;
        vendorList[kPlaceOfVendorFunction] = reinterpret_cast<void*>(ForeignLogout);
        library.Close();
        EXPECT_EQ(ForeignFunctionsIn(*list, target), "C_Logout ");
        EXPECT_EQ(list->C_Logout, ForeignLogout);
        EXPECT_EQ(vendorList[kPlaceOfVendorFunction], reinterpret_cast<void*>(ForeignLogout));
        vendorList[kPlaceOfVendorFunction] = vendorList[kPlaceOfVendorFunction + 1];
        EXPECT_NE(ForeignFunctionsIn(vendorList, target), "");
    }));
}

TEST_F(FunctionListsOfTarget, ListsStayOverwrittenWhileTheLibraryIsOnlyStopped) {
    EXPECT_TRUE(Survives([] {
        const Target target(SCRIPTED_TARGET);
        Library library;
        CK_FUNCTION_LIST* const list = ListOf(library);
        const auto logout = list->C_Logout;
        library.Finalize();
        EXPECT_EQ(list->C_Logout, logout);
        EXPECT_NE(reinterpret_cast<void*>(logout), target.Address("C_Logout"));
        library.Close();
        EXPECT_EQ(ForeignFunctionsIn(*list, target), "");
    }));
}

TEST_F(FunctionListsOfTarget, DlcloseAfterTheTargetIsGoneTouchesNothing) {
    EXPECT_TRUE(Survives([] {
        Library library;
        const CK_FUNCTION_LIST* const list = ListOf(library);
        VendorListOf(library);
        library.Finalize();
        ASSERT_EQ(dlopen(SCRIPTED_TARGET, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the target is still there";
        ASSERT_NE(list, nullptr);
        library.Close();
    }));
}

TEST_F(FunctionListsOfTarget, ListsOfATargetThatIsLoadedAgainAreGivenBack) {
    EXPECT_TRUE(Survives([] {
        Library library;
        for (int round = 0; round < 20; ++round) {
            ListOf(library);
            VendorListOf(library);
            library.Finalize();
        }
        const Target target(SCRIPTED_TARGET);
        const CK_FUNCTION_LIST* const list = ListOf(library);
        void* const* const vendorList = VendorListOf(library);
        library.Close();
        EXPECT_EQ(ForeignFunctionsIn(*list, target), "");
        EXPECT_EQ(ForeignFunctionsIn(vendorList, target), "");
    }));
}

// ---- While another thread stops the library ---------------------------------------------------------------

std::function<void()> whileBehindShield;
thread_local bool isHooked = false;

CK_RV HookThisThread(const char*, const TargetWord*, std::size_t) {
    isHooked = true;
    return CKR_OK;
}

}  // namespace

// The library's host shield calls this when it goes up and when it comes down.
extern "C" int pthread_setcanceltype(int type, int* before) {
    static const auto real = reinterpret_cast<decltype(&pthread_setcanceltype)>(dlsym(RTLD_NEXT, __func__));
    if (isHooked) {
        isHooked = false;
        whileBehindShield();
    }
    return real(type, before);
}

namespace {

class FunctionListDuringAStop : public FaultsTest {
protected:
    // The other thread stops the library between the target's answer and the overwriting of the list.
    static void StopBetween(const Library& library) {
        targetAnswer = HookThisThread;
        whileBehindShield = [&library] {
            targetAnswer = nullptr;
            std::thread([&library] { library.Finalize(); }).join();
        };
    }
};

TEST_F(FunctionListDuringAStop, LibraryIsStoppedWhileAListIsAskedFor_ListIsHandedOutOverwritten) {
    EXPECT_TRUE(Survives([] {
        Library library;
        StopBetween(library);
        const CK_FUNCTION_LIST* const list = ListOf(library);
        ASSERT_EQ(targetAnswer, nullptr) << "the library was not stopped";
        EXPECT_EQ(reinterpret_cast<void*>(list->C_Logout), library.Address("C_Logout"));
        targetAnswer = AnswerWithSession;
        EXPECT_EQ(list->C_Logout(7), 1007U);
    }));
}

TEST_F(FunctionListDuringAStop, LibraryIsStoppedWhileTheVendorListIsAskedFor_ListIsHandedOutOverwritten) {
    EXPECT_TRUE(Survives([] {
        Library library;
        library->C_Logout(1);
        StopBetween(library);
        void* const* const list = VendorListOf(library);
        ASSERT_EQ(targetAnswer, nullptr) << "the library was not stopped";
        EXPECT_EQ(list[1], library.Address("CA_GetFunctionList"));
        targetAnswer = AnswerWithSession;
        EXPECT_EQ(library.Exported<OneWord>("CA_PerformSelfTest")(7), 1007U);
    }));
}

}  // namespace
