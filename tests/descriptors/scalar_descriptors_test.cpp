#include "descriptors/scalar_descriptors.h"

#include <climits>

#include "tests/descriptors/record_test.h"

namespace {

using ScalarDescriptorTest = RecordTest;

constexpr unsigned long kWide =
    0x123456789ABCDEF0;  // its low 32 bits are 0x9abcdef0, -1698898192 with a sign

const void* Address(unsigned long address) { return reinterpret_cast<const void*>(address); }

// ---- Each number in each format ---------------------------------------------------------------------------

struct Row {
    unsigned long value;
    ULongFormat format;
    const char* oldText;
    const char* newText;
};

constexpr Row kULongTable[] = {
    {0, ULongFormat::kDefault, "(0x0)", "0"},
    {0, ULongFormat::kHexadecimal, "(0x0)", "0x0"},
    {0, ULongFormat::kDecimal, "(0)", "0"},
    {5, ULongFormat::kDefault, "(0x5)", "5"},
    {5, ULongFormat::kHexadecimal, "(0x5)", "0x5"},
    {5, ULongFormat::kDecimal, "(5)", "5"},
    {255, ULongFormat::kDefault, "(0xff)", "255"},
    {255, ULongFormat::kHexadecimal, "(0xff)", "0xff"},
    {255, ULongFormat::kDecimal, "(255)", "255"},
    {0x80000000, ULongFormat::kDefault, "(0x80000000)", "2147483648"},
    {0x80000000, ULongFormat::kHexadecimal, "(0x80000000)", "0x80000000"},
    {0x80000000, ULongFormat::kDecimal, "(2147483648)", "2147483648"},
    {0xFFFFFFFF, ULongFormat::kDefault, "(0xffffffff)", "4294967295"},
    {0xFFFFFFFF, ULongFormat::kHexadecimal, "(0xffffffff)", "0xffffffff"},
    {0xFFFFFFFF, ULongFormat::kDecimal, "(4294967295)", "4294967295"},
    {0x100000000, ULongFormat::kDefault, "(0x0)", "4294967296"},
    {0x100000000, ULongFormat::kHexadecimal, "(0x0)", "0x0"},
    {0x100000000, ULongFormat::kDecimal, "(4294967296)", "4294967296"},
    {kWide, ULongFormat::kDefault, "(0x9abcdef0)", "1311768467463790320"},
    {kWide, ULongFormat::kHexadecimal, "(0x9abcdef0)", "0x9abcdef0"},
    {kWide, ULongFormat::kDecimal, "(1311768467463790320)", "1311768467463790320"},
    {ULONG_MAX, ULongFormat::kDefault, "(0xffffffff)", "18446744073709551615"},
    {ULONG_MAX, ULongFormat::kHexadecimal, "(0xffffffff)", "0xffffffff"},
    {ULONG_MAX, ULongFormat::kDecimal, "(18446744073709551615)", "18446744073709551615"},
};

TEST_F(ScalarDescriptorTest, ULongWithAFormat_PrintsInThatFormat) {
    for (const Row& row : kULongTable) {
        EXPECT_EQ(Old<ULongDescriptor>(row.value, nullptr, row.format), std::string("\nULong") + row.oldText);
        EXPECT_EQ(New<ULongDescriptor>(row.value, nullptr, row.format), row.newText);
        EXPECT_EQ(New<ULongDescriptor>(row.value, "len=", row.format), std::string("len=") + row.newText);
        EXPECT_EQ(Old<ULongDescriptor>(row.value, "len=", row.format), std::string("\nULong") + row.oldText);
    }
}

TEST_F(ScalarDescriptorTest, ULongWithoutAFormat_PrintsInTheDefaultFormat) {
    for (const Row& row : kULongTable) {
        if (row.format != ULongFormat::kDefault) continue;
        EXPECT_EQ(Old<ULongDescriptor>(row.value), std::string("\nULong") + row.oldText);
        EXPECT_EQ(New<ULongDescriptor>(row.value), row.newText);
        EXPECT_EQ(Old<SlotIDDescriptor>(row.value), std::string("\nSlotID") + row.oldText);
        EXPECT_EQ(New<SlotIDDescriptor>(row.value), std::string("Slot=") + row.newText);
        EXPECT_EQ(Old<ObjectHandleDescriptor>(row.value), std::string("\nObjectHandle") + row.oldText);
        EXPECT_EQ(New<ObjectHandleDescriptor>(row.value), std::string("Obj=") + row.newText);
        EXPECT_EQ(Old<FlagsDescriptor>(row.value), std::string("\nFlags") + row.oldText);
        EXPECT_EQ(New<FlagsDescriptor>(row.value), std::string("Flgs=") + row.newText);
        EXPECT_EQ(Old<SessionHandleDescriptor>(row.value), std::string("\nSessionHandle") + row.oldText);
        EXPECT_EQ(New<SessionHandleDescriptor>(row.value), std::string("Sesn=") + row.newText);
    }
}

TEST_F(ScalarDescriptorTest, LogFormatChangesAfterwards_DefaultFormatOfANumberStays) {
    UseOldFormat();
    const ULongDescriptor madeInOld(255, "n=");
    UseNewFormat();
    const ULongDescriptor madeInNew(255, "n=");
    EXPECT_EQ(Printed(madeInOld), "n=0xff");
    UseOldFormat();
    EXPECT_EQ(Printed(madeInNew), "\nULong(255)");
}

TEST_F(ScalarDescriptorTest, Address_IsAlwaysHexadecimalAndShowsNoName) {
    for (const char* name : {static_cast<const char*>(nullptr), "pInfo="}) {
        EXPECT_EQ(Old<PtrDescriptor>(Address(0x7FFF1000), name), "\nPointer(0x7fff1000)");
        EXPECT_EQ(New<PtrDescriptor>(Address(0x7FFF1000), name), "Ptr=0x7fff1000");
        EXPECT_EQ(Old<PtrDescriptor>(Address(0), name), "\nPointer(0x0)");
        EXPECT_EQ(New<PtrDescriptor>(Address(0), name), "Ptr=0x0");
        EXPECT_EQ(Old<PtrDescriptor>(Address(0x00007FFCDEADBEEF), name), "\nPointer(0xdeadbeef)");
        EXPECT_EQ(New<PtrDescriptor>(Address(0x00007FFCDEADBEEF), name), "Ptr=0xdeadbeef");
    }
}

struct ShortRow {
    unsigned long value;
    const char* oldText;
    const char* newText;
};

constexpr ShortRow kUShortTable[] = {
    {0, "(0x0)", "0"},
    {1, "(0x1)", "1"},
    {0xFFFF, "(0xffff)", "65535"},
    {0x7FFFFFFF, "(0x7fffffff)", "2147483647"},
    {0x80000000, "(0x80000000)", "-2147483648"},
    {0x8000011C, "(0x8000011c)", "-2147483364"},
    {0xFFFFFFFF, "(0xffffffff)", "-1"},
    {0x100000007, "(0x7)", "7"},
    {kWide, "(0x9abcdef0)", "-1698898192"},
    {ULONG_MAX, "(0xffffffff)", "-1"},
};

TEST_F(ScalarDescriptorTest, UShortInNewFormat_IsSigned) {
    for (const ShortRow& row : kUShortTable) {
        EXPECT_EQ(Old<UShortDescriptor>(row.value), std::string("\nUShort") + row.oldText);
        EXPECT_EQ(New<UShortDescriptor>(row.value), row.newText);
        EXPECT_EQ(New<UShortDescriptor>(row.value, "count="), std::string("count=") + row.newText);
        EXPECT_EQ(Old<MechanismTypeDescriptor>(row.value), std::string("\nMechanismType") + row.oldText);
        EXPECT_EQ(New<MechanismTypeDescriptor>(row.value), row.newText);
        EXPECT_EQ(Old<UserTypeDescriptor>(row.value), std::string("\nUserType") + row.oldText);
        EXPECT_EQ(New<UserTypeDescriptor>(row.value), std::string("User=") + row.newText);
        EXPECT_EQ(Old<PedIdDescriptor>(row.value), std::string("\nUShort") + row.oldText);
        EXPECT_EQ(New<PedIdDescriptor>(row.value), row.newText);
    }
}

TEST_F(ScalarDescriptorTest, Byte_IsHexadecimalAndHasNoType) {
    const auto byte = [](int value) { return static_cast<unsigned char>(value); };
    EXPECT_EQ(Old<ByteDescriptor>(byte(0)), "\nUnknown0x0");
    EXPECT_EQ(New<ByteDescriptor>(byte(0)), "Unknown0x0");
    EXPECT_EQ(Old<ByteDescriptor>(byte(0x0A), "n="), "\nUnknown0xa");
    EXPECT_EQ(New<ByteDescriptor>(byte(0xFF), "n="), "Unknown0xff");
}

TEST_F(ScalarDescriptorTest, Boolean_IsTrueUnlessItIsZero) {
    for (int value = 0; value < 256; ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const std::string text = value != 0 ? "true" : "false";
        EXPECT_EQ(Old<ByteBooleanDescriptor>(byte), "\nByteBoolean" + text);
        EXPECT_EQ(New<ByteBooleanDescriptor>(byte), text);
        EXPECT_EQ(New<ByteBooleanDescriptor>(byte, "tknPresent="), "tknPresent=" + text);
    }
}

TEST_F(ScalarDescriptorTest, ValueIsReplaced_NewValueIsPrinted) {
    UseNewFormat();
    SessionHandleDescriptor session(5);
    session.SetValue(6);
    EXPECT_EQ(Printed(session), "Sesn=6");
    UserTypeDescriptor user(1);
    user.SetValue(0);
    EXPECT_EQ(Printed(user), "User=0");
    ByteBooleanDescriptor boolean(0, "b=");
    boolean.SetValue(2);
    EXPECT_EQ(Printed(boolean), "b=true");
    ByteDescriptor byte(0);
    byte.SetValue(7);
    EXPECT_EQ(Printed(byte), "Unknown0x7");
}

TEST_F(ScalarDescriptorTest, EachDescriptor_HasTheNumberOfItsType) {
    EXPECT_EQ(ULongDescriptor(0).Type(), 22);
    EXPECT_EQ(SlotIDDescriptor(0).Type(), 5);
    EXPECT_EQ(ObjectHandleDescriptor(0).Type(), 6);
    EXPECT_EQ(FlagsDescriptor(0).Type(), 7);
    EXPECT_EQ(SessionHandleDescriptor(0).Type(), 8);
    EXPECT_EQ(PtrDescriptor(nullptr).Type(), 27);
    EXPECT_EQ(UShortDescriptor(0).Type(), 21);
    EXPECT_EQ(MechanismTypeDescriptor(0).Type(), 9);
    EXPECT_EQ(UserTypeDescriptor(0).Type(), 10);
    EXPECT_EQ(PedIdDescriptor(0).Type(), 21);
    EXPECT_EQ(ByteDescriptor(0).Type(), 0);
    EXPECT_EQ(ByteBooleanDescriptor(0).Type(), 11);
}

TEST_F(ScalarDescriptorTest, NumberForAStream_IsFlushed) {
    for (const bool isNew : {false, true}) {
        bUseNewLogFormat.store(isNew);
        const ULongDescriptor number(5);
        const UShortDescriptor shortNumber(5);
        const ByteDescriptor byte(5);
        const ByteBooleanDescriptor boolean(5);
        for (const AbstractDescriptor* scalar : {static_cast<const AbstractDescriptor*>(&number),
                                                 static_cast<const AbstractDescriptor*>(&shortNumber),
                                                 static_cast<const AbstractDescriptor*>(&byte),
                                                 static_cast<const AbstractDescriptor*>(&boolean)}) {
            EXPECT_EQ(FlushedPieces(*scalar), (std::vector<std::string>{Printed(*scalar), "(end)"}));
        }
    }
}

}  // namespace
