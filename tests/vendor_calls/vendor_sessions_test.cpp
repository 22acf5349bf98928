#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_OpenSession) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_FLAGS flags = 1002;
    auto* const pApplication = At<CK_BYTE>(0x123451c0);
    const CK_ULONG Notify = 1003;
    auto* const phSession = At<CK_SESSION_HANDLE>(0x12345240);
    Answer([=] { *phSession = 2001; });

    Call("CA_OpenSession", slotID, ulContainerNumber, flags, pApplication, Notify, phSession);
    Starts(R"(

10:15:30 <id>:STRTOpenSession {Slot=7 1001 Flgs=1002 305418688 })",
           R"(
Command(OpenSession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x123451c0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIOpenSession <rv>12345clks {Slot=7 1001 Flgs=1002 305418688 Sesn=2001 })",
         R"(
Command(OpenSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x123451c0);
   SessionHandle(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIOpenSession <rv>12345clks {})",
         R"(
Command(OpenSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_OpenSession", slotID, ulContainerNumber, flags, nullptr, Notify, nullptr);
    Starts(R"(

10:15:30 <id>:STRTOpenSession {Slot=7 1001 Flgs=1002 0 })",
           R"(
Command(OpenSession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIOpenSession <rv>12345clks {Slot=7 1001 Flgs=1002 0 })",
         R"(
Command(OpenSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x0);
})");
}

TEST_P(VendorRecords, CA_CloseApplicationIDForContainer) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulIdHigh = 1002;
    const CK_ULONG ulIdLow = 1003;

    Call("CA_CloseApplicationIDForContainer", slotID, ulContainerNumber, ulIdHigh, ulIdLow);
    Starts(R"(

10:15:30 <id>:STRTCloseApplicationIDForContainer {Slot=7 Container Number1001 1002 1003 })",
           R"(
Command(CloseApplicationIDForContainer, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloseApplicationIDForContainer <rv>12345clks {})",
         R"(
Command(CloseApplicationIDForContainer, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_OpenApplicationID) {
    const CK_ULONG ulIdHigh = 1001;
    const CK_ULONG ulIdLow = 1002;

    Call("CA_OpenApplicationID", slotID, ulIdHigh, ulIdLow);
    Starts(R"(

10:15:30 <id>:STRTOpenApplicationID {Slot=7 1001 1002 })",
           R"(
Command(OpenApplicationID, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIOpenApplicationID <rv>12345clks {})",
         R"(
Command(OpenApplicationID, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_OpenApplicationIDForContainer) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulIdHigh = 1002;
    const CK_ULONG ulIdLow = 1003;

    Call("CA_OpenApplicationIDForContainer", slotID, ulContainerNumber, ulIdHigh, ulIdLow);
    Starts(R"(

10:15:30 <id>:STRTOpenApplicationIDForContainer {Slot=7 Container Number1001 1002 1003 })",
           R"(
Command(OpenApplicationIDForContainer, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIOpenApplicationIDForContainer <rv>12345clks {})",
         R"(
Command(OpenApplicationIDForContainer, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetApplicationID) {
    const CK_ULONG ulIdHigh = 1001;
    const CK_ULONG ulIdLow = 1002;

    Call("CA_SetApplicationID", ulIdHigh, ulIdLow);
    Starts(R"(

10:15:30 <id>:STRTSetApplicationID {1001 1002 })",
           R"(
Command(SetApplicationID, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   ULong(0x3ea);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetApplicationID <rv>12345clks {})",
         R"(
Command(SetApplicationID, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetPrimarySlot) {
    auto* const pSlotID = At<CK_SLOT_ID>(0x12345140);
    Answer([=] { *pSlotID = 2001; });

    Call("CA_GetPrimarySlot", hSession, pSlotID);
    Starts(R"(

10:15:30 <id>:STRTGetPrimarySlot {Sesn=81 Ptr=0x12345140 })",
           R"(
Command(GetPrimarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetPrimarySlot <rv>12345clks {Sesn=81 Ptr=0x12345140 Slot=2001 })",
         R"(
Command(GetPrimarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   SlotID(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetPrimarySlot <rv>12345clks {})",
         R"(
Command(GetPrimarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetPrimarySlot", hSession, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetPrimarySlot {Sesn=81 Ptr=0x0 })",
           R"(
Command(GetPrimarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetPrimarySlot <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(GetPrimarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_GetSecondarySlot) {
    auto* const pSlotID = At<CK_SLOT_ID>(0x12345140);
    Answer([=] { *pSlotID = 2001; });

    Call("CA_GetSecondarySlot", hSession, pSlotID);
    Starts(R"(

10:15:30 <id>:STRTGetSecondarySlot {Sesn=81 Ptr=0x12345140 })",
           R"(
Command(GetSecondarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetSecondarySlot <rv>12345clks {Sesn=81 Ptr=0x12345140 Slot=2001 })",
         R"(
Command(GetSecondarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   SlotID(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetSecondarySlot <rv>12345clks {})",
         R"(
Command(GetSecondarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetSecondarySlot", hSession, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetSecondarySlot {Sesn=81 Ptr=0x0 })",
           R"(
Command(GetSecondarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetSecondarySlot <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(GetSecondarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_SwitchSecondarySlot) {
    const CK_ULONG ulInstance = 1001;

    Call("CA_SwitchSecondarySlot", hSession, slotID, ulInstance);
    Starts(R"(

10:15:30 <id>:STRTSwitchSecondarySlot {Sesn=81 Slot=7 1001 })",
           R"(
Command(SwitchSecondarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   SlotID(0x7);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISwitchSecondarySlot <rv>12345clks {})",
         R"(
Command(SwitchSecondarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CloseSecondarySession) {
    const CK_ULONG ulInstance = 1001;

    Call("CA_CloseSecondarySession", hSession, slotID, ulInstance);
    Starts(R"(

10:15:30 <id>:STRTCloseSecondarySession {Sesn=81 Slot=7 1001 })",
           R"(
Command(CloseSecondarySession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   SlotID(0x7);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloseSecondarySession <rv>12345clks {})",
         R"(
Command(CloseSecondarySession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CloseAllSecondarySessions) {
    Call("CA_CloseAllSecondarySessions", hSession);
    Starts(R"(

10:15:30 <id>:STRTCloseAllSecondarySessions {Sesn=81 })",
           R"(
Command(CloseAllSecondarySessions, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloseAllSecondarySessions <rv>12345clks {})",
         R"(
Command(CloseAllSecondarySessions, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_ChoosePrimarySlot) {
    Call("CA_ChoosePrimarySlot", hSession);
    Starts(R"(

10:15:30 <id>:STRTChoosePrimarySlot {Sesn=81 })",
           R"(
Command(ChoosePrimarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIChoosePrimarySlot <rv>12345clks {})",
         R"(
Command(ChoosePrimarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_ChooseSecondarySlot) {
    Call("CA_ChooseSecondarySlot", hSession);
    Starts(R"(

10:15:30 <id>:STRTChooseSecondarySlot {Sesn=81 })",
           R"(
Command(ChooseSecondarySlot, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIChooseSecondarySlot <rv>12345clks {})",
         R"(
Command(ChooseSecondarySlot, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CheckOperationState) {
    const CK_ULONG ulOperation = 1001;

    Call("CA_CheckOperationState", hSession, ulOperation);
    Starts(R"(

10:15:30 <id>:STRTCheckOperationState {Sesn=81 1001 })",
           R"(
Command(CheckOperationState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICheckOperationState <rv>12345clks {})",
         R"(
Command(CheckOperationState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}
