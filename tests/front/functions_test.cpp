// The list of functions and the vendor's table of log entries must agree with the table of expected facts.

#include <gtest/gtest.h>

#include <iterator>
#include <string>
#include <vector>

#include "front/func_entries.h"
#include "functions/command_type.h"
#include "functions/function_classes.h"
#include "records/vendor_records.h"
#include "tests/expected_functions.h"

using namespace ckscribe;

namespace {

struct Row {
    std::string name;
    unsigned type;
    int classBit;
    int level;
    LookUp lookUp;
};

// These are the rows of all functions that are exported, in the list's order.
const std::vector<Row> rows = {
#define C_EVERY_ROW(Name, Type, Class, Level, ...) {"C_" #Name, Type, Class, Level, LookUp::kRequired},
#define C_OPTIONAL_ROW(Name, Type, Class, Level, ...) {"C_" #Name, Type, Class, Level, LookUp::kOptional},
#define C_UNBOUND_ROW(Name, Type, Class, Level, ...) {"C_" #Name, Type, Class, Level, LookUp::kNeverLookedUp},
#define CA_LIST_ROW(Name, Type) {"CA_" #Name, Type, 0, 0, LookUp::kRequired},
#define CA_ROW(Name, Type, Class, Level, ...) {"CA_" #Name, Type, Class, Level, LookUp::kRequired},
#define CA_BARE_ROW CA_ROW
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

TEST(FunctionClasses, FunctionClasses_HaveTheirBits) {
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

TEST(Functions, EachFunction_HasTheExpectedTypeClassLevelAndLookUp) {
    for (const Row& row : rows) {
        const ExpectedFunction* const expected = FindExpectedFunction(row.name);
        if (expected == nullptr) {
            ADD_FAILURE() << HowToExpect(row.name);
            continue;
        }
        EXPECT_EQ(row.type, expected->type) << row.name;
        EXPECT_EQ(row.classBit, expected->classBit) << row.name;
        EXPECT_EQ(row.level, expected->level) << row.name;
        EXPECT_EQ(row.lookUp, expected->lookUp) << row.name;
    }
}

TEST(Functions, Functions_StandInTheExpectedOrder) {
    std::vector<std::string> names;
    for (const Row& row : rows) names.push_back(row.name);
    EXPECT_EQ(names, NamesOfExpectedFunctions([](const ExpectedFunction&) { return true; }))
        << "functions/functions.def and tests/expected_functions.def must name the same functions in one "
           "order.";
}

TEST(FuncEntries, EachEntry_SaysHowItsFunctionIsLogged) {
    for (const VendorRow& row : vendorRows) {
        const ckscribe::FuncEntry& entry = ckscribe::EntryOf(row.type);
        EXPECT_EQ(entry.classBit, row.classBit) << row.name;
        EXPECT_EQ(entry.minLevel, row.minLevel) << row.name;
        EXPECT_EQ(entry.start, row.start) << row.name;
        EXPECT_EQ(entry.end, row.end) << row.name;
    }
}

TEST(FuncEntries, Entries_AreOneForEachTypeOfTheVendor) {
    EXPECT_EQ(std::size(funcEntries), kExpectedFunctions.back().type - ckscribe::kFirstEntryType + 1);
    EXPECT_EQ(ckscribe::kFirstEntryType, 52U);
}

// No call is ever made through these entries.
TEST(FuncEntries, TypeHasNoFunction_EntryHasNoBuilders) {
    for (const unsigned type : {145U, 146U}) {
        EXPECT_EQ(ckscribe::EntryOf(type).classBit, 0x40000);
        EXPECT_EQ(ckscribe::EntryOf(type).minLevel, 4);
        EXPECT_EQ(ckscribe::EntryOf(type).start, nullptr);
        EXPECT_EQ(ckscribe::EntryOf(type).end, nullptr);
    }
}

TEST(FuncEntries, Entries_FollowTheOrderOfTheList) {
    ASSERT_EQ(&ckscribe::EntryOf(vendorRows.front().type), &funcEntries[0]);
    ASSERT_EQ(&ckscribe::EntryOf(vendorRows.back().type), &funcEntries[ckscribe::kFuncEntryCount - 1]);
    for (std::size_t i = 1; i < vendorRows.size(); ++i) {
        EXPECT_GT(&ckscribe::EntryOf(vendorRows[i].type), &ckscribe::EntryOf(vendorRows[i - 1].type))
            << vendorRows[i].name;
    }
}

}  // namespace
