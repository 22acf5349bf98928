// The mask of classes and the level decide which calls are logged.
#include "tests/calls/every_function.h"
#include "tests/expected_functions.h"

namespace {

struct NamedClass {
    const char* name;
    int bit;
};
constexpr NamedClass kClasses[] = {
    {"GEN_FUNC", 0x100},          {"SLOT_TOKEN_FUNC", 0x200},  {"SESSION_FUNC", 0x400},
    {"OBJ_MNGMNT_FUNC", 0x800},   {"ENC_DEC_FUNC", 0x1000},    {"DIGEST_FUNC", 0x2000},
    {"SIGN_VERIFY_FUNC", 0x4000}, {"KEY_MNGMNT_FUNC", 0x8000}, {"MISC_FUNC", 0x10000},
    {"QUORVANTH_FUNC", 0x40000},
};

Names LoggedFunctions() {
    return NamesOfExpectedFunctions([](const ExpectedFunction& function) { return function.IsLogged(); });
}
Names FunctionsOfClass(int bit) {
    return NamesOfExpectedFunctions(
        [=](const ExpectedFunction& function) { return function.classBit == bit; });
}
Names FunctionsUpToLevel(int level) {
    return NamesOfExpectedFunctions(
        [=](const ExpectedFunction& function) { return function.IsLogged() && function.level <= level; });
}

Names operator+(Names names, const Names& more) {
    names.insert(names.end(), more.begin(), more.end());
    return names;
}

class ClassMask : public EveryFunction {
protected:
    Names LoggedWithMask(const std::string& mask) {
        Set("LoggingMask", mask);
        return Logged();
    }
};

class Level : public EveryFunction {
protected:
    Names LoggedAtLevel(const std::string& level) {
        Set("LoggingLevel", level);
        return Logged();
    }
};

}  // namespace

TEST_F(ClassMask, MaskOfOneClass_LogsTheFunctionsOfThatClassAndNoOther) {
    for (const auto& [name, bit] : kClasses)
        EXPECT_EQ(Sorted(FunctionsOfClass(bit)), LoggedWithMask(name)) << name;
}

TEST_F(ClassMask, MaskOfTwoClasses_LogsTheFunctionsOfBoth) {
    EXPECT_EQ(Sorted(FunctionsOfClass(0x400) + FunctionsOfClass(0x40000)),
              LoggedWithMask("SESSION_FUNC|QUORVANTH_FUNC"));
}

TEST_F(ClassMask, MaskOfAllClasses_LogsEveryFunction) {
    EXPECT_EQ(Sorted(LoggedFunctions()), LoggedWithMask("ALL_FUNC"));
}

TEST_F(ClassMask, MaskIsAbsent_LogsEveryFunction) { EXPECT_EQ(Sorted(LoggedFunctions()), Logged()); }

TEST_F(ClassMask, MaskWithoutAKnownName_LogsNothing) {
    for (const char* mask : {"", "NONE", "sign_verify_func", "SIGN_VERIFY", "SIGN_VERIFY_FUNC,GEN_FUNC"})
        EXPECT_EQ(Names{}, LoggedWithMask(mask)) << mask;
}

TEST_F(ClassMask, BlanksOrBarsSeparateTheClasses_MaskNamesEachOfThem) {
    const Names both = Sorted(FunctionsOfClass(0x100) + FunctionsOfClass(0x4000));
    for (const char* mask : {"GEN_FUNC|SIGN_VERIFY_FUNC", "GEN_FUNC | SIGN_VERIFY_FUNC",
                             "GEN_FUNC SIGN_VERIFY_FUNC", "||SIGN_VERIFY_FUNC  |unknown| GEN_FUNC "})
        EXPECT_EQ(both, LoggedWithMask(mask)) << mask;
}

TEST_F(Level, NamedLevel_LogsTheFunctionsOfThatLevelAndBelow) {
    EXPECT_EQ(Sorted(FunctionsUpToLevel(1)), LoggedAtLevel("DESTROY"));
    EXPECT_EQ(Sorted(FunctionsUpToLevel(2)), LoggedAtLevel("MODIFY"));
    EXPECT_EQ(Sorted(FunctionsUpToLevel(3)), LoggedAtLevel("ADMIN"));
}

TEST_F(Level, LevelOfAnyOtherName_LogsEveryFunction) {
    for (const char* level : {"admin", "ADMIN ", "0"})
        EXPECT_EQ(Sorted(LoggedFunctions()), LoggedAtLevel(level)) << level;
}

TEST_F(Level, MaskWithoutAFunction_LevelDoesNotLogIt) {
    Set("LoggingMask", "SESSION_FUNC");
    EXPECT_EQ((Names{"C_Login", "C_Logout"}), LoggedAtLevel("ADMIN"));
}

TEST_F(EveryFunction, FunctionThatIsNotLogged_ReturnsTheTargetsResult) {
    Set("LoggingMask", "NONE");
    script.result = 0x80000999;
    for (const std::string& function : Without(kStandardFunctions, {"C_GetFunctionStatus"}))
        EXPECT_EQ(0x80000999u, CallWith(function, 0)) << function;
    for (const std::string& function : Without(kVendorFunctions, {"CA_GetFunctionList"}))
        EXPECT_EQ(0x80000999u, CallWith(function, 0)) << function;
    EXPECT_EQ("", Log());
}
