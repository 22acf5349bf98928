#include "tests/calls/call_data.h"
#include "tests/calls/recorded_call.h"
#include "tests/secrets/planted_secret.h"

TEST_F(RecordedCall, C_GetSlotList) {
    CK_SLOT_ID slots[3] = {};
    CK_ULONG count = 0;
    Before([&] { count = 3; });
    Answer([&] {
        slots[0] = 0x11;
        slots[1] = 0x22;
        slots[2] = 0x33;  // beyond the count
        count = 2;
    });
    Call(api.C_GetSlotList, 0x2, slots, &count);
    NewLog(R"(

10:15:30 <id>:STRTGetSlotList {tknPresent=true }
10:15:30 <id>:FINIGetSlotList <rv>12345clks {SlotLst={Slot=17 Slot=34 } })");
    OldLog(R"(
Command(GetSlotList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteBooleantrue;
}
Command(GetSlotList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotIDList
   {
      SlotID(0x11);
      SlotID(0x22);
   };
})");
    OutAfterFailure(R"({"kind":"SlotIDList","count":2})");
    Events("", R"(
        {"kind":"ByteBoolean","name":"tknPresent","value":true})",
           R"(
        {"kind":"SlotIDList","values":[17,34]})");
}

TEST_F(RecordedCall, C_GetSlotInfo) {
    CK_SLOT_INFO info = {};
    Answer([&] {
        PutPadded(info.slotDescription, "Slot for tests");
        PutPadded(info.manufacturerID, "Maker of slots");
        info.flags = CKF_TOKEN_PRESENT | CKF_HW_SLOT;
        info.hardwareVersion = {1, 2};
        info.firmwareVersion = {3, 4};
    });
    Call(api.C_GetSlotInfo, 0x7, &info);
    NewLog(R"(

10:15:30 <id>:STRTGetSlotInfo {Slot=7 }
10:15:30 <id>:FINIGetSlotInfo <rv>12345clks {SlotInfo={"Slot for tests                                                  " "Maker of slots                  " Flgs=5 } })");
    OldLog(R"(
Command(GetSlotInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(GetSlotInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotInfo
   {
      ByteString(SimpleText"Slot for tests                                                  ");
      ByteString(SimpleText"Maker of slots                  ");
      Flags(0x5);
   };
})");
    OutAfterFailure(R"({"kind":"SlotInfo"})");
    Events(R"("slot":7,)", R"(
        {"kind":"SlotID","value":7})",
           R"(
        {"kind":"SlotInfo","slotDescription":"Slot for tests","manufacturerID":"Maker of slots","flags":5})");
}

TEST_F(RecordedCall, C_GetTokenInfo) {
    MemoryAtFixedAddress memory;
    CK_TOKEN_INFO& info = memory.At<CK_TOKEN_INFO>(0x12345678);
    Answer([&] {
        PutPadded(info.label, "Label of a token");
        PutPadded(info.manufacturerID, "Maker of tokens");
        PutPadded(info.model, "Model T");
        PutPadded(info.serialNumber, "SN-0042");
        info.flags = 0x40D;
        info.ulMaxSessionCount = 0x101;
        info.ulSessionCount = 0x102;
        info.ulMaxRwSessionCount = 0x103;
        info.ulRwSessionCount = CK_UNAVAILABLE_INFORMATION;
        info.ulMaxPinLen = 0x105;
        info.ulMinPinLen = 0x106;
        info.ulTotalPublicMemory = 0x100000107;
        info.ulFreePublicMemory = 0x108;
        info.ulTotalPrivateMemory = CK_UNAVAILABLE_INFORMATION;
        info.ulFreePrivateMemory = 0x10A;
        info.hardwareVersion = {1, 2};
        info.firmwareVersion = {3, 4};
        PutPadded(info.utcTime, "2026111507153000");
    });
    Call(api.C_GetTokenInfo, 0x7, &info);
    NewLog(R"(

10:15:30 <id>:STRTGetTokenInfo {Slot=7 Ptr=0x12345678 }
10:15:30 <id>:FINIGetTokenInfo <rv>12345clks {Ptr=0x12345678 TokenInfo={"Label of a token                " "Maker of tokens                 " "Model T         " "SN-0042         " Flgs=1037 257 258 259 -1 261 262 4294967559 264 18446744073709551615 266 } })");
    OldLog(R"(
Command(GetTokenInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345678);
}
Command(GetTokenInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   Pointer(0x12345678);
   TokenInfo
   {
      ByteString(SimpleText"Label of a token                ");
      ByteString(SimpleText"Maker of tokens                 ");
      ByteString(SimpleText"Model T         ");
      ByteString(SimpleText"SN-0042         ");
      Flags(0x40d);
      UShort(0x101);
      UShort(0x102);
      UShort(0x103);
      UShort(0xffffffff);
      UShort(0x105);
      UShort(0x106);
      ULong(0x107);
      ULong(0x108);
      ULong(0xffffffff);
      ULong(0x10a);
   };
})");
    OutAfterFailure(R"({"kind":"Pointer","value":305419896},{"kind":"TokenInfo"})");
    Events(R"("slot":7,)", R"(
        {"kind":"SlotID","value":7},
        {"kind":"Pointer","value":305419896})",
           R"(
        {"kind":"Pointer","value":305419896},
        {"kind":"TokenInfo","label":"Label of a token","manufacturerID":"Maker of tokens","model":"Model T","serialNumber":"SN-0042","flags":1037,"ulMaxSessionCount":257,"ulSessionCount":258,"ulMaxRwSessionCount":259,"ulRwSessionCount":"18446744073709551615","ulMaxPinLen":261,"ulMinPinLen":262,"ulTotalPublicMemory":4294967559,"ulFreePublicMemory":264,"ulTotalPrivateMemory":"18446744073709551615","ulFreePrivateMemory":266})");
}

TEST_F(RecordedCall, C_GetMechanismList) {
    CK_MECHANISM_TYPE mechanisms[3] = {};
    CK_ULONG count = 0;
    Before([&] { count = 3; });
    Answer([&] {
        mechanisms[0] = CKM_RSA_PKCS;
        mechanisms[1] = 0x8000011C;
        mechanisms[2] = CKM_AES_CBC;  // beyond the count
        count = 2;
    });
    Call(api.C_GetMechanismList, 0x7, mechanisms, &count);
    NewLog(R"(

10:15:30 <id>:STRTGetMechanismList {Slot=7 }
10:15:30 <id>:FINIGetMechanismList <rv>12345clks {MechTypeLst={1 -2147483364 } })");
    OldLog(R"(
Command(GetMechanismList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
}
Command(GetMechanismList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   MechTypeList
   {
      MechanismType(0x1);
      MechanismType(0x8000011c);
   };
})");
    OutAfterFailure(R"({"kind":"MechTypeList","count":2})");
    Events(R"("slot":7,)", R"(
        {"kind":"SlotID","value":7})",
           R"(
        {"kind":"MechTypeList","values":[{"type":"CKM_RSA_PKCS","number":1},{"type":"CKM_AES_GCM","number":2147483932}]})");
}

TEST_F(RecordedCall, C_GetMechanismInfo) {
    CK_MECHANISM_INFO info = {};
    Answer([&] { info = {512, 4096, CKF_SIGN | CKF_VERIFY | CKF_HW}; });
    Call(api.C_GetMechanismInfo, 0x7, CKM_SHA256_RSA_PKCS, &info);
    NewLog(R"(

10:15:30 <id>:STRTGetMechanismInfo {Slot=7 64 }
10:15:30 <id>:FINIGetMechanismInfo <rv>12345clks {MechInfo=(512,4096,0x2801) })");
    OldLog(R"(
Command(GetMechanismInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   MechanismType(0x40);
}
Command(GetMechanismInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   MechanismInfo(512,4096,0x2801);
})");
    OutAfterFailure(R"({"kind":"MechanismInfo"})");
    Events(R"("slot":7,"mechanism":"CKM_SHA256_RSA_PKCS","mechanism_number":64,)", R"(
        {"kind":"SlotID","value":7},
        {"kind":"MechanismType","type":"CKM_SHA256_RSA_PKCS","number":64})",
           R"(
        {"kind":"MechanismInfo","ulMinKeySize":512,"ulMaxKeySize":4096,"flags":10241})");
}

TEST_F(RecordedCall, C_InitToken) {
    auto pin = Bytes(PlantedSecret(1));
    CK_UTF8CHAR label[32];
    PutPadded(label, "Name of the token");
    Call(api.C_InitToken, 0x7, pin.data(), pin.size(), label);
    NewLog(R"(

10:15:30 <id>:STRTInitToken {Slot=7 PIN="********" label="Name of the token               " }
10:15:30 <id>:FINIInitToken <rv>12345clks {})");
    OldLog(R"(
Command(InitToken, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ByteString(SimpleText"********");
   ByteString(SimpleText"Name of the token               ");
}
Command(InitToken, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("slot":7,)", R"(
        {"kind":"SlotID","value":7},
        {"kind":"PIN"},
        {"kind":"ByteString","name":"label","size":32,"text":"Name of the token               "})",
           "");
}

TEST_F(RecordedCall, C_InitPIN) {
    auto pin = Bytes(PlantedSecret(2));
    Call(api.C_InitPIN, 0x51, pin.data(), pin.size());
    NewLog(R"(

10:15:30 <id>:STRTInitPIN {Sesn=81 PIN="********" }
10:15:30 <id>:FINIInitPIN <rv>12345clks {})");
    OldLog(R"(
Command(InitPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"********");
}
Command(InitPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"PIN"})",
           "");
}

TEST_F(RecordedCall, C_SetPIN) {
    auto oldPin = Bytes(PlantedSecret(3));
    auto newPin = Bytes(PlantedSecret(4));
    Call(api.C_SetPIN, 0x51, oldPin.data(), oldPin.size(), newPin.data(), newPin.size());
    NewLog(R"(

10:15:30 <id>:STRTSetPIN {Sesn=81 Old="********" New="********" }
10:15:30 <id>:FINISetPIN <rv>12345clks {})");
    OldLog(R"(
Command(SetPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
}
Command(SetPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
    Events(R"("session":81,)", R"(
        {"kind":"SessionHandle","value":81},
        {"kind":"PIN","name":"Old"},
        {"kind":"PIN","name":"New"})",
           "");
}

TEST_F(RecordedCall, C_WaitForSlotEvent) {
    MemoryAtFixedAddress memory;
    CK_SLOT_ID& slot = memory.At<CK_SLOT_ID>(0x12345678);
    int reserved = 0;
    Answer([&] { slot = 0x7; });
    Call(api.C_WaitForSlotEvent, CKF_DONT_BLOCK, &slot, &reserved);
    NewLog(R"(

10:15:30 <id>:STRTWaitForSlotEvent {Flgs=1 }
10:15:30 <id>:FINIWaitForSlotEvent <rv>12345clks {Slot=305419896 })");
    OldLog(R"(
Command(WaitForSlotEvent, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   Flags(0x1);
}
Command(WaitForSlotEvent, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x12345678);
})");
    Events("", R"(
        {"kind":"Flags","value":1})",
           R"(
        {"kind":"SlotID","value":7})",
           R"("slot":7,)");
}
