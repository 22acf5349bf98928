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

// Returns the names of the program's tests as "suite.test".
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

// Expects a test for every row of functions/functions.def that states the records in this format.
void ExpectCasesIn(const std::string& format) {
    const std::set<std::string> tests = Tests();
    for (const LoggedFunction& function : kLoggedFunctions) {
        const std::string name = function.name;
        const std::string test =
            function.isBare
                ? "Log/BareVendorRecords.BareFunction_RecordsShowOnlyTheResult/" + name + "_" + format
                : "Log/VendorRecords." + name + "/" + format;
        const std::string howTo =
            function.isBare
                ? "Add it to kBareFunctions in tests/vendor_calls/bare_records_test.cpp."
                : "Add TEST_P(VendorRecords, " + name + ") to the file of its family in tests/vendor_calls.";
        EXPECT_EQ(1u, tests.count(test)) << name << " has no case. " << howTo;
    }
}

}  // namespace

TEST(VendorFunctions, EachHasACaseInTheNewFormat) { ExpectCasesIn("New"); }
TEST(VendorFunctions, EachHasACaseInTheOldFormat) { ExpectCasesIn("Old"); }
