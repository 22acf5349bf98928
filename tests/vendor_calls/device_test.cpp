#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_Restart) {
    Call("CA_Restart", slotID);
    Starts(R"(

10:15:30 <id>:STRTRestart {Slot=7 })",
           R"(
Command(Restart, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIRestart <rv>12345clks {})",
         R"(
Command(Restart, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetModuleList) {
    Call("CA_GetModuleList", slotID);
    Starts(R"(

10:15:30 <id>:STRTGetModuleList {Slot=7 })",
           R"(
Command(GetModuleList, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIGetModuleList <rv>12345clks {})",
         R"(
Command(GetModuleList, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetModuleInfo) {
    const CK_ULONG ulModuleId = 1001;
    auto* const pInfo = At<CK_BYTE>(0x12345180);

    Call("CA_GetModuleInfo", slotID, ulModuleId, pInfo);
    Starts(R"(

10:15:30 <id>:STRTGetModuleInfo {Slot=7 1001 Ptr=0x12345180 })",
           R"(
Command(GetModuleInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIGetModuleInfo <rv>12345clks {})",
         R"(
Command(GetModuleInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetModuleInfo", slotID, ulModuleId, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetModuleInfo {Slot=7 1001 Ptr=0x0 })",
           R"(
Command(GetModuleInfo, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIGetModuleInfo <rv>12345clks {})",
         R"(
Command(GetModuleInfo, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_LoadModule) {
    auto* const pulModuleId = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulModuleId = 2001; });

    Call("CA_LoadModule", hSession, pulModuleId);
    Starts(R"(

10:15:30 <id>:STRTLoadModule {Sesn=81 Ptr=0x12345140 })",
           R"(
Command(LoadModule, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILoadModule <rv>12345clks {Sesn=81 Ptr=0x12345140 2001 })",
         R"(
Command(LoadModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILoadModule <rv>12345clks {})",
         R"(
Command(LoadModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LoadModule", hSession, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLoadModule {Sesn=81 Ptr=0x0 })",
           R"(
Command(LoadModule, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILoadModule <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(LoadModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_LoadEncryptedModule) {
    auto* const pulModuleId = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulModuleId = 2001; });

    Call("CA_LoadEncryptedModule", hSession, pulModuleId);
    Starts(R"(

10:15:30 <id>:STRTLoadEncryptedModule {Sesn=81 Ptr=0x12345140 })",
           R"(
Command(LoadEncryptedModule, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILoadEncryptedModule <rv>12345clks {Sesn=81 Ptr=0x12345140 2001 })",
         R"(
Command(LoadEncryptedModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILoadEncryptedModule <rv>12345clks {})",
         R"(
Command(LoadEncryptedModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LoadEncryptedModule", hSession, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLoadEncryptedModule {Sesn=81 Ptr=0x0 })",
           R"(
Command(LoadEncryptedModule, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILoadEncryptedModule <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(LoadEncryptedModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_UnloadModule) {
    const CK_ULONG ulModuleId = 1001;

    Call("CA_UnloadModule", hSession, ulModuleId);
    Starts(R"(

10:15:30 <id>:STRTUnloadModule {Sesn=81 1001 })",
           R"(
Command(UnloadModule, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIUnloadModule <rv>12345clks {})",
         R"(
Command(UnloadModule, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_PerformModuleCall) {
    const CK_ULONG ulModuleId = 1001;

    Call("CA_PerformModuleCall", hSession, ulModuleId);
    Starts(R"(

10:15:30 <id>:STRTPerformModuleCall {Sesn=81 1001 })",
           R"(
Command(PerformModuleCall, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIPerformModuleCall <rv>12345clks {})",
         R"(
Command(PerformModuleCall, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_FirmwareUpdate) {
    const CK_ULONG ulTarget = 1001;
    auto* const pFirst = TextAt(0x12345180, "the first and more");
    const CK_ULONG ulFirstLen = 9;
    auto* const pSecond = TextAt(0x12345200, "the second and more");
    const CK_ULONG ulSecondLen = 10;
    auto* const pThird = TextAt(0x12345280, "the third and more");
    const CK_ULONG ulThirdLen = 9;

    Call("CA_FirmwareUpdate", hSession, ulTarget, pFirst, ulFirstLen, pSecond, ulSecondLen, pThird,
         ulThirdLen);
    Starts(R"(

10:15:30 <id>:STRTFirmwareUpdate {Sesn=81 1001 Ptr=0x12345180 "the first" Ptr=0x12345200 "the second" Ptr=0x12345280 "the third" })",
           R"(
Command(FirmwareUpdate, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   ByteString(SimpleText"the first");
   Pointer(0x12345200);
   ByteString(SimpleText"the second");
   Pointer(0x12345280);
   ByteString(SimpleText"the third");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIFirmwareUpdate <rv>12345clks {})",
         R"(
Command(FirmwareUpdate, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_FirmwareUpdate", hSession, ulTarget, nullptr, ulFirstLen, nullptr, ulSecondLen, nullptr,
         ulThirdLen);
    Starts(R"(

10:15:30 <id>:STRTFirmwareUpdate {Sesn=81 1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(FirmwareUpdate, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIFirmwareUpdate <rv>12345clks {})",
         R"(
Command(FirmwareUpdate, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_FirmwareRollback) {
    Call("CA_FirmwareRollback", hSession);
    Starts(R"(

10:15:30 <id>:STRTFirmwareRollback {Sesn=81 })",
           R"(
Command(FirmwareRollback, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIFirmwareRollback <rv>12345clks {})",
         R"(
Command(FirmwareRollback, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CapabilityUpdate) {
    auto* const pFirst = TextAt(0x12345140, "the first and more");
    const CK_ULONG ulFirstLen = 9;
    auto* const pSecond = TextAt(0x123451c0, "the second and more");
    const CK_ULONG ulSecondLen = 10;

    Call("CA_CapabilityUpdate", hSession, pFirst, ulFirstLen, pSecond, ulSecondLen);
    Starts(R"(

10:15:30 <id>:STRTCapabilityUpdate {Sesn=81 Ptr=0x12345140 "the first" Ptr=0x123451c0 "the second" })",
           R"(
Command(CapabilityUpdate, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the first");
   Pointer(0x123451c0);
   ByteString(SimpleText"the second");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICapabilityUpdate <rv>12345clks {})",
         R"(
Command(CapabilityUpdate, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_CapabilityUpdate", hSession, nullptr, ulFirstLen, nullptr, ulSecondLen);
    Starts(R"(

10:15:30 <id>:STRTCapabilityUpdate {Sesn=81 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(CapabilityUpdate, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINICapabilityUpdate <rv>12345clks {})",
         R"(
Command(CapabilityUpdate, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetRollbackFirmwareVersion) {
    auto* const pulVersion = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulVersion = 2001; });

    Call("CA_GetRollbackFirmwareVersion", slotID, pulVersion);
    Starts(R"(

10:15:30 <id>:STRTGetRollbackFirmwareVersion {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetRollbackFirmwareVersion, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetRollbackFirmwareVersion <rv>12345clks {Slot=7 Ptr=0x12345140 2001 })",
         R"(
Command(GetRollbackFirmwareVersion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetRollbackFirmwareVersion <rv>12345clks {})",
         R"(
Command(GetRollbackFirmwareVersion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetRollbackFirmwareVersion", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetRollbackFirmwareVersion {Slot=7 Ptr=0x0 })",
           R"(
Command(GetRollbackFirmwareVersion, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetRollbackFirmwareVersion <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetRollbackFirmwareVersion, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_ResetDevice) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_ResetDevice", slotID, flags, ulOption);
    Starts(R"(

10:15:30 <id>:STRTResetDevice {Slot=7 Flgs=1001 1002 })",
           R"(
Command(ResetDevice, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIResetDevice <rv>12345clks {})",
         R"(
Command(ResetDevice, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_Zeroize) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_Zeroize", slotID, flags, ulOption);
    Starts(R"(

10:15:30 <id>:STRTZeroize {Slot=7 Flgs=1001 1002 })",
           R"(
Command(Zeroize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIZeroize <rv>12345clks {})",
         R"(
Command(Zeroize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_FactoryReset) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_FactoryReset", slotID, flags, ulOption);
    Starts(R"(

10:15:30 <id>:STRTFactoryReset {Slot=7 Flgs=1001 1002 })",
           R"(
Command(FactoryReset, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIFactoryReset <rv>12345clks {})",
         R"(
Command(FactoryReset, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_MTKSetStorage) {
    const CK_ULONG ulStorage = 1001;

    Call("CA_MTKSetStorage", hSession, ulStorage);
    Starts(R"(

10:15:30 <id>:STRTMTKSetStorage {Sesn=81 1001 })",
           R"(
Command(MTKSetStorage, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIMTKSetStorage <rv>12345clks {})",
         R"(
Command(MTKSetStorage, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_MTKRestore) {
    Call("CA_MTKRestore", slotID);
    Starts(R"(

10:15:30 <id>:STRTMTKRestore {Slot=7 })",
           R"(
Command(MTKRestore, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIMTKRestore <rv>12345clks {})",
         R"(
Command(MTKRestore, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_MTKResplit) {
    Call("CA_MTKResplit", slotID);
    Starts(R"(

10:15:30 <id>:STRTMTKResplit {Slot=7 })",
           R"(
Command(MTKResplit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIMTKResplit <rv>12345clks {})",
         R"(
Command(MTKResplit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_MTKZeroize) {
    Call("CA_MTKZeroize", slotID);
    Starts(R"(

10:15:30 <id>:STRTMTKZeroize {Slot=7 })",
           R"(
Command(MTKZeroize, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIMTKZeroize <rv>12345clks {})",
         R"(
Command(MTKZeroize, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_MTKGetState) {
    auto* const pulState = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulState = 2001; });

    Call("CA_MTKGetState", slotID, pulState);
    Starts(R"(

10:15:30 <id>:STRTMTKGetState {Slot=7 Ptr=0x12345140 })",
           R"(
Command(MTKGetState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIMTKGetState <rv>12345clks {Slot=7 Ptr=0x12345140 2001 })",
         R"(
Command(MTKGetState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIMTKGetState <rv>12345clks {})",
         R"(
Command(MTKGetState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_MTKGetState", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTMTKGetState {Slot=7 Ptr=0x0 })",
           R"(
Command(MTKGetState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIMTKGetState <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(MTKGetState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_GetTSV) {
    auto* const pulTsv = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTsv = 2001; });

    Call("CA_GetTSV", slotID, pulTsv);
    Starts(R"(

10:15:30 <id>:STRTGetTSV {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetTSV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTSV <rv>12345clks {Slot=7 Ptr=0x12345140 2001 })",
         R"(
Command(GetTSV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetTSV <rv>12345clks {})",
         R"(
Command(GetTSV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetTSV", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetTSV {Slot=7 Ptr=0x0 })",
           R"(
Command(GetTSV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTSV <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetTSV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}
