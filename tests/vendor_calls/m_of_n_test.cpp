#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_SetMofN) {
    Call("CA_SetMofN", CK_TRUE);
    Starts(R"(

10:15:30 <id>:STRTSetMofN {true })",
           R"(
Command(SetMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteBooleantrue;
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetMofN <rv>12345clks {})",
         R"(
Command(SetMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GenerateMofN) {
    Call("CA_GenerateMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTGenerateMofN {Sesn=81 })",
           R"(
Command(GenerateMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIGenerateMofN <rv>12345clks {})",
         R"(
Command(GenerateMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GenerateCloneableMofN) {
    Call("CA_GenerateCloneableMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTGenerateCloneableMofN {Sesn=81 })",
           R"(
Command(GenerateCloneableMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIGenerateCloneableMofN <rv>12345clks {})",
         R"(
Command(GenerateCloneableMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_ModifyMofN) {
    Call("CA_ModifyMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTModifyMofN {Sesn=81 })",
           R"(
Command(ModifyMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIModifyMofN <rv>12345clks {})",
         R"(
Command(ModifyMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CloneMofN) {
    Call("CA_CloneMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTCloneMofN {Sesn=81 })",
           R"(
Command(CloneMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloneMofN <rv>12345clks {})",
         R"(
Command(CloneMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CloneModifyMofN) {
    Call("CA_CloneModifyMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTCloneModifyMofN {Sesn=81 })",
           R"(
Command(CloneModifyMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloneModifyMofN <rv>12345clks {})",
         R"(
Command(CloneModifyMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_ActivateMofN) {
    Call("CA_ActivateMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTActivateMofN {Sesn=81 })",
           R"(
Command(ActivateMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIActivateMofN <rv>12345clks {})",
         R"(
Command(ActivateMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_DeactivateMofN) {
    Call("CA_DeactivateMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTDeactivateMofN {Sesn=81 })",
           R"(
Command(DeactivateMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIDeactivateMofN <rv>12345clks {})",
         R"(
Command(DeactivateMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetMofNStatus) {
    auto* const pStatus = At<CA_M_OF_N_STATUS>(0x12345140);
    Answer([=] { *pStatus = {{2001, 2002, 2003, 2004, 2005}}; });

    Call("CA_GetMofNStatus", slotID, pStatus);
    Starts(R"(

10:15:30 <id>:STRTGetMofNStatus {Slot=7 })",
           R"(
Command(GetMofNStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetMofNStatus <rv>12345clks {Slot=7 MofNStatus={2001 2002 2003 2004 2005 } })",
         R"(
Command(GetMofNStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   MofNStatusInfo
   {
      ULong(0x7d1);
      ULong(0x7d2);
      ULong(0x7d3);
      ULong(0x7d4);
      ULong(0x7d5);
   };
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetMofNStatus <rv>12345clks {})",
         R"(
Command(GetMofNStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetMofNStatus", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetMofNStatus {Slot=7 })",
           R"(
Command(GetMofNStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetMofNStatus <rv>12345clks {Slot=7 })",
         R"(
Command(GetMofNStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
})");
}

TEST_P(VendorRecords, CA_DuplicateMofN) {
    Call("CA_DuplicateMofN", hSession);
    Starts(R"(

10:15:30 <id>:STRTDuplicateMofN {Sesn=81 })",
           R"(
Command(DuplicateMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIDuplicateMofN <rv>12345clks {})",
         R"(
Command(DuplicateMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_IsMofNEnabled) {
    auto* const pulEnabled = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulEnabled = 2001; });

    Call("CA_IsMofNEnabled", slotID, pulEnabled);
    Starts(R"(

10:15:30 <id>:STRTIsMofNEnabled {Slot=7 Ptr=0x12345140 })",
           R"(
Command(IsMofNEnabled, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIIsMofNEnabled <rv>12345clks {Slot=7 Ptr=0x12345140 enabled=2001 })",
         R"(
Command(IsMofNEnabled, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIIsMofNEnabled <rv>12345clks {})",
         R"(
Command(IsMofNEnabled, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_IsMofNEnabled", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTIsMofNEnabled {Slot=7 Ptr=0x0 })",
           R"(
Command(IsMofNEnabled, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIIsMofNEnabled <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(IsMofNEnabled, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_IsMofNRequired) {
    auto* const pulRequired = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulRequired = 2001; });

    Call("CA_IsMofNRequired", slotID, pulRequired);
    Starts(R"(

10:15:30 <id>:STRTIsMofNRequired {Slot=7 Ptr=0x12345140 })",
           R"(
Command(IsMofNRequired, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIIsMofNRequired <rv>12345clks {Slot=7 Ptr=0x12345140 required=2001 })",
         R"(
Command(IsMofNRequired, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIIsMofNRequired <rv>12345clks {})",
         R"(
Command(IsMofNRequired, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_IsMofNRequired", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTIsMofNRequired {Slot=7 Ptr=0x0 })",
           R"(
Command(IsMofNRequired, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIIsMofNRequired <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(IsMofNRequired, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}
