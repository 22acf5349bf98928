#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"

TEST_F(RecordedCall, C_CreateObject) {
    CK_OBJECT_CLASS objectClass = CKO_DATA;
    auto label = Bytes("my object");
    auto value = Bytes("line\nand \"more\" \\");
    CK_ATTRIBUTE attributes[] = {
        {CKA_CLASS, &objectClass, sizeof objectClass},
        {CKA_LABEL, label.data(), label.size()},
        {CKA_VALUE, value.data(), value.size()},
    };
    CK_OBJECT_HANDLE object = 0;
    Answer([&] { object = 0x62; });
    Call(api.C_CreateObject, 0x51, attributes, 3, &object);
    NewLog(R"(

10:15:30 <id>:STRTCreateObject {Sesn=81 AttrList={CKA_CLASS="0000000000000000" CKA_LABEL="my object" CKA_VALUE="line\aand ""more"" \\" } }
10:15:30 <id>:FINICreateObject <rv>12345clks {Obj=98 })");
    OldLog(R"(
Command(CreateObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   AttributeList
   {
      Attribute(CKA_CLASS,Value(Numeric"0000000000000000"));
      Attribute(CKA_LABEL,Value(SimpleText"my object"));
      Attribute(CKA_VALUE,Value(RichText"line\aand ""more"" \\"));
   };
}
Command(CreateObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x62);
})");
    EventsWithoutData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"AttributeList","attributes":[{"type":"CKA_CLASS","number":0,"size":8,"value":0},{"type":"CKA_LABEL","number":3,"size":9,"text":"my object"},{"type":"CKA_VALUE","number":17,"size":17}]})",
                      R"(
        {"kind":"ObjectHandle","value":98})",
                      R"("session":81,"object":98,)");
    EventsWithData(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"AttributeList","attributes":[{"type":"CKA_CLASS","number":0,"size":8,"value":0},{"type":"CKA_LABEL","number":3,"size":9,"text":"my object"},{"type":"CKA_VALUE","number":17,"size":17,"hex":"6c696e650a616e6420226d6f726522205c"}]})",
                   R"(
        {"kind":"ObjectHandle","value":98})",
                   R"("session":81,"object":98,)");
}

TEST_F(RecordedCall, C_CopyObject) {
    CK_BBOOL isToken = CK_TRUE;
    CK_ATTRIBUTE attributes[] = {
        {CKA_TOKEN, &isToken, sizeof isToken},
        {CKA_ID, nullptr, 0},
    };
    CK_OBJECT_HANDLE object = 0;
    Answer([&] { object = 0x63; });
    Call(api.C_CopyObject, 0x51, 0x62, attributes, 2, &object);
    NewLog(R"(

10:15:30 <id>:STRTCopyObject {Sesn=81 Obj=98 AttrList={CKA_TOKEN="01" CKA_ID="<null>" } }
10:15:30 <id>:FINICopyObject <rv>12345clks {Obj=99 })");
    OldLog(R"(
Command(CopyObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
   AttributeList
   {
      Attribute(CKA_TOKEN,Value(Numeric"01"));
      Attribute(CKA_ID,Value(SimpleText"<null>"));
   };
}
Command(CopyObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandle(0x63);
})");
    Events(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98},
        {"kind":"AttributeList","attributes":[{"type":"CKA_TOKEN","number":1,"size":1,"value":true},{"type":"CKA_ID","number":258,"size":0}]})",
           R"(
        {"kind":"ObjectHandle","value":99})");
}

TEST_F(RecordedCall, C_DestroyObject) {
    Call(api.C_DestroyObject, 0x51, 0x62);
    NewLog(R"(

10:15:30 <id>:STRTDestroyObject {Sesn=81 Obj=98 }
10:15:30 <id>:FINIDestroyObject <rv>12345clks {})");
    OldLog(R"(
Command(DestroyObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
}
Command(DestroyObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98})",
           "");
}

TEST_F(RecordedCall, C_GetObjectSize) {
    CK_ULONG size = 0;
    Answer([&] { size = 0x1000004D2; });
    Call(api.C_GetObjectSize, 0x51, 0x62, &size);
    NewLog(R"(

10:15:30 <id>:STRTGetObjectSize {Sesn=81 Obj=98 }
10:15:30 <id>:FINIGetObjectSize <rv>12345clks {1234 })");
    OldLog(R"(
Command(GetObjectSize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
}
Command(GetObjectSize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   UShort(0x4d2);
})");
    Events(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98})",
           R"(
        {"kind":"UShort","value":4294968530})");
}

TEST_F(RecordedCall, C_GetAttributeValue) {
    std::vector<CK_BYTE> label(16);
    CK_ULONG bits = 0;
    CK_ATTRIBUTE attributes[3];
    Before([&] {
        attributes[0] = {CKA_LABEL, label.data(), label.size()};
        attributes[1] = {CKA_MODULUS_BITS, &bits, sizeof bits};
        attributes[2] = {CKA_PRIVATE_EXPONENT, nullptr, 0};
    });
    Answer([&] {
        Put(Bytes("my key"), label, attributes[0].ulValueLen);
        bits = 2048;
        attributes[2].ulValueLen = CK_UNAVAILABLE_INFORMATION;
    });
    Call(api.C_GetAttributeValue, 0x51, 0x62, attributes, 3);
    NewLog(R"(

10:15:30 <id>:STRTGetAttributeValue {Sesn=81 Obj=98 AttrList={CKA_LABEL CKA_MODULUS_BITS CKA_PRIVATE_EXPONENT } }
10:15:30 <id>:FINIGetAttributeValue <rv>12345clks {AttrList={CKA_LABEL="my key" CKA_MODULUS_BITS="0008000000000000" CKA_PRIVATE_EXPONENT="ffffffffffffffff" } })");
    OldLog(R"(
Command(GetAttributeValue, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
   AttributeList
   {
      Attribute(CKA_LABEL);
      Attribute(CKA_MODULUS_BITS);
      Attribute(CKA_PRIVATE_EXPONENT);
   };
}
Command(GetAttributeValue, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"my key"));
      Attribute(CKA_MODULUS_BITS,Value(Numeric"0008000000000000"));
      Attribute(CKA_PRIVATE_EXPONENT,Value(Numeric"ffffffffffffffff"));
   };
})");
    OutAfterFailure(
        R"({"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":6},{"type":"CKA_MODULUS_BITS","number":289,"size":8},{"type":"CKA_PRIVATE_EXPONENT","number":291,"unavailable":true}]})");
    Events(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":16},{"type":"CKA_MODULUS_BITS","number":289,"size":8},{"type":"CKA_PRIVATE_EXPONENT","number":291}]})",
           R"(
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":6,"text":"my key"},{"type":"CKA_MODULUS_BITS","number":289,"size":8,"value":2048},{"type":"CKA_PRIVATE_EXPONENT","number":291,"unavailable":true}]})");
}

TEST_F(RecordedCall, C_SetAttributeValue) {
    auto label = Bytes("new label");
    auto value = Bytes("of a number");
    CK_ATTRIBUTE attributes[] = {
        {CKA_LABEL, label.data(), label.size()},
        {CKA_VENDOR_DEFINED | 0x7777, value.data(), value.size()},
    };
    Call(api.C_SetAttributeValue, 0x51, 0x62, attributes, 2);
    NewLog(R"(

10:15:30 <id>:STRTSetAttributeValue {Sesn=81 Obj=98 AttrList={CKA_LABEL="new label" CKA_XXX="of a number" } }
10:15:30 <id>:FINISetAttributeValue <rv>12345clks {})");
    OldLog(R"(
Command(SetAttributeValue, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x62);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"new label"));
      Attribute(CKA_XXX,Value(SimpleText"of a number"));
   };
}
Command(SetAttributeValue, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    EventsWithoutData(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":9,"text":"new label"},{"number":2147514231,"size":11}]})",
                      "");
    EventsWithData(R"("session":81,"object":98,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"ObjectHandle","value":98},
        {"kind":"AttributeList","attributes":[{"type":"CKA_LABEL","number":3,"size":9,"text":"new label"},{"number":2147514231,"size":11,"text":"of a number"}]})",
                   "");
}

TEST_F(RecordedCall, C_FindObjectsInit) {
    CK_OBJECT_CLASS objectClass = CKO_PRIVATE_KEY;
    CK_ATTRIBUTE attributes[] = {{CKA_CLASS, &objectClass, sizeof objectClass}};
    Call(api.C_FindObjectsInit, 0x51, attributes, 1);
    NewLog(R"(

10:15:30 <id>:STRTFindObjects_Init {Sesn=81 AttrList={CKA_CLASS="0300000000000000" } }
10:15:30 <id>:FINIFindObjects_Init <rv>12345clks {})");
    OldLog(R"(
Command(FindObjects, Init, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   AttributeList
   {
      Attribute(CKA_CLASS,Value(Numeric"0300000000000000"));
   };
}
Command(FindObjects, Init, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"AttributeList","attributes":[{"type":"CKA_CLASS","number":0,"size":8,"value":3}]})",
           "");
}

TEST_F(RecordedCall, C_FindObjects) {
    CK_OBJECT_HANDLE objects[3] = {};
    CK_ULONG count = 0;
    Answer([&] {
        objects[0] = 0x62;
        objects[1] = 0x63;
        objects[2] = 0x64;  // beyond the count
        count = 2;
    });
    Call(api.C_FindObjects, 0x51, objects, 3, &count);
    NewLog(R"(

10:15:30 <id>:STRTFindObjects {Sesn=81 3 }
10:15:30 <id>:FINIFindObjects <rv>12345clks {ObjHndLst={Obj=98 Obj=99 } 2 })");
    OldLog(R"(
Command(FindObjects, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UShort(0x3);
}
Command(FindObjects, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ObjectHandleList
   {
      ObjectHandle(0x62);
      ObjectHandle(0x63);
   };
   UShort(0x2);
})");
    OutAfterFailure(R"({"kind":"ObjectHandleList","count":2},{"kind":"UShort","value":2})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"UShort","value":3})",
           R"(
        {"kind":"ObjectHandleList","values":[98,99]},
        {"kind":"UShort","value":2})");
}

TEST_F(RecordedCall, C_FindObjectsFinal) {
    Call(api.C_FindObjectsFinal, 0x51);
    NewLog(R"(

10:15:30 <id>:STRTFindObjects {Sesn=81 }
10:15:30 <id>:FINIFindObjects <rv>12345clks {})");
    OldLog(R"(
Command(FindObjects, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
}
Command(FindObjects, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81})",
           "");
}
