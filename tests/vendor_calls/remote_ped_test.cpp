#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_InitializeRemotePEDVector) {
    Call("CA_InitializeRemotePEDVector", hSession);
    Starts(R"(

10:15:30 <id>:STRTInitializeRemotePEDVector {Sesn=81 })",
           R"(
Command(InitializeRemotePEDVector, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIInitializeRemotePEDVector <rv>12345clks {})",
         R"(
Command(InitializeRemotePEDVector, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_DeleteRemotePEDVector) {
    Call("CA_DeleteRemotePEDVector", hSession);
    Starts(R"(

10:15:30 <id>:STRTDeleteRemotePEDVector {Sesn=81 })",
           R"(
Command(DeleteRemotePEDVector, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIDeleteRemotePEDVector <rv>12345clks {})",
         R"(
Command(DeleteRemotePEDVector, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetRemotePEDVectorStatus) {
    auto* const pulStatus = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulStatus = 2001; });

    Call("CA_GetRemotePEDVectorStatus", slotID, pulStatus);
    Starts(R"(

10:15:30 <id>:STRTGetRemotePEDVectorStatus {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetRemotePEDVectorStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetRemotePEDVectorStatus <rv>12345clks {Slot=7 Ptr=0x12345140 2001 })",
         R"(
Command(GetRemotePEDVectorStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetRemotePEDVectorStatus <rv>12345clks {})",
         R"(
Command(GetRemotePEDVectorStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetRemotePEDVectorStatus", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetRemotePEDVectorStatus {Slot=7 Ptr=0x0 })",
           R"(
Command(GetRemotePEDVectorStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetRemotePEDVectorStatus <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetRemotePEDVectorStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_ConfigureRemotePED) {
    auto* const pHostName = TextAt(0x12345140, "the host name");
    const CK_ULONG ulPort = 1001;
    auto* const pulPedId = At<CK_ULONG>(0x123451c0);
    Answer([=] { *pulPedId = 2001; });

    Call("CA_ConfigureRemotePED", slotID, pHostName, ulPort, pulPedId);
    Starts(R"(

10:15:30 <id>:STRTConfigureRemotePED {Slot=7 "the host name" 1001 })",
           R"(
Command(ConfigureRemotePED, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ByteString(SimpleText"the host name");
   ULong(0x3e9);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIConfigureRemotePED <rv>12345clks {Slot=7 "the host name" 1001 Ptr=0x123451c0 2001 })",
         R"(
Command(ConfigureRemotePED, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ByteString(SimpleText"the host name");
   ULong(0x3e9);
   Pointer(0x123451c0);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIConfigureRemotePED <rv>12345clks {})",
         R"(
Command(ConfigureRemotePED, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_ConfigureRemotePED", slotID, nullptr, ulPort, nullptr);
    Starts(R"(

10:15:30 <id>:STRTConfigureRemotePED {Slot=7 1001 })",
           R"(
Command(ConfigureRemotePED, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIConfigureRemotePED <rv>12345clks {Slot=7 1001 Ptr=0x0 })",
         R"(
Command(ConfigureRemotePED, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_DismantleRemotePED) {
    const CK_ULONG ulPedId = 1001;

    Call("CA_DismantleRemotePED", slotID, ulPedId);
    Starts(R"(

10:15:30 <id>:STRTDismantleRemotePED {Slot=7 1001 })",
           R"(
Command(DismantleRemotePED, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIDismantleRemotePED <rv>12345clks {})",
         R"(
Command(DismantleRemotePED, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SpRawRead) {
    auto* const pData = At<CK_BYTE>(0x12345140);

    Call("CA_SpRawRead", slotID, pData);
    Starts(R"(

10:15:30 <id>:STRTSpRawRead {Slot=7 Ptr=0x12345140 })",
           R"(
Command(SpRawRead, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISpRawRead <rv>12345clks {})",
         R"(
Command(SpRawRead, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_SpRawRead", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTSpRawRead {Slot=7 Ptr=0x0 })",
           R"(
Command(SpRawRead, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINISpRawRead <rv>12345clks {})",
         R"(
Command(SpRawRead, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SpRawWrite) {
    auto* const pData = At<CK_BYTE>(0x12345140);

    Call("CA_SpRawWrite", slotID, pData);
    Starts(R"(

10:15:30 <id>:STRTSpRawWrite {Slot=7 Ptr=0x12345140 })",
           R"(
Command(SpRawWrite, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISpRawWrite <rv>12345clks {})",
         R"(
Command(SpRawWrite, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_SpRawWrite", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTSpRawWrite {Slot=7 Ptr=0x0 })",
           R"(
Command(SpRawWrite, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINISpRawWrite <rv>12345clks {})",
         R"(
Command(SpRawWrite, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}
