#include <set>

#include "tests/calls/every_function.h"

// Every standard function of functions/functions.def has a test of its name, which states its records.
TEST(EveryFunctionHasACase, EveryFunctionOfTheList_HasACaseWithItsName) {
    std::set<std::string> cases;
    const testing::UnitTest& program = *testing::UnitTest::GetInstance();
    for (int i = 0; i < program.total_test_suite_count(); ++i) {
        const testing::TestSuite& suite = *program.GetTestSuite(i);
        for (int j = 0; j < suite.total_test_count(); ++j) cases.insert(suite.GetTestInfo(j)->name());
    }
    for (const std::string& function : kStandardFunctions)
        EXPECT_EQ(1u, cases.count(function))
            << function << " has no case. Add TEST_F(RecordedCall, " << function
            << ") with the whole text of its records to the file of its section in tests/calls.";
}
