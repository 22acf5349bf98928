// The list of functions and the table of how each of the vendor's is logged, against what they have to say.

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "front/func_entries.h"
#include "functions/function_classes.h"
#include "records/vendor_records.h"
#include "tests/descriptors/expected_command_names.h"
#include "tests/front/expected_functions.h"

namespace {

struct Row {
    std::string name;
    int classBit;
};

const std::vector<Row> standardRows = {
#define C_EVERY_ROW(Name, Type, Class, ...) {"C_" #Name, Class},
#define C_UNBOUND_ROW(...)
#include "functions/functions.def"
};

const std::vector<Row> unboundRows = {
#define C_UNBOUND_ROW(Name, Type, Class, ...) {"C_" #Name, Class},
#include "functions/functions.def"
};

const std::vector<Row> optionalRows = {
#define C_OPTIONAL_ROW(Name, Type, Class, ...) {"C_" #Name, Class},
#include "functions/functions.def"
};

struct VendorRow {
    std::string name;
    unsigned type;
    int classBit;
    int minLevel;
    void (*start)();
    void (*end)();
};

template <class Builder>
void (*Plain(Builder* builder))() {
    return reinterpret_cast<void (*)()>(builder);
}

const std::vector<VendorRow> vendorRows = {
#define CA_ROW(Name, Type, Class, Level, ...) \
    {"CA_" #Name, Type, Class, Level, Plain(Name##CmdStart), Plain(Name##CmdEnd)},
#define CA_BARE_ROW(Name, Type, Class, Level) \
    {"CA_" #Name, Type, Class, Level, Plain(Name##CmdStart), Plain(Name##CmdEnd)},
#include "functions/functions.def"
};

TEST(FunctionClasses, HaveTheirBits) {
    EXPECT_EQ(GEN_FUNC, 0x100);
    EXPECT_EQ(SLOT_TOKEN_FUNC, 0x200);
    EXPECT_EQ(SESSION_FUNC, 0x400);
    EXPECT_EQ(OBJ_MNGMNT_FUNC, 0x800);
    EXPECT_EQ(ENC_DEC_FUNC, 0x1000);
    EXPECT_EQ(DIGEST_FUNC, 0x2000);
    EXPECT_EQ(SIGN_VERIFY_FUNC, 0x4000);
    EXPECT_EQ(KEY_MNGMNT_FUNC, 0x8000);
    EXPECT_EQ(MISC_FUNC, 0x10000);
    EXPECT_EQ(ALL_FUNC, 0x20000);
    EXPECT_EQ(QUORVANTH_FUNC, 0x40000);
}

TEST(Functions, ThoseOfTheStandardHaveTheirOrderAndClass) {
    ASSERT_EQ(standardRows.size(), std::size(kExpectedStandardFunctions));
    for (std::size_t i = 0; i < standardRows.size(); ++i) {
        EXPECT_EQ(standardRows[i].name, kExpectedStandardFunctions[i].name);
        EXPECT_EQ(standardRows[i].classBit, kExpectedStandardFunctions[i].classBit) << standardRows[i].name;
    }
    ASSERT_EQ(unboundRows.size(), 1U);
    EXPECT_EQ(unboundRows[0].name, "C_GetFunctionStatus");
    EXPECT_EQ(unboundRows[0].classBit, 0x10000);
    ASSERT_EQ(optionalRows.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(optionalRows[i].name, standardRows[63 + i].name);
}

TEST(Functions, ThoseOfTheVendorHaveTheirOrderClassAndLevel) {
    ASSERT_EQ(vendorRows.size(), std::size(kExpectedVendorFunctions));
    for (std::size_t i = 0; i < vendorRows.size(); ++i) {
        const ExpectedVendorFunction& expected = kExpectedVendorFunctions[i];
        EXPECT_EQ(vendorRows[i].name, expected.name);
        EXPECT_EQ(vendorRows[i].classBit, expected.classBit) << expected.name;
        EXPECT_EQ(vendorRows[i].minLevel, expected.minLevel) << expected.name;
    }
}

TEST(Functions, ThoseOfTheVendorHaveTheTypesOfTheirNames) {
    for (const VendorRow& row : vendorRows) {
        bool isKnown = false;
        for (const ExpectedCommandName& expected : kExpectedCommandNames) {
            if (expected.type != row.type) continue;
            EXPECT_EQ(row.name, std::string("CA_") + expected.name);
            isKnown = true;
        }
        EXPECT_TRUE(isKnown) << row.name;
    }
}

TEST(FuncEntries, EachSaysHowItsFunctionIsLogged) {
    for (const VendorRow& row : vendorRows) {
        const FuncEntry& entry = EntryOf(row.type);
        EXPECT_EQ(entry.classBit, row.classBit) << row.name;
        EXPECT_EQ(entry.minLevel, row.minLevel) << row.name;
        EXPECT_EQ(entry.start, row.start) << row.name;
        EXPECT_EQ(entry.end, row.end) << row.name;
    }
}

TEST(FuncEntries, AreOneForEachTypeOfTheVendor) {
    EXPECT_EQ(sizeof funcEntries / sizeof *funcEntries, 228U);
    EXPECT_EQ(kFirstEntryType, 52U);
}

// Calls are never made through these.
TEST(FuncEntries, OfTypesWithoutAFunctionHaveNoBuilders) {
    for (const unsigned type : {145U, 146U}) {
        EXPECT_EQ(EntryOf(type).classBit, 0x40000);
        EXPECT_EQ(EntryOf(type).minLevel, 4);
        EXPECT_EQ(EntryOf(type).start, nullptr);
        EXPECT_EQ(EntryOf(type).end, nullptr);
    }
}

TEST(FuncEntries, FollowTheOrderOfTheList) {
    ASSERT_EQ(&EntryOf(vendorRows.front().type), &funcEntries[0]);
    ASSERT_EQ(&EntryOf(vendorRows.back().type), &funcEntries[kFuncEntryCount - 1]);
    for (std::size_t i = 1; i < vendorRows.size(); ++i) {
        EXPECT_GT(&EntryOf(vendorRows[i].type), &EntryOf(vendorRows[i - 1].type)) << vendorRows[i].name;
    }
}

}  // namespace
