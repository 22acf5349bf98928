// The text log masks data if "HideData" asks for it.
#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

namespace {

class HiddenData : public RecordedCall {
protected:
    HiddenData() { Set("HideData", "1"); }

    void MakeSignature() {
        static auto input = Bytes("to be signed");
        static std::vector<CK_BYTE> output(32);
        static CK_ULONG length;
        Before([] { length = output.size(); });
        Answer([] { Put(Bytes("\xA1\xA2\xA3"), output, length); });
        Call(api.C_Sign, 0x51, input.data(), input.size(), output.data(), &length);
    }
};

constexpr char kShownSignature[] = R"(

10:15:30 <id>:STRTSign {Sesn=81 "to be signed" }
10:15:30 <id>:FINISign <rv>12345clks {"a1a2a3" })";
constexpr char kHiddenSignature[] = R"(

10:15:30 <id>:STRTSign {Sesn=81 "********" }
10:15:30 <id>:FINISign <rv>12345clks {"********" })";

}  // namespace

TEST_F(HiddenData, DataAreHidden_ByteStringsBecomeAMask) {
    MakeSignature();
    NewLog(kHiddenSignature);
    OldLog(R"(
Command(Sign, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"********");
}
Command(Sign, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ByteString(SimpleText"********");
})");
}

TEST_F(HiddenData, KeyIsZeroOrAbsent_DataAreShownAndOtherwiseHidden) {
    MakeSignature();
    for (const char* value : {"1", "", "00", "yes", "no", "-0", "0x0", "off", "2"}) {
        SCOPED_TRACE(value);
        Set("HideData", value);
        NewLog(kHiddenSignature);
    }
    Set("HideData", "0");
    NewLog(kShownSignature);
    Unset("HideData");
    NewLog(kShownSignature);
}

TEST_F(HiddenData, DataAreHidden_MissingValueStaysNull) {
    CK_ULONG length = 0;
    Call(api.C_Sign, 0x51, nullptr, 7, nullptr, &length);
    NewLog(R"(

10:15:30 <id>:STRTSign {Sesn=81 "<null>" }
10:15:30 <id>:FINISign <rv>12345clks {"<null>" })");
}

TEST_F(HiddenData, DataAreHidden_OnlyDescribingAttributesStayVisible) {
    CK_OBJECT_CLASS objectClass = CKO_SECRET_KEY;
    CK_BBOOL isToken = CK_TRUE;
    auto label = Bytes("my key");
    auto id = Bytes("id");
    auto value = Bytes("key material");
    auto checkValue = Bytes("kcv");
    auto modulus = Bytes("modulus");
    CK_ATTRIBUTE attributes[] = {
        {CKA_CLASS, &objectClass, sizeof objectClass},
        {CKA_TOKEN, &isToken, sizeof isToken},
        {CKA_LABEL, label.data(), label.size()},
        {CKA_ID, id.data(), id.size()},
        {CKA_CHECK_VALUE, checkValue.data(), checkValue.size()},
        {CKA_MODULUS, modulus.data(), modulus.size()},
        {CKA_VALUE, value.data(), value.size()},
        {CKA_PRIVATE_EXPONENT, value.data(), value.size()},
        {0x80000FFF, value.data(), value.size()},
        {CKA_VALUE, nullptr, 20},
        {CKA_VALUE, nullptr, CK_UNAVAILABLE_INFORMATION},
    };
    Call(api.C_SetAttributeValue, 0x51, 0x62, attributes, std::size(attributes));
    NewLog(
        "\n\n10:15:30 <id>:STRTSetAttributeValue {Sesn=81 Obj=98 AttrList={CKA_CLASS=\"0400000000000000\" "
        "CKA_TOKEN=\"01\" CKA_LABEL=\"my key\" CKA_ID=\"id\" CKA_XXX=\"kcv\" CKA_MODULUS=\"modulus\" "
        "CKA_VALUE=\"********\" CKA_PRIVATE_EXPONENT=\"********\" CKA_XXX=\"********\" CKA_VALUE=\"<null>\" "
        "CKA_VALUE=\"ffffffffffffffff\" } }\n10:15:30 <id>:FINISetAttributeValue <rv>12345clks {}");
}

TEST_F(HiddenData, DescribingAttributeHasAnImpossibleSize_ItIsHidden) {
    auto bytes = Bytes("1234567890");
    CK_ATTRIBUTE attributes[] = {
        {CKA_CLASS, bytes.data(), 7},        {CKA_KEY_TYPE, bytes.data(), 9},
        {CKA_TOKEN, bytes.data(), 2},        {CKA_START_DATE, bytes.data(), 7},
        {CKA_END_DATE, bytes.data(), 8},     {CKA_CHECK_VALUE, bytes.data(), 4},
        {CKA_MODULUS_BITS, bytes.data(), 4}, {CKA_ALLOWED_MECHANISMS, bytes.data(), 9},
    };
    Call(api.C_SetAttributeValue, 0x51, 0x62, attributes, std::size(attributes));
    NewLog(
        "\n\n10:15:30 <id>:STRTSetAttributeValue {Sesn=81 Obj=98 AttrList={CKA_CLASS=\"********\" "
        "CKA_KEY_TYPE=\"********\" CKA_TOKEN=\"********\" CKA_START_DATE=\"********\" "
        "CKA_END_DATE=\"12345678\" CKA_XXX=\"********\" CKA_MODULUS_BITS=\"********\" CKA_XXX=\"********\" } "
        "}\n10:15:30 <id>:FINISetAttributeValue <rv>12345clks {}");
}

TEST_F(HiddenData, DataAreHidden_ParametersOfMechanismsBecomeAMask) {
    auto parameter = Bytes("the vector");
    CK_MECHANISM mechanism = {CKM_AES_CBC, parameter.data(), parameter.size()};
    Call(api.C_EncryptInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Init {Sesn=81 Mech=(CKM_AES_CBC,"********") Obj=98 }
10:15:30 <id>:FINIEncrypt_Init <rv>12345clks {})");
}

TEST_F(HiddenData, DataAreHidden_MechanismWithoutAParameterShowsNone) {
    CK_MECHANISM mechanism = {CKM_RSA_PKCS, nullptr, 0};
    Call(api.C_EncryptInit, 0x51, &mechanism, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTEncrypt_Init {Sesn=81 Mech=(CKM_RSA_PKCS,"<null>") Obj=98 }
10:15:30 <id>:FINIEncrypt_Init <rv>12345clks {})");
}

TEST_F(HiddenData, DataAreHidden_LabelOfATokenStaysVisible) {
    auto pin = Bytes("Q~J^Q~J^");
    std::vector<CK_BYTE> label(32, ' ');
    std::copy_n("my token", 8, label.begin());
    Call(api.C_InitToken, 7, pin.data(), pin.size(), label.data());
    NewLog(R"(

10:15:30 <id>:STRTInitToken {Slot=7 PIN="********" label="my token                        " }
10:15:30 <id>:FINIInitToken <rv>12345clks {})");
}

TEST_F(HiddenData, DataAreHidden_ReturnedStructuresStayVisible) {
    CK_SLOT_INFO info = {};
    PutPadded(info.slotDescription, "A slot");
    PutPadded(info.manufacturerID, "Its maker");
    info.flags = 5;
    Call(api.C_GetSlotInfo, 7, &info);
    NewLog(
        "\n\n10:15:30 <id>:STRTGetSlotInfo {Slot=7 }\n10:15:30 <id>:FINIGetSlotInfo <rv>12345clks "
        "{SlotInfo={\"A slot" +
        std::string(58, ' ') + "\" \"Its maker" + std::string(23, ' ') + "\" Flgs=5 } }");
}
