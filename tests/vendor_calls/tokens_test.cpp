#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_FindAdminSlotForSlot) {
    auto* const pAdminSlotID = At<CK_SLOT_ID>(0x12345140);
    auto* const pOtherSlotID = At<CK_SLOT_ID>(0x12345180);
    Answer([=] {
        *pAdminSlotID = 2001;
        *pOtherSlotID = 2002;
    });

    Call("CA_FindAdminSlotForSlot", slotID, pAdminSlotID, pOtherSlotID);
    Starts(R"(

10:15:30 <id>:STRTFindAdminSlotForSlot {Slot=7 Ptr=0x12345140 Ptr=0x12345180 })",
           R"(
Command(FindAdminSlotForSlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIFindAdminSlotForSlot <rv>12345clks {Slot=7 Ptr=0x12345140 Ptr=0x12345180 Slot=2001 Slot=2002 })",
         R"(
Command(FindAdminSlotForSlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   SlotID(0x7d1);
   SlotID(0x7d2);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIFindAdminSlotForSlot <rv>12345clks {})",
         R"(
Command(FindAdminSlotForSlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_FindAdminSlotForSlot", slotID, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTFindAdminSlotForSlot {Slot=7 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(FindAdminSlotForSlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIFindAdminSlotForSlot <rv>12345clks {Slot=7 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(FindAdminSlotForSlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_TokenInsert) {
    auto* const pTokenHandle = At<CK_BYTE>(0x12345140);

    Call("CA_TokenInsert", hSession, pTokenHandle, slotID);
    Starts(R"(

10:15:30 <id>:STRTTokenInsert {Sesn=81 Ptr=0x12345140 Slot=7 })",
           R"(
Command(TokenInsert, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINITokenInsert <rv>12345clks {})",
         R"(
Command(TokenInsert, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_TokenInsert", hSession, nullptr, slotID);
    Starts(R"(

10:15:30 <id>:STRTTokenInsert {Sesn=81 Ptr=0x0 Slot=7 })",
           R"(
Command(TokenInsert, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   SlotID(0x7);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINITokenInsert <rv>12345clks {})",
         R"(
Command(TokenInsert, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_TokenInsertNoAuth) {
    auto* const pTokenHandle = At<CK_BYTE>(0x12345100);

    Call("CA_TokenInsertNoAuth", pTokenHandle, slotID);
    Starts(R"(

10:15:30 <id>:STRTTokenInsertNoAuth {Ptr=0x12345100 Slot=7 })",
           R"(
Command(TokenInsertNoAuth, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   Pointer(0x12345100);
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINITokenInsertNoAuth <rv>12345clks {})",
         R"(
Command(TokenInsertNoAuth, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_TokenInsertNoAuth", nullptr, slotID);
    Starts(R"(

10:15:30 <id>:STRTTokenInsertNoAuth {Ptr=0x0 Slot=7 })",
           R"(
Command(TokenInsertNoAuth, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   Pointer(0x0);
   SlotID(0x7);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINITokenInsertNoAuth <rv>12345clks {})",
         R"(
Command(TokenInsertNoAuth, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_TokenZeroize) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_TokenZeroize", slotID, flags, ulOption);
    Starts(R"(

10:15:30 <id>:STRTTokenZeroize {Slot=7 Flgs=1001 1002 })",
           R"(
Command(TokenZeroize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINITokenZeroize <rv>12345clks {})",
         R"(
Command(TokenZeroize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_TokenDelete) {
    Call("CA_TokenDelete", hSession, slotID);
    Starts(R"(

10:15:30 <id>:STRTTokenDelete {Sesn=81 Slot=7 })",
           R"(
Command(TokenDelete, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINITokenDelete <rv>12345clks {})",
         R"(
Command(TokenDelete, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GenerateTokenKeys) {
    Call("CA_GenerateTokenKeys", hSession);
    Starts(R"(

10:15:30 <id>:STRTGenerateTokenKeys {Sesn=81 })",
           R"(
Command(GenerateTokenKeys, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIGenerateTokenKeys <rv>12345clks {})",
         R"(
Command(GenerateTokenKeys, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetTokenCertificateInfo) {
    Call("CA_GetTokenCertificateInfo", slotID);
    Starts(R"(

10:15:30 <id>:STRTGetTokenCertificateInfo {Slot=7 })",
           R"(
Command(GetTokenCertificateInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIGetTokenCertificateInfo <rv>12345clks {})",
         R"(
Command(GetTokenCertificateInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetTokenCertificateSignature) {
    Call("CA_SetTokenCertificateSignature", hSession);
    Starts(R"(

10:15:30 <id>:STRTSetTokenCertificateSignature {Sesn=81 })",
           R"(
Command(SetTokenCertificateSignature, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetTokenCertificateSignature <rv>12345clks {})",
         R"(
Command(SetTokenCertificateSignature, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetTokenInsertionCount) {
    auto* const pulCount = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulCount = 2001; });

    Call("CA_GetTokenInsertionCount", slotID, pulCount);
    Starts(R"(

10:15:30 <id>:STRTGetTokenInsertionCount {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetTokenInsertionCount, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTokenInsertionCount <rv>12345clks {Slot=7 Ptr=0x12345140 cnt=2001 })",
         R"(
Command(GetTokenInsertionCount, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetTokenInsertionCount <rv>12345clks {})",
         R"(
Command(GetTokenInsertionCount, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetTokenInsertionCount", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetTokenInsertionCount {Slot=7 Ptr=0x0 })",
           R"(
Command(GetTokenInsertionCount, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTokenInsertionCount <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetTokenInsertionCount, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_ReadCommonStore) {
    const CK_ULONG ulIndex = 1001;
    auto* const pData = At<CK_BYTE>(0x12345140);
    auto* const pulDataLen = At<CK_ULONG>(0x12345180);
    Before([=] { *pulDataLen = 61; });
    Answer([=] {
        Put(pData, "returned data and more");
        *pulDataLen = 13;
    });

    Call("CA_ReadCommonStore", ulIndex, pData, pulDataLen);
    Starts(R"(

10:15:30 <id>:STRTReadCommonStore {1001 Ptr=0x12345140 Ptr=0x12345180 61 })",
           R"(
Command(ReadCommonStore, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIReadCommonStore <rv>12345clks {1001 Ptr=0x12345140 Ptr=0x12345180 13 "returned data" })",
         R"(
Command(ReadCommonStore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(SimpleText"returned data");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIReadCommonStore <rv>12345clks {})",
         R"(
Command(ReadCommonStore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_ReadCommonStore", ulIndex, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTReadCommonStore {1001 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(ReadCommonStore, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIReadCommonStore <rv>12345clks {1001 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(ReadCommonStore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_ReadCommonStore", ulIndex, nullptr, pulDataLen);
    Starts(R"(

10:15:30 <id>:STRTReadCommonStore {1001 Ptr=0x0 Ptr=0x12345180 61 })",
           R"(
Command(ReadCommonStore, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIReadCommonStore <rv>12345clks {1001 Ptr=0x0 Ptr=0x12345180 13 })",
         R"(
Command(ReadCommonStore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0xd);
})");
}

TEST_P(VendorRecords, CA_WriteCommonStore) {
    const CK_ULONG ulIndex = 1001;
    auto* const pData = TextAt(0x12345140, "the data and more");
    const CK_ULONG ulDataLen = 8;

    Call("CA_WriteCommonStore", ulIndex, pData, ulDataLen);
    Starts(R"(

10:15:30 <id>:STRTWriteCommonStore {1001 Ptr=0x12345140 "the data" 8 })",
           R"(
Command(WriteCommonStore, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   Pointer(0x12345140);
   ByteString(SimpleText"the data");
   ULong(0x8);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIWriteCommonStore <rv>12345clks {})",
         R"(
Command(WriteCommonStore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_WriteCommonStore", ulIndex, nullptr, ulDataLen);
    Starts(R"(

10:15:30 <id>:STRTWriteCommonStore {1001 Ptr=0x0 8 })",
           R"(
Command(WriteCommonStore, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   Pointer(0x0);
   ULong(0x8);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIWriteCommonStore <rv>12345clks {})",
         R"(
Command(WriteCommonStore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetTokenCertificates) {
    const CK_ULONG ulCertificateType = 1001;
    auto* const pCertificates = At<CK_BYTE>(0x12345180);
    auto* const pulCertificatesLen = At<CK_ULONG>(0x123451c0);
    Before([=] { *pulCertificatesLen = 61; });
    Answer([=] {
        Put(pCertificates, "returned certificates and more");
        *pulCertificatesLen = 21;
    });

    Call("CA_GetTokenCertificates", slotID, ulCertificateType, pCertificates, pulCertificatesLen);
    Starts(R"(

10:15:30 <id>:STRTGetTokenCertificates {Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 61 })",
           R"(
Command(GetTokenCertificates, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTokenCertificates <rv>12345clks {Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 21 "returned certificates" })",
         R"(
Command(GetTokenCertificates, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x15);
   ByteString(SimpleText"returned certificates");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetTokenCertificates <rv>12345clks {})",
         R"(
Command(GetTokenCertificates, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetTokenCertificates", slotID, ulCertificateType, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetTokenCertificates {Slot=7 1001 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(GetTokenCertificates, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTokenCertificates <rv>12345clks {Slot=7 1001 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(GetTokenCertificates, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_GetTokenCertificates", slotID, ulCertificateType, nullptr, pulCertificatesLen);
    Starts(R"(

10:15:30 <id>:STRTGetTokenCertificates {Slot=7 1001 Ptr=0x0 Ptr=0x123451c0 61 })",
           R"(
Command(GetTokenCertificates, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIGetTokenCertificates <rv>12345clks {Slot=7 1001 Ptr=0x0 Ptr=0x123451c0 21 })",
         R"(
Command(GetTokenCertificates, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x15);
})");
}

TEST_P(VendorRecords, CA_GetTunnelSlotNumber) {
    auto* const pulTunnelSlot = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTunnelSlot = 2001; });

    Call("CA_GetTunnelSlotNumber", slotID, pulTunnelSlot);
    Starts(R"(

10:15:30 <id>:STRTGetTunnelSlotNumber {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetTunnelSlotNumber, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTunnelSlotNumber <rv>12345clks {Slot=7 Ptr=0x12345140 2001 })",
         R"(
Command(GetTunnelSlotNumber, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetTunnelSlotNumber <rv>12345clks {})",
         R"(
Command(GetTunnelSlotNumber, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetTunnelSlotNumber", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetTunnelSlotNumber {Slot=7 Ptr=0x0 })",
           R"(
Command(GetTunnelSlotNumber, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTunnelSlotNumber <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetTunnelSlotNumber, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_EnableUnauthTokenInsertion) {
    const CK_ULONG ulMaximum = 1001;
    auto* const pulContext = At<CK_ULONG>(0x12345180);
    Answer([=] { *pulContext = 2001; });

    Call("CA_EnableUnauthTokenInsertion", hSession, ulMaximum, pulContext);
    Starts(R"(

10:15:30 <id>:STRTEnableUnauthTokenInsertion {Sesn=81 Max=1001 Ptr=0x12345180 })",
           R"(
Command(EnableUnauthTokenInsertion, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIEnableUnauthTokenInsertion <rv>12345clks {Sesn=81 Max=1001 Ptr=0x12345180 Ctxt=2001 })",
         R"(
Command(EnableUnauthTokenInsertion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIEnableUnauthTokenInsertion <rv>12345clks {})",
         R"(
Command(EnableUnauthTokenInsertion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_EnableUnauthTokenInsertion", hSession, ulMaximum, nullptr);
    Starts(R"(

10:15:30 <id>:STRTEnableUnauthTokenInsertion {Sesn=81 Max=1001 Ptr=0x0 })",
           R"(
Command(EnableUnauthTokenInsertion, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIEnableUnauthTokenInsertion <rv>12345clks {Sesn=81 Max=1001 Ptr=0x0 })",
         R"(
Command(EnableUnauthTokenInsertion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_GetUnauthTokenInsertionStatus) {
    const CK_ULONG ulContext = 1001;
    auto* const pulMaximum = At<CK_ULONG>(0x12345180);
    auto* const pulCurrent = At<CK_ULONG>(0x123451c0);
    Answer([=] {
        *pulMaximum = 2001;
        *pulCurrent = 2002;
    });

    Call("CA_GetUnauthTokenInsertionStatus", hSession, ulContext, pulMaximum, pulCurrent);
    Starts(R"(

10:15:30 <id>:STRTGetUnauthTokenInsertionStatus {Sesn=81 Ctxt=1001 Ptr=0x12345180 Ptr=0x123451c0 })",
           R"(
Command(GetUnauthTokenInsertionStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetUnauthTokenInsertionStatus <rv>12345clks {Sesn=81 Ctxt=1001 Ptr=0x12345180 Ptr=0x123451c0 Max=2001 Cur=2002 })",
         R"(
Command(GetUnauthTokenInsertionStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x7d1);
   ULong(0x7d2);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetUnauthTokenInsertionStatus <rv>12345clks {})",
         R"(
Command(GetUnauthTokenInsertionStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetUnauthTokenInsertionStatus", hSession, ulContext, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetUnauthTokenInsertionStatus {Sesn=81 Ctxt=1001 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(GetUnauthTokenInsertionStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetUnauthTokenInsertionStatus <rv>12345clks {Sesn=81 Ctxt=1001 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(GetUnauthTokenInsertionStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_DisableUnauthTokenInsertion) {
    const CK_ULONG ulContext = 1001;

    Call("CA_DisableUnauthTokenInsertion", hSession, ulContext);
    Starts(R"(

10:15:30 <id>:STRTDisableUnauthTokenInsertion {Sesn=81 Ctxt=1001 })",
           R"(
Command(DisableUnauthTokenInsertion, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIDisableUnauthTokenInsertion <rv>12345clks {})",
         R"(
Command(DisableUnauthTokenInsertion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}
