// Each kind of child prints with its label and its format.

#include "records/record_children.h"

#include <memory>

#include "tests/descriptors/record_test.h"
#include "tests/secrets/planted_secret.h"

using namespace ckscribe;

namespace {

using RecordChildrenTest = RecordTest;

struct Texts {
    std::string oldFormat;
    std::string newFormat;
    bool operator==(const Texts&) const = default;
};

// GoogleTest prints this in failures.
std::ostream& operator<<(std::ostream& out, const Texts& texts) {
    return out << "old " << texts.oldFormat << ", new " << texts.newFormat;
}

template <class Make>
Texts TextsOf(const Make& make) {
    UseOldFormat();
    const std::string oldText = Printed(*std::unique_ptr<AbstractDescriptor>(make()));
    UseNewFormat();
    return {oldText, Printed(*std::unique_ptr<AbstractDescriptor>(make()))};
}

#define EXPECT_CHILD(child, oldText, newText) \
    EXPECT_EQ(TextsOf([&] { return child; }), (Texts{"\n" oldText, newText}))

TEST_F(RecordChildrenTest, HandlesAndIdentifiers_PrintWithTheirLabels) {
    EXPECT_CHILD(SessionChild(0x1A), "SessionHandle(0x1a)", "Sesn=26");
    EXPECT_CHILD(SlotChild(0x1B), "SlotID(0x1b)", "Slot=27");
    EXPECT_CHILD(ObjectChild(0x1C), "ObjectHandle(0x1c)", "Obj=28");
    EXPECT_CHILD(UserTypeChild(CKU_SO), "UserType(0x0)", "User=0");
    EXPECT_CHILD(UserTypeChild(0xFFFFFFFF), "UserType(0xffffffff)", "User=-1");
}

TEST_F(RecordChildrenTest, NumbersOfEachKind_PrintInTheirFormat) {
    EXPECT_CHILD(FlagsChild(0x1D), "Flags(0x1d)", "Flgs=29");
    EXPECT_CHILD(BooleanChild(2, "b="), "ByteBooleantrue", "b=true");
    EXPECT_CHILD(BooleanChild(0), "ByteBooleanfalse", "false");
    EXPECT_CHILD(NumberChild(255), "ULong(0xff)", "255");
    EXPECT_CHILD(NumberChild(255, "n="), "ULong(0xff)", "n=255");
    EXPECT_CHILD(DecimalNumberChild(255, "n="), "ULong(255)", "n=255");
    EXPECT_CHILD(HexNumberChild(255, "n="), "ULong(0xff)", "n=0xff");
    EXPECT_CHILD(ShortNumberChild(0xFFFFFFFE, "n="), "UShort(0xfffffffe)", "n=-2");
    EXPECT_CHILD(PedIdChild(0x1E), "UShort(0x1e)", "30");
    EXPECT_CHILD(PointerChild(reinterpret_cast<const void*>(0x7FFF1000), "p="), "Pointer(0x7fff1000)",
                 "Ptr=0x7fff1000");
}

TEST_F(RecordChildrenTest, BytesOfEachKind_PrintInTheirForm) {
    EXPECT_CHILD(BytesChild("ab\n", 3, "l="), "ByteString(RichText\"ab\\a\")", "l=\"ab\\a\"");
    EXPECT_CHILD(BytesChild(nullptr, 3), "ByteString(SimpleText\"<null>\")", "\"<null>\"");
    EXPECT_CHILD(TextChild("ab\n", 3, "l="), "ByteString(3,\"ab\n\")", "l=(3,\"ab\n\")");
    EXPECT_EQ(TextsOf([] { return ValueChild("ab\n", 3, "l="); }),
              (Texts{"Value(RichText\"ab\\a\")", "\"ab\\a\""}));
}

TEST_F(RecordChildrenTest, PinOfAnyValue_PrintsAsItsMask) {
    const std::string secret = PlantedSecret(1);
    EXPECT_CHILD(PinChild(secret.c_str()), "ByteString(SimpleText\"********\")", "PIN=\"********\"");
    EXPECT_CHILD(PinChild("", "Old="), "ByteString(SimpleText\"********\")", "Old=\"********\"");
    EXPECT_CHILD(PinChild(nullptr), "ByteString(SimpleText\"<null>\")", "PIN=\"<null>\"");
    EXPECT_CHILD(PinChild(nullptr, "New="), "ByteString(SimpleText\"<null>\")", "New=\"<null>\"");
    // The PIN is not read.
    EXPECT_CHILD(PinChild(reinterpret_cast<const void*>(8)), "ByteString(SimpleText\"********\")",
                 "PIN=\"********\"");
}

TEST_F(RecordChildrenTest, MechanismsTemplatesAndLists_PrintWhatTheyHold) {
    char id[] = "id";
    CK_ATTRIBUTE attribute = {CKA_ID, id, 2};
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    const CK_ULONG numbers[] = {3, 4};
    EXPECT_CHILD(MechanismChild(&mechanism), "MechanismCKM_RSA_PKCS,Value(SimpleText\"<null>\"))",
                 "Mech=(CKM_RSA_PKCS,\"<null>\")");
    EXPECT_CHILD(MechanismTypeChild(0x80000001), "MechanismType(0x80000001)", "-2147483647");
    EXPECT_CHILD(TemplateChild(&attribute, 1),
                 "AttributeList\n{\n   Attribute(CKA_ID,Value(SimpleText\"id\"));\n}",
                 "AttrList={CKA_ID=\"id\" }");
    EXPECT_CHILD(TemplateWithoutValuesChild(&attribute, 1), "AttributeList\n{\n   Attribute(CKA_ID);\n}",
                 "AttrList={CKA_ID }");
    EXPECT_CHILD(SlotListChild(numbers, 2), "SlotIDList\n{\n   SlotID(0x3);\n   SlotID(0x4);\n}",
                 "SlotLst={Slot=3 Slot=4 }");
    EXPECT_CHILD(MechanismTypeListChild(numbers, 2),
                 "MechTypeList\n{\n   MechanismType(0x3);\n   MechanismType(0x4);\n}", "MechTypeLst={3 4 }");
    EXPECT_CHILD(HandleListChild(numbers, 2),
                 "ObjectHandleList\n{\n   ObjectHandle(0x3);\n   ObjectHandle(0x4);\n}",
                 "ObjHndLst={Obj=3 Obj=4 }");
}

TEST_F(RecordChildrenTest, StructureIsNull_PrintsWithoutValues) {
    EXPECT_CHILD(InfoChild(nullptr), "Info\n{\n}", "Info={}");
    EXPECT_CHILD(SlotInfoChild(nullptr), "SlotInfo\n{\n}", "SlotInfo={}");
    EXPECT_CHILD(TokenInfoChild(nullptr), "TokenInfo\n{\n}", "TokenInfo={}");
    EXPECT_CHILD(SessionInfoChild(nullptr), "SessionInfo(0x0,0x0,0x0,0x0)", "SesInfo=(0,0,0x0,0x0)");
    EXPECT_CHILD(MechanismInfoChild(nullptr), "MechanismInfo(0,0,0x0)", "MechInfo=(0,0,0x0)");
    EXPECT_CHILD(MofNStatusChild(nullptr), "MofNStatusInfo\n{\n}", "MofNStatus={}");
    EXPECT_CHILD(HAStatusChild(nullptr), "HAStatus\n{\n}", "HAStatus{}");
}

TEST_F(RecordChildrenTest, NumberThatCannotBeRead_IsZero) {
    const CK_ULONG number = 77;
    EXPECT_EQ(ValueAt(&number), 77U);
    EXPECT_EQ(ValueAt(static_cast<const CK_ULONG*>(nullptr)), 0U);
    EXPECT_EQ(ValueAt(reinterpret_cast<const CK_ULONG*>(-8)), 0U);
    EXPECT_EQ(ValueAt(reinterpret_cast<const CK_ULONG*>(1)), 0U);
}

TEST_F(RecordChildrenTest, LoggingLevel_SelectsEveryCommandOfThatLevelAndBelow) {
    for (unsigned level = 0; level < 6; ++level) {
        uLoggingLevel.store(level);
        EXPECT_EQ(LevelSelects(kDestroyObject), level >= 1);
        EXPECT_EQ(LevelSelects(kCreateObject), level >= 2);
        EXPECT_EQ(LevelSelects(kLogin), level >= 3);
        EXPECT_EQ(LevelSelects(kSign), level >= 4);
    }
}

}  // namespace
