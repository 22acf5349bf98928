#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_InitIndirectToken) {
    Call("CA_InitIndirectToken", hSession);
    Starts(R"(

10:15:30 <id>:STRTInitIndirectToken {Sesn=81 })",
           R"(
Command(InitIndirectToken, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIInitIndirectToken <rv>12345clks {})",
         R"(
Command(InitIndirectToken, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_InitIndirectPIN) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    const CK_ULONG ulPinLen = 7;
    const CK_SESSION_HANDLE hPrimarySession = 1001;

    Call("CA_InitIndirectPIN", hSession, pPin, ulPinLen, hPrimarySession);
    Starts(R"(

10:15:30 <id>:STRTInitIndirectPIN {Sesn=81 PIN="********" Sesn=1001 })",
           R"(
Command(InitIndirectPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"********");
   SessionHandle(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIInitIndirectPIN <rv>12345clks {})",
         R"(
Command(InitIndirectPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_InitIndirectPIN", hSession, nullptr, ulPinLen, hPrimarySession);
    Starts(R"(

10:15:30 <id>:STRTInitIndirectPIN {Sesn=81 PIN="<null>" Sesn=1001 })",
           R"(
Command(InitIndirectPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
   SessionHandle(0x3e9);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIInitIndirectPIN <rv>12345clks {})",
         R"(
Command(InitIndirectPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_ResetPIN) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    const CK_ULONG ulPinLen = 7;

    Call("CA_ResetPIN", hSession, pPin, ulPinLen);
    Starts(R"(

10:15:30 <id>:STRTResetPIN {Sesn=81 Ptr=0x12345140 7 PIN="********" })",
           R"(
Command(ResetPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x7);
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIResetPIN <rv>12345clks {})",
         R"(
Command(ResetPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_ResetPIN", hSession, nullptr, ulPinLen);
    Starts(R"(

10:15:30 <id>:STRTResetPIN {Sesn=81 Ptr=0x0 7 PIN="<null>" })",
           R"(
Command(ResetPIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIResetPIN <rv>12345clks {})",
         R"(
Command(ResetPIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_InitRolePIN) {
    const CK_USER_TYPE userType = 1001;
    const CK_ULONG usOptions = 1002;
    auto* const pPin = TextAt(0x123451c0, "the pin and more");
    const CK_ULONG ulPinLen = 7;

    Call("CA_InitRolePIN", hSession, userType, usOptions, pPin, ulPinLen);
    Starts(R"(

10:15:30 <id>:STRTInitRolePIN {Sesn=81 User=1001 1002 Ptr=0x123451c0 7 PIN="********" })",
           R"(
Command(InitRolePIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x123451c0);
   ULong(0x7);
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIInitRolePIN <rv>12345clks {})",
         R"(
Command(InitRolePIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_InitRolePIN", hSession, userType, usOptions, nullptr, ulPinLen);
    Starts(R"(

10:15:30 <id>:STRTInitRolePIN {Sesn=81 User=1001 1002 Ptr=0x0 7 PIN="<null>" })",
           R"(
Command(InitRolePIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIInitRolePIN <rv>12345clks {})",
         R"(
Command(InitRolePIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_InitSlotRolePIN) {
    const CK_USER_TYPE userType = 1001;
    const CK_ULONG usOptions = 1002;
    auto* const pPin = TextAt(0x12345200, "the pin and more");
    const CK_ULONG ulPinLen = 7;

    Call("CA_InitSlotRolePIN", hSession, slotID, userType, usOptions, pPin, ulPinLen);
    Starts(R"(

10:15:30 <id>:STRTInitSlotRolePIN {Sesn=81 Slot=7 User=1001 1002 Ptr=0x12345200 7 PIN="********" })",
           R"(
Command(InitSlotRolePIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   SlotID(0x7);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x12345200);
   ULong(0x7);
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIInitSlotRolePIN <rv>12345clks {})",
         R"(
Command(InitSlotRolePIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_InitSlotRolePIN", hSession, slotID, userType, usOptions, nullptr, ulPinLen);
    Starts(R"(

10:15:30 <id>:STRTInitSlotRolePIN {Sesn=81 Slot=7 User=1001 1002 Ptr=0x0 7 PIN="<null>" })",
           R"(
Command(InitSlotRolePIN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   SlotID(0x7);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIInitSlotRolePIN <rv>12345clks {})",
         R"(
Command(InitSlotRolePIN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CreateLoginChallenge) {
    const CK_USER_TYPE userType = 1001;
    const CK_ULONG usOptions = 1002;
    auto* const pPin = TextAt(0x123451c0, "the pin and more");
    const CK_ULONG ulPinLen = 7;
    auto* const pChallenge = At<CK_BYTE>(0x12345240);
    auto* const pulChallengeLen = At<CK_ULONG>(0x12345280);
    Before([=] { *pulChallengeLen = 61; });
    Answer([=] {
        Put(pChallenge, "returned challenge and more");
        *pulChallengeLen = 18;
    });

    Call("CA_CreateLoginChallenge", hSession, userType, usOptions, pPin, ulPinLen, pChallenge,
         pulChallengeLen);
    Starts(R"(

10:15:30 <id>:STRTCreateLoginChallenge {Sesn=81 User=1001 1002 7 PIN="********" 305418816 305418880 })",
           R"(
Command(CreateLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"********");
   ULong(0x12345240);
   ULong(0x12345280);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICreateLoginChallenge <rv>12345clks {Sesn=81 User=1001 1002 7 18 PIN="********" })",
         R"(
Command(CreateLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ULong(0x12);
   ByteString(SimpleText"********");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINICreateLoginChallenge <rv>12345clks {})",
         R"(
Command(CreateLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_CreateLoginChallenge", hSession, userType, usOptions, nullptr, ulPinLen, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTCreateLoginChallenge {Sesn=81 User=1001 1002 7 PIN="<null>" 0 0 })",
           R"(
Command(CreateLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"<null>");
   ULong(0x0);
   ULong(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICreateLoginChallenge <rv>12345clks {Sesn=81 User=1001 1002 7 PIN="<null>" })",
         R"(
Command(CreateLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"<null>");
})");

    Call("CA_CreateLoginChallenge", hSession, userType, usOptions, pPin, ulPinLen, nullptr, pulChallengeLen);
    Starts(R"(

10:15:30 <id>:STRTCreateLoginChallenge {Sesn=81 User=1001 1002 7 PIN="********" 0 305418880 })",
           R"(
Command(CreateLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"********");
   ULong(0x0);
   ULong(0x12345280);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINICreateLoginChallenge <rv>12345clks {Sesn=81 User=1001 1002 7 18 PIN="<null>" })",
         R"(
Command(CreateLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ULong(0x12);
   ByteString(SimpleText"<null>");
})");
}

TEST_P(VendorRecords, CA_Deactivate) {
    const CK_USER_TYPE userType = 1001;

    Call("CA_Deactivate", slotID, userType);
    Starts(R"(

10:15:30 <id>:STRTDeactivate {Slot=7 User=1001 })",
           R"(
Command(Deactivate, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   UserType(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIDeactivate <rv>12345clks {})",
         R"(
Command(Deactivate, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_IndirectLogin) {
    const CK_USER_TYPE userType = 1001;
    const CK_SESSION_HANDLE hPrimarySession = 1002;

    Call("CA_IndirectLogin", hSession, userType, hPrimarySession);
    Starts(R"(

10:15:30 <id>:STRTIndirectLogin {81 User=1001 1002 })",
           R"(
Command(IndirectLogin, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x51);
   UserType(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIIndirectLogin <rv>12345clks {})",
         R"(
Command(IndirectLogin, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetPedId) {
    const CK_ULONG ulPedId = 1001;

    Call("CA_SetPedId", slotID, ulPedId);
    Starts(R"(

10:15:30 <id>:STRTSetPedId {Slot=7 1001 })",
           R"(
Command(SetPedId, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   UShort(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetPedId <rv>12345clks {})",
         R"(
Command(SetPedId, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetPedId) {
    auto* const pulPedId = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulPedId = 2001; });

    Call("CA_GetPedId", slotID, pulPedId);
    Starts(R"(

10:15:30 <id>:STRTGetPedId {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetPedId, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetPedId <rv>12345clks {Slot=7 Ptr=0x12345140 2001 })",
         R"(
Command(GetPedId, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   UShort(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetPedId <rv>12345clks {})",
         R"(
Command(GetPedId, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetPedId", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetPedId {Slot=7 Ptr=0x0 })",
           R"(
Command(GetPedId, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetPedId <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetPedId, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}
