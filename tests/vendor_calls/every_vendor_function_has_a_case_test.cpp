#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

struct LoggedFunction {
    const char* name;
    bool isBare;  // its records show no argument
};

constexpr LoggedFunction kLoggedFunctions[] = {
#define CA_ROW(Name, ...) {"CA_" #Name, false},
#define CA_BARE_ROW(Name, ...) {"CA_" #Name, true},
#include "functions/functions.def"
};

// The tests of the program as "suite.test".
std::set<std::string> Tests() {
    std::set<std::string> tests;
    const testing::UnitTest& program = *testing::UnitTest::GetInstance();
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j)
            tests.insert(std::string(suite.name()) + "." + suite.GetTestInfo(j)->name());
    }
    return tests;
}

// A row of functions/functions.def without a test that states its records in this format fails here.
void ExpectCasesIn(const std::string& format) {
    const std::set<std::string> tests = Tests();
    for (const LoggedFunction& function : kLoggedFunctions) {
        const std::string name = function.name;
        const std::string test = function.isBare
                                     ? "Log/BareVendorRecords.ShowNothingButTheResult/" + name + "_" + format
                                     : "Log/VendorRecords." + name + "/" + format;
        EXPECT_EQ(1u, tests.count(test)) << test;
    }
}

}  // namespace

TEST(EveryVendorFunctionHasACase, InTheNewFormat) { ExpectCasesIn("New"); }
TEST(EveryVendorFunctionHasACase, InTheOldFormat) { ExpectCasesIn("Old"); }
