// These tests show descriptors of PKCS#11 structures and lists. Each field of a fixture has its own value.

#include <sys/mman.h>
#include <unistd.h>

#include <climits>
#include <cstring>

#include "descriptors/attribute_descriptor.h"
#include "descriptors/group_descriptors.h"
#include "descriptors/info_descriptors.h"
#include "descriptors/list_descriptors.h"
#include "descriptors/mechanism_descriptors.h"
#include "descriptors/scalar_descriptors.h"
#include "tests/descriptors/record_test.h"

namespace {

using StructureDescriptorTest = RecordTest;

constexpr unsigned long kWide = 0x1234567880000001;  // its low 32 bits are -2147483647 with a sign

// These values say whether the value of an attribute is shown.
constexpr unsigned char kWithValue = 1;
constexpr unsigned char kWithoutValue = 0;

template <class Character, std::size_t size>
void Fill(Character (&field)[size], const std::string& text) {
    for (std::size_t i = 0; i < size; ++i) field[i] = static_cast<Character>(i < text.size() ? text[i] : ' ');
}

// Returns the text of a field with the blanks that fill it up.
std::string Padded(std::string text, std::size_t size) {
    text.resize(size, ' ');
    return text;
}

template <class Element>
Element* Nowhere() {
    return reinterpret_cast<Element*>(16);
}

// ---- Attributes -------------------------------------------------------------------------------------------

class AttributeDescriptorTest : public RecordTest {
protected:
    unsigned long objectClass = CKO_PRIVATE_KEY;
    char label[6] = {'m', 'y', ' ', 'k', 'e', 'y'};
    CK_ATTRIBUTE attributes[3] = {{CKA_CLASS, &objectClass, sizeof objectClass},
                                  {CKA_LABEL, label, sizeof label},
                                  {0x12345678, nullptr, 0}};
};

TEST_F(AttributeDescriptorTest, Attribute_ShowsItsNameAndItsValue) {
    EXPECT_EQ(Old<AttributeDescriptor>(&attributes[0], kWithValue),
              "\nAttribute(CKA_CLASS,Value(Numeric\"0300000000000000\"))");
    EXPECT_EQ(New<AttributeDescriptor>(&attributes[0], kWithValue), "CKA_CLASS=\"0300000000000000\"");
    EXPECT_EQ(Old<AttributeDescriptor>(&attributes[1], kWithValue),
              "\nAttribute(CKA_LABEL,Value(SimpleText\"my key\"))");
    EXPECT_EQ(New<AttributeDescriptor>(&attributes[1], kWithValue), "CKA_LABEL=\"my key\"");
}

TEST_F(AttributeDescriptorTest, AttributeIsUnknownAndHasNoValue_TextShowsTheUnknownNameAndNoValue) {
    EXPECT_EQ(Old<AttributeDescriptor>(&attributes[2], kWithValue),
              "\nAttribute(CKA_XXX,Value(SimpleText\"<null>\"))");
    EXPECT_EQ(New<AttributeDescriptor>(&attributes[2], kWithValue), "CKA_XXX=\"<null>\"");
}

TEST_F(AttributeDescriptorTest, ValueOfAnAttributeIsLeftOut_OnlyItsNameIsShown) {
    EXPECT_EQ(Old<AttributeDescriptor>(&attributes[0], kWithoutValue), "\nAttribute(CKA_CLASS)");
    EXPECT_EQ(New<AttributeDescriptor>(&attributes[0], kWithoutValue), "CKA_CLASS");
    EXPECT_EQ(New<AttributeDescriptor>(&attributes[1], static_cast<unsigned char>(255)),
              "CKA_LABEL=\"my key\"");
}

TEST_F(AttributeDescriptorTest, ValueOfAnAttributeIsUnavailable_TextShowsSixteenF) {
    attributes[1].ulValueLen = CK_UNAVAILABLE_INFORMATION;
    EXPECT_EQ(Old<AttributeDescriptor>(&attributes[1], kWithValue),
              "\nAttribute(CKA_LABEL,Value(Numeric\"ffffffffffffffff\"))");
    EXPECT_EQ(New<AttributeDescriptor>(&attributes[1], kWithValue), "CKA_LABEL=\"ffffffffffffffff\"");
}

TEST_F(AttributeDescriptorTest, AttributeIsNull_TypeIsZeroAndNoValueIsShown) {
    EXPECT_EQ(New<AttributeDescriptor>(nullptr, kWithValue), "CKA_CLASS=\"<null>\"");
    EXPECT_EQ(Old<AttributeDescriptor>(nullptr, kWithValue),
              "\nAttribute(CKA_CLASS,Value(SimpleText\"<null>\"))");
    EXPECT_EQ(New<AttributeDescriptor>(Nowhere<CK_ATTRIBUTE>(), kWithValue), "CKA_CLASS=\"<null>\"");
}

TEST_F(AttributeDescriptorTest, Attribute_CountsAsTwoDescriptorsWithItsValue) {
    {
        const AttributeDescriptor attribute(&attributes[0], kWithoutValue);
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 2U);
        EXPECT_EQ(attribute.Type(), 2);
    }
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
}

TEST_F(AttributeDescriptorTest, CallerChangesTheAttribute_DescriptorStays) {
    UseNewFormat();
    const AttributeDescriptor attribute(&attributes[1], kWithValue);
    label[0] = 'X';
    attributes[1] = {};
    EXPECT_EQ(Printed(attribute), "CKA_LABEL=\"my key\"");
}

TEST_F(AttributeDescriptorTest, Template_ShowsEveryEntry) {
    EXPECT_EQ(Old<AttributeListDescriptor>(attributes, 3U, kWithValue),
              "\nAttributeList"
              "\n{"
              "\n   Attribute(CKA_CLASS,Value(Numeric\"0300000000000000\"));"
              "\n   Attribute(CKA_LABEL,Value(SimpleText\"my key\"));"
              "\n   Attribute(CKA_XXX,Value(SimpleText\"<null>\"));"
              "\n}");
    EXPECT_EQ(New<AttributeListDescriptor>(attributes, 3U, kWithValue),
              "AttrList={CKA_CLASS=\"0300000000000000\" CKA_LABEL=\"my key\" CKA_XXX=\"<null>\" }");
}

TEST_F(AttributeDescriptorTest, ValuesOfATemplateAreLeftOut_OnlyNamesAreShown) {
    EXPECT_EQ(Old<AttributeListDescriptor>(attributes, 2U, kWithoutValue),
              "\nAttributeList\n{\n   Attribute(CKA_CLASS);\n   Attribute(CKA_LABEL);\n}");
    EXPECT_EQ(New<AttributeListDescriptor>(attributes, 2U, kWithoutValue), "AttrList={CKA_CLASS CKA_LABEL }");
}

TEST_F(AttributeDescriptorTest, TemplateHasNoArrayOrNoCount_ListIsEmpty) {
    EXPECT_EQ(Old<AttributeListDescriptor>(nullptr, 3U, kWithValue), "\nAttributeList\n{\n}");
    EXPECT_EQ(New<AttributeListDescriptor>(nullptr, 3U, kWithValue), "AttrList={}");
    EXPECT_EQ(New<AttributeListDescriptor>(attributes, 0U, kWithValue), "AttrList={}");
    EXPECT_EQ(New<AttributeListDescriptor>(Nowhere<CK_ATTRIBUTE>(), ULONG_MAX, kWithValue), "AttrList={}");
}

// ---- Mechanisms -------------------------------------------------------------------------------------------

TEST_F(StructureDescriptorTest, Mechanism_ShowsItsNameAndItsParameter) {
    unsigned char vector[] = {0x00, 0x11, 0xEE, 0xFF};
    CK_MECHANISM mechanism = {CKM_AES_CBC, vector, sizeof vector};
    EXPECT_EQ(Old<MechanismDescriptor>(&mechanism), "\nMechanismCKM_AES_CBC,Value(Numeric\"0011eeff\"))");
    EXPECT_EQ(New<MechanismDescriptor>(&mechanism), "Mech=(CKM_AES_CBC,\"0011eeff\")");
}

TEST_F(StructureDescriptorTest, MechanismHasNoParameter_TextShowsNoValue) {
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    EXPECT_EQ(Old<MechanismDescriptor>(&mechanism), "\nMechanismCKM_RSA_PKCS,Value(SimpleText\"<null>\"))");
    EXPECT_EQ(New<MechanismDescriptor>(&mechanism), "Mech=(CKM_RSA_PKCS,\"<null>\")");
    mechanism.mechanism = 0x7FFFFFFF;
    EXPECT_EQ(New<MechanismDescriptor>(&mechanism), "Mech=(Unknown Mechanism Type,\"<null>\")");
}

TEST_F(StructureDescriptorTest, MechanismIsNull_TypeIsZero) {
    EXPECT_EQ(New<MechanismDescriptor>(nullptr), "Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,\"<null>\")");
    EXPECT_EQ(Old<MechanismDescriptor>(nullptr),
              "\nMechanismCKM_RSA_PKCS_KEY_PAIR_GEN,Value(SimpleText\"<null>\"))");
    EXPECT_EQ(New<MechanismDescriptor>(Nowhere<CK_MECHANISM>()),
              "Mech=(CKM_RSA_PKCS_KEY_PAIR_GEN,\"<null>\")");
}

TEST_F(StructureDescriptorTest, MechanismForAStream_IsFlushedAtItsEnd) {
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    UseNewFormat();
    EXPECT_EQ(FlushedPieces(MechanismDescriptor(&mechanism)),
              (std::vector<std::string>{"Mech=(CKM_RSA_PKCS,\"<null>\")", "(end)"}));
    UseOldFormat();
    EXPECT_EQ(
        FlushedPieces(MechanismDescriptor(&mechanism)),
        (std::vector<std::string>{"\nMechanismCKM_RSA_PKCS,Value", "(SimpleText\"<null>\"))", "(end)"}));
}

TEST_F(StructureDescriptorTest, Mechanism_CountsAsTwoDescriptorsWithItsParameter) {
    const MechanismDescriptor mechanism(nullptr);
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 2U);
    EXPECT_EQ(mechanism.Type(), 15);
}

TEST_F(StructureDescriptorTest, MechanismInfo_HasTheSameValuesInBothFormats) {
    const CK_MECHANISM_INFO info = {512, kWide, 0xAB00000123};
    EXPECT_EQ(Old<MechInfoDescriptor>(&info), "\nMechanismInfo(512,1311768467015204865,0x123)");
    EXPECT_EQ(New<MechInfoDescriptor>(&info), "MechInfo=(512,1311768467015204865,0x123)");
    EXPECT_EQ(New<MechInfoDescriptor>(nullptr), "MechInfo=(0,0,0x0)");
    EXPECT_EQ(New<MechInfoDescriptor>(Nowhere<CK_MECHANISM_INFO>()), "MechInfo=(0,0,0x0)");
    EXPECT_EQ(MechInfoDescriptor(nullptr).Type(), 16);
}

// ---- Structures of the library, its slots, tokens and sessions --------------------------------------------

TEST_F(StructureDescriptorTest, SessionInfo_ShowsItsFourFields) {
    const CK_SESSION_INFO info = {11, 3, 6, 0x77};
    EXPECT_EQ(Old<SessionInfoDescriptor>(&info), "\nSessionInfo(0xb,0x3,0x6,0x77)");
    EXPECT_EQ(New<SessionInfoDescriptor>(&info), "SesInfo=(11,3,0x6,0x77)");
    const CK_SESSION_INFO wide = {kWide, ULONG_MAX, kWide + 1, kWide + 2};
    EXPECT_EQ(Old<SessionInfoDescriptor>(&wide),
              "\nSessionInfo(0x80000001,0xffffffff,0x80000002,0x80000003)");
    EXPECT_EQ(New<SessionInfoDescriptor>(&wide), "SesInfo=(-2147483647,-1,0x80000002,0x80000003)");
    EXPECT_EQ(New<SessionInfoDescriptor>(nullptr), "SesInfo=(0,0,0x0,0x0)");
    EXPECT_EQ(Old<SessionInfoDescriptor>(nullptr), "\nSessionInfo(0x0,0x0,0x0,0x0)");
    EXPECT_EQ(SessionInfoDescriptor(nullptr).Type(), 17);
}

TEST_F(StructureDescriptorTest, LibraryInfo_ShowsVersionMakerAndFlags) {
    CK_INFO info{};
    info.cryptokiVersion = {2, 20};
    Fill(info.manufacturerID, "a maker");
    info.flags = 0x5;
    Fill(info.libraryDescription, "never shown");
    info.libraryVersion = {3, 4};
    const std::string maker = Padded("a maker", 32);
    EXPECT_EQ(Old<InfoDescriptor>(&info),
              "\nInfo"
              "\n{"
              "\n   ByteString(Numeric\"0214\");"
              "\n   ByteString(SimpleText\"" +
                  maker +
                  "\");"
                  "\n   Flags(0x5);"
                  "\n}");
    EXPECT_EQ(New<InfoDescriptor>(&info), "Info={\"0214\" \"" + maker + "\" Flgs=5 }");
    EXPECT_EQ(New<InfoDescriptor>(nullptr), "Info={}");
    EXPECT_EQ(Old<InfoDescriptor>(nullptr), "\nInfo\n{\n}");
    EXPECT_EQ(New<InfoDescriptor>(Nowhere<CK_INFO>()), "Info={}");
}

TEST_F(StructureDescriptorTest, SlotInfo_ShowsDescriptionMakerAndFlags) {
    CK_SLOT_INFO info{};
    Fill(info.slotDescription, "a slot");
    Fill(info.manufacturerID, "its maker");
    info.flags = 0x17;
    info.hardwareVersion = {1, 2};
    info.firmwareVersion = {3, 4};
    const std::string slot = Padded("a slot", 64);
    const std::string maker = Padded("its maker", 32);
    EXPECT_EQ(Old<SlotInfoDescriptor>(&info),
              "\nSlotInfo"
              "\n{"
              "\n   ByteString(SimpleText\"" +
                  slot +
                  "\");"
                  "\n   ByteString(SimpleText\"" +
                  maker +
                  "\");"
                  "\n   Flags(0x17);"
                  "\n}");
    EXPECT_EQ(New<SlotInfoDescriptor>(&info), "SlotInfo={\"" + slot + "\" \"" + maker + "\" Flgs=23 }");
    EXPECT_EQ(New<SlotInfoDescriptor>(nullptr), "SlotInfo={}");
    EXPECT_EQ(New<SlotInfoDescriptor>(Nowhere<CK_SLOT_INFO>()), "SlotInfo={}");
}

TEST_F(StructureDescriptorTest, TokenInfo_ShowsItsTextsFlagsAndNumbers) {
    CK_TOKEN_INFO info{};
    Fill(info.label, "a token");
    Fill(info.manufacturerID, "its maker");
    Fill(info.model, "its model");
    Fill(info.serialNumber, "its serial");
    info.flags = 0x40D;
    info.ulMaxSessionCount = 0;
    info.ulSessionCount = 21;
    info.ulMaxRwSessionCount = ULONG_MAX;
    info.ulRwSessionCount = 23;
    info.ulMaxPinLen = 24;
    info.ulMinPinLen = 25;
    info.ulTotalPublicMemory = 26;
    info.ulFreePublicMemory = 27;
    info.ulTotalPrivateMemory = ULONG_MAX;
    info.ulFreePrivateMemory = 29;
    info.hardwareVersion = {1, 2};
    info.firmwareVersion = {3, 4};
    Fill(info.utcTime, "2026111510153000");
    const std::string label = Padded("a token", 32);
    const std::string maker = Padded("its maker", 32);
    const std::string model = Padded("its model", 16);
    const std::string serial = Padded("its serial", 16);
    EXPECT_EQ(Old<TokenInfoDescriptor>(&info),
              "\nTokenInfo"
              "\n{"
              "\n   ByteString(SimpleText\"" +
                  label +
                  "\");"
                  "\n   ByteString(SimpleText\"" +
                  maker +
                  "\");"
                  "\n   ByteString(SimpleText\"" +
                  model +
                  "\");"
                  "\n   ByteString(SimpleText\"" +
                  serial +
                  "\");"
                  "\n   Flags(0x40d);"
                  "\n   UShort(0x0);"
                  "\n   UShort(0x15);"
                  "\n   UShort(0xffffffff);"
                  "\n   UShort(0x17);"
                  "\n   UShort(0x18);"
                  "\n   UShort(0x19);"
                  "\n   ULong(0x1a);"
                  "\n   ULong(0x1b);"
                  "\n   ULong(0xffffffff);"
                  "\n   ULong(0x1d);"
                  "\n}");
    EXPECT_EQ(New<TokenInfoDescriptor>(&info),
              "TokenInfo={\"" + label + "\" \"" + maker + "\" \"" + model + "\" \"" + serial +
                  "\" Flgs=1037 0 21 -1 23 24 25 26 27 18446744073709551615 29 }");
    EXPECT_EQ(New<TokenInfoDescriptor>(nullptr), "TokenInfo={}");
    EXPECT_EQ(New<TokenInfoDescriptor>(Nowhere<CK_TOKEN_INFO>()), "TokenInfo={}");
}

TEST_F(StructureDescriptorTest, FieldHoldsZeros_TextShowsAllOfIt) {
    CK_TOKEN_INFO info{};
    Fill(info.label, std::string("ab\0cd", 5));
    const std::string text = New<TokenInfoDescriptor>(&info);
    const std::string label = "ab\\0cd" + std::string(27, ' ');
    EXPECT_TRUE(text.starts_with("TokenInfo={\"" + label + "\" ")) << text;
    EXPECT_NE(text.find("\"" + std::string(64, '0') + "\""), std::string::npos);  // the maker is all zeros
}

TEST_F(StructureDescriptorTest, InfoDescriptors_HaveTheNumbersOfTheirTypes) {
    EXPECT_EQ(InfoDescriptor(nullptr).Type(), 20);
    EXPECT_EQ(SlotInfoDescriptor(nullptr).Type(), 19);
    EXPECT_EQ(TokenInfoDescriptor(nullptr).Type(), 18);
}

// ---- Lists ------------------------------------------------------------------------------------------------

TEST_F(StructureDescriptorTest, Lists_KeepTheOrderOfTheirArrays) {
    const unsigned long numbers[] = {1, 3, 0x80000001, 2};
    EXPECT_EQ(
        Old<SlotIDListDescriptor>(numbers, 4U),
        "\nSlotIDList\n{\n   SlotID(0x1);\n   SlotID(0x3);\n   SlotID(0x80000001);\n   SlotID(0x2);\n}");
    EXPECT_EQ(New<SlotIDListDescriptor>(numbers, 4U), "SlotLst={Slot=1 Slot=3 Slot=2147483649 Slot=2 }");
    EXPECT_EQ(Old<ObjectHandleListDescriptor>(numbers, 2U),
              "\nObjectHandleList\n{\n   ObjectHandle(0x1);\n   ObjectHandle(0x3);\n}");
    EXPECT_EQ(New<ObjectHandleListDescriptor>(numbers, 4U), "ObjHndLst={Obj=1 Obj=3 Obj=2147483649 Obj=2 }");
    EXPECT_EQ(Old<MechTypeListDescriptor>(numbers, 2U),
              "\nMechTypeList\n{\n   MechanismType(0x1);\n   MechanismType(0x3);\n}");
    EXPECT_EQ(New<MechTypeListDescriptor>(numbers, 4U), "MechTypeLst={1 3 -2147483647 2 }");
    EXPECT_EQ(SlotIDListDescriptor(nullptr, 0).Type(), 12);
    EXPECT_EQ(MechTypeListDescriptor(nullptr, 0).Type(), 13);
    EXPECT_EQ(ObjectHandleListDescriptor(nullptr, 0).Type(), 23);
}

TEST_F(StructureDescriptorTest, ListHasNoArrayOrNoCount_ListIsEmpty) {
    const unsigned long number = 1;
    EXPECT_EQ(New<SlotIDListDescriptor>(nullptr, 5U), "SlotLst={}");
    EXPECT_EQ(New<MechTypeListDescriptor>(nullptr, 5U), "MechTypeLst={}");
    EXPECT_EQ(New<ObjectHandleListDescriptor>(nullptr, 5U), "ObjHndLst={}");
    EXPECT_EQ(New<SlotIDListDescriptor>(&number, 0U), "SlotLst={}");
    EXPECT_EQ(Old<MechTypeListDescriptor>(&number, 0U), "\nMechTypeList\n{\n}");
    EXPECT_EQ(Old<ObjectHandleListDescriptor>(&number, 0U), "\nObjectHandleList\n{\n}");
}

TEST_F(StructureDescriptorTest, ArrayCannotBeReadToItsEnd_ListShowsThePartInFront) {
    const std::size_t pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    char* const pages = static_cast<char*>(
        mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(pages, MAP_FAILED);
    ASSERT_EQ(mprotect(pages + pageSize, pageSize, PROT_NONE), 0);
    const unsigned long numbers[] = {41, 42};
    char* const unaligned = pages + pageSize - sizeof numbers - 3;
    std::memcpy(unaligned, numbers, sizeof numbers);
    const auto* const array = reinterpret_cast<const unsigned long*>(unaligned);
    EXPECT_EQ(New<SlotIDListDescriptor>(array, 3U), "SlotLst={Slot=41 Slot=42 }");
    EXPECT_EQ(New<ObjectHandleListDescriptor>(array, ULONG_MAX), "ObjHndLst={Obj=41 Obj=42 }");
    EXPECT_EQ(New<MechTypeListDescriptor>(array, ULONG_MAX / 8 + 2), "MechTypeLst={41 42 }");

    const CK_ATTRIBUTE attribute = {CKA_ID, nullptr, 0};
    char* const entry = pages + pageSize - sizeof attribute - 1;
    std::memcpy(entry, &attribute, sizeof attribute);
    EXPECT_EQ(New<AttributeListDescriptor>(reinterpret_cast<const CK_ATTRIBUTE*>(entry), 2U, kWithoutValue),
              "AttrList={CKA_ID }");
    EXPECT_EQ(New<AttributeDescriptor>(reinterpret_cast<const CK_ATTRIBUTE*>(entry + 8), kWithoutValue),
              "CKA_CLASS");
    munmap(pages, 2 * pageSize);
}

// ---- Groups -----------------------------------------------------------------------------------------------

TEST_F(StructureDescriptorTest, MofNStatus_ShowsItsFiveWords) {
    const CA_M_OF_N_STATUS status = {{1, 22, 333, 4444, kWide}};
    EXPECT_EQ(Old<MofNStatusInfoDescriptor>(&status),
              "\nMofNStatusInfo\n{\n   ULong(0x1);\n   ULong(0x16);\n   ULong(0x14d);\n   ULong(0x115c);"
              "\n   ULong(0x80000001);\n}");
    EXPECT_EQ(New<MofNStatusInfoDescriptor>(&status), "MofNStatus={1 22 333 4444 1311768467015204865 }");
    EXPECT_EQ(New<MofNStatusInfoDescriptor>(nullptr), "MofNStatus={}");
    EXPECT_EQ(New<MofNStatusInfoDescriptor>(Nowhere<CA_M_OF_N_STATUS>()), "MofNStatus={}");
    EXPECT_EQ(MofNStatusInfoDescriptor(nullptr).Type(), 24);
}

CK_HA_STATUS Group(unsigned long size) {
    CK_HA_STATUS status{};
    std::strcpy(status.groupSerial, "group-7");
    for (unsigned i = 0; i < 32; ++i) {
        std::snprintf(status.memberList[i].memberSerial, sizeof status.memberList[i].memberSerial,
                      "member-%u", i);
        status.memberList[i].memberStatus = 0x30 + i;
    }
    status.listSize = size;
    return status;
}

TEST_F(StructureDescriptorTest, MemberOfAGroup_ShowsSerialAndStatus) {
    const CK_HA_STATUS status = Group(1);
    EXPECT_EQ(Old<HAMemberDescriptor>(&status.memberList[2]),
              "\nHAMember\n{\n   ByteString(SimpleText\"<null>\");\n   UShort(0x32);\n}");
    EXPECT_EQ(New<HAMemberDescriptor>(&status.memberList[2]), "HAMember{member-2\"<null>\" 50 }");
    EXPECT_EQ(New<HAMemberDescriptor>(nullptr), "HAMember{}");
    EXPECT_EQ(HAMemberDescriptor(nullptr).Type(), 25);
}

TEST_F(StructureDescriptorTest, Group_ShowsSerialMembersAndTheirNumber) {
    const CK_HA_STATUS two = Group(2);
    EXPECT_EQ(Old<HAStatusDescriptor>(&two),
              "\nHAStatus"
              "\n{"
              "\n   ByteString(SimpleText\"<null>\");"
              "\n   HAMember"
              "\n   {"
              "\n      ByteString(SimpleText\"<null>\");"
              "\n      UShort(0x30);"
              "\n   };"
              "\n   HAMember"
              "\n   {"
              "\n      ByteString(SimpleText\"<null>\");"
              "\n      UShort(0x31);"
              "\n   };"
              "\n   UShort(0x2);"
              "\n}");
    EXPECT_EQ(
        New<HAStatusDescriptor>(&two),
        "HAStatus{group-7\"<null>\" HAMember{member-0\"<null>\" 48 } HAMember{member-1\"<null>\" 49 } 2 }");
    EXPECT_EQ(New<HAStatusDescriptor>(nullptr), "HAStatus{}");
    EXPECT_EQ(New<HAStatusDescriptor>(Nowhere<CK_HA_STATUS>()), "HAStatus{}");
    EXPECT_EQ(HAStatusDescriptor(nullptr).Type(), 26);
}

TEST_F(StructureDescriptorTest, GroupIsEmpty_ShowsSerialAndNumber) {
    const CK_HA_STATUS none = Group(0);
    EXPECT_EQ(HAStatusDescriptor(&none).ChildCount(), 2U);
    EXPECT_EQ(New<HAStatusDescriptor>(&none), "HAStatus{group-7\"<null>\" 0 }");
}

TEST_F(StructureDescriptorTest, CountOfMembersIsTooLarge_GroupShowsNoMoreThanItsStructureHolds) {
    const CK_HA_STATUS full = Group(32);
    EXPECT_EQ(HAStatusDescriptor(&full).ChildCount(), 34U);
    const CK_HA_STATUS wild = Group(ULONG_MAX);
    EXPECT_EQ(HAStatusDescriptor(&wild).ChildCount(), 34U);
    const std::string text = New<HAStatusDescriptor>(&wild);
    EXPECT_EQ(text.substr(text.find("HAMember{member-31")), "HAMember{member-31\"<null>\" 79 } -1 }");
}

TEST_F(StructureDescriptorTest, SerialFillsItsField_TextEndsWithTheField) {
    CK_HA_STATUS status = Group(0);
    std::memcpy(status.groupSerial, "0123456789abcdefghijklmn", 24);
    std::memcpy(status.memberList[0].memberSerial, "ABCDEFGHIJKLMNOPQRSTUVWX", 24);
    status.memberList[0].memberStatus = 0x4141414141414141;
    EXPECT_EQ(New<HAStatusDescriptor>(&status), "HAStatus{0123456789abcdefghijklmn\"<null>\" 0 }");
    EXPECT_EQ(New<HAMemberDescriptor>(&status.memberList[0]),
              "HAMember{ABCDEFGHIJKLMNOPQRSTUVWX\"<null>\" 1094795585 }");
}

}  // namespace
