// What each kind of child prints: the label and the format that a builder gets by naming it.

#include "records/record_children.h"

#include <memory>

#include "tests/descriptors/record_test.h"
#include "tests/secrets/planted_secret.h"

namespace {

using RecordChildrenTest = RecordTest;

struct Texts {
    std::string oldFormat;
    std::string newFormat;
    bool operator==(const Texts&) const = default;
};

// gtest shows it in failures.
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

TEST_F(RecordChildrenTest, WhoACallIsAbout) {
    EXPECT_CHILD(Session(0x1A), "SessionHandle(0x1a)", "Sesn=26");
    EXPECT_CHILD(Slot(0x1B), "SlotID(0x1b)", "Slot=27");
    EXPECT_CHILD(Object(0x1C), "ObjectHandle(0x1c)", "Obj=28");
    EXPECT_CHILD(UserType(CKU_SO), "UserType(0x0)", "User=0");
    EXPECT_CHILD(UserType(0xFFFFFFFF), "UserType(0xffffffff)", "User=-1");
}

TEST_F(RecordChildrenTest, Numbers) {
    EXPECT_CHILD(Flags(0x1D), "Flags(0x1d)", "Flgs=29");
    EXPECT_CHILD(Boolean(2, "b="), "ByteBooleantrue", "b=true");
    EXPECT_CHILD(Boolean(0), "ByteBooleanfalse", "false");
    EXPECT_CHILD(Number(255), "ULong(0xff)", "255");
    EXPECT_CHILD(Number(255, "n="), "ULong(0xff)", "n=255");
    EXPECT_CHILD(DecimalNumber(255, "n="), "ULong(255)", "n=255");
    EXPECT_CHILD(HexNumber(255, "n="), "ULong(0xff)", "n=0xff");
    EXPECT_CHILD(ShortNumber(0xFFFFFFFE, "n="), "UShort(0xfffffffe)", "n=-2");
    EXPECT_CHILD(PedId(0x1E), "UShort(0x1e)", "30");
    EXPECT_CHILD(Pointer(reinterpret_cast<const void*>(0x7FFF1000), "p="), "Pointer(0x7fff1000)",
                 "Ptr=0x7fff1000");
}

TEST_F(RecordChildrenTest, Bytes) {
    EXPECT_CHILD(Bytes("ab\n", 3, "l="), "ByteString(RichText\"ab\\a\")", "l=\"ab\\a\"");
    EXPECT_CHILD(Bytes(nullptr, 3), "ByteString(SimpleText\"<null>\")", "\"<null>\"");
    EXPECT_CHILD(Text("ab\n", 3, "l="), "ByteString(3,\"ab\n\")", "l=(3,\"ab\n\")");
    EXPECT_EQ(TextsOf([] { return Value("ab\n", 3, "l="); }),
              (Texts{"Value(RichText\"ab\\a\")", "\"ab\\a\""}));
}

TEST_F(RecordChildrenTest, APinIsItsMaskOrNothing) {
    const std::string secret = PlantedSecret(1);
    EXPECT_CHILD(Pin(secret.c_str()), "ByteString(SimpleText\"********\")", "PIN=\"********\"");
    EXPECT_CHILD(Pin("", "Old="), "ByteString(SimpleText\"********\")", "Old=\"********\"");
    EXPECT_CHILD(Pin(nullptr), "ByteString(SimpleText\"<null>\")", "PIN=\"<null>\"");
    EXPECT_CHILD(Pin(nullptr, "New="), "ByteString(SimpleText\"<null>\")", "New=\"<null>\"");
    // It is not even looked at.
    EXPECT_CHILD(Pin(reinterpret_cast<const void*>(8)), "ByteString(SimpleText\"********\")",
                 "PIN=\"********\"");
}

TEST_F(RecordChildrenTest, MechanismsTemplatesAndLists) {
    char id[] = "id";
    CK_ATTRIBUTE attribute = {CKA_ID, id, 2};
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    const CK_ULONG numbers[] = {3, 4};
    EXPECT_CHILD(Mechanism(&mechanism), "MechanismCKM_RSA_PKCS,Value(SimpleText\"<null>\"))",
                 "Mech=(CKM_RSA_PKCS,\"<null>\")");
    EXPECT_CHILD(MechanismType(0x80000001), "MechanismType(0x80000001)", "-2147483647");
    EXPECT_CHILD(Template(&attribute, 1),
                 "AttributeList\n{\n   Attribute(CKA_ID,Value(SimpleText\"id\"));\n}",
                 "AttrList={CKA_ID=\"id\" }");
    EXPECT_CHILD(TemplateWithoutValues(&attribute, 1), "AttributeList\n{\n   Attribute(CKA_ID);\n}",
                 "AttrList={CKA_ID }");
    EXPECT_CHILD(SlotList(numbers, 2), "SlotIDList\n{\n   SlotID(0x3);\n   SlotID(0x4);\n}",
                 "SlotLst={Slot=3 Slot=4 }");
    EXPECT_CHILD(MechanismTypeList(numbers, 2),
                 "MechTypeList\n{\n   MechanismType(0x3);\n   MechanismType(0x4);\n}", "MechTypeLst={3 4 }");
    EXPECT_CHILD(HandleList(numbers, 2),
                 "ObjectHandleList\n{\n   ObjectHandle(0x3);\n   ObjectHandle(0x4);\n}",
                 "ObjHndLst={Obj=3 Obj=4 }");
}

TEST_F(RecordChildrenTest, StructuresThatAreNull) {
    EXPECT_CHILD(Info(nullptr), "Info\n{\n}", "Info={}");
    EXPECT_CHILD(SlotInfo(nullptr), "SlotInfo\n{\n}", "SlotInfo={}");
    EXPECT_CHILD(TokenInfo(nullptr), "TokenInfo\n{\n}", "TokenInfo={}");
    EXPECT_CHILD(SessionInfo(nullptr), "SessionInfo(0x0,0x0,0x0,0x0)", "SesInfo=(0,0,0x0,0x0)");
    EXPECT_CHILD(MechanismInfo(nullptr), "MechanismInfo(0,0,0x0)", "MechInfo=(0,0,0x0)");
    EXPECT_CHILD(MofNStatus(nullptr), "MofNStatusInfo\n{\n}", "MofNStatus={}");
    EXPECT_CHILD(HAStatus(nullptr), "HAStatus\n{\n}", "HAStatus{}");
}

TEST_F(RecordChildrenTest, ANumberBehindAPointerThatCannotBeReadIsZero) {
    const CK_ULONG number = 77;
    EXPECT_EQ(ValueAt(&number), 77U);
    EXPECT_EQ(ValueAt(static_cast<const CK_ULONG*>(nullptr)), 0U);
    EXPECT_EQ(ValueAt(reinterpret_cast<const CK_ULONG*>(-8)), 0U);
    EXPECT_EQ(ValueAt(reinterpret_cast<const CK_ULONG*>(1)), 0U);
}

TEST_F(RecordChildrenTest, ALevelMustExceedAThreshold) {
    for (unsigned level = 0; level < 6; ++level) {
        uLoggingLevel.store(level);
        EXPECT_EQ(IsLogged(kDestroying), level > 0);
        EXPECT_EQ(IsLogged(kModifying), level > 1);
        EXPECT_EQ(IsLogged(kAdministering), level > 2);
        EXPECT_EQ(IsLogged(kEverything), level > 3);
    }
}

}  // namespace
