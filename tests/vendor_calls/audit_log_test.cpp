#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_InitAudit) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    const CK_ULONG ulPinLen = 7;
    auto* const pLabel = TextAt(0x123451c0, "the label");

    Call("CA_InitAudit", slotID, pPin, ulPinLen, pLabel);
    Starts(R"(

10:15:30 <id>:STRTInitAudit {Slot=7 Ptr=0x12345140 7 PIN="********" Ptr=0x123451c0 (9,"the label") "the label" })",
           R"(
Command(InitAudit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7);
   ByteString(SimpleText"********");
   Pointer(0x123451c0);
   ByteString(9,"the label");Value(SimpleText"the label");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIInitAudit <rv>12345clks {})",
         R"(
Command(InitAudit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_InitAudit", slotID, nullptr, ulPinLen, nullptr);
    Starts(R"(

10:15:30 <id>:STRTInitAudit {Slot=7 Ptr=0x0 7 PIN="<null>" Ptr=0x0 })",
           R"(
Command(InitAudit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIInitAudit <rv>12345clks {})",
         R"(
Command(InitAudit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_LogVerify) {
    auto* const pMessages = At<CK_BYTE>(0x12345140);
    const CK_ULONG ulMessageCount = 1001;
    const CK_ULONG ulChained = 1002;
    auto* const pulVerified = At<CK_ULONG>(0x12345200);
    Answer([=] { *pulVerified = 2001; });

    Call("CA_LogVerify", hSession, pMessages, ulMessageCount, ulChained, pulVerified);
    Starts(R"(

10:15:30 <id>:STRTLogVerify {Sesn=81 Ptr=0x12345140 1001 1002 Ptr=0x12345200 })",
           R"(
Command(LogVerify, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x12345200);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogVerify <rv>12345clks {Sesn=81 Ptr=0x12345140 1001 1002 Ptr=0x12345200 2001 })",
         R"(
Command(LogVerify, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x12345200);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILogVerify <rv>12345clks {})",
         R"(
Command(LogVerify, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogVerify", hSession, nullptr, ulMessageCount, ulChained, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLogVerify {Sesn=81 Ptr=0x0 1001 1002 Ptr=0x0 })",
           R"(
Command(LogVerify, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogVerify <rv>12345clks {Sesn=81 Ptr=0x0 1001 1002 Ptr=0x0 })",
         R"(
Command(LogVerify, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_LogVerifyFile) {
    auto* const pFileName = TextAt(0x12345140, "the file name");
    auto* const pulVerified = At<CK_ULONG>(0x12345180);
    Answer([=] { *pulVerified = 2001; });

    Call("CA_LogVerifyFile", hSession, pFileName, pulVerified);
    Starts(R"(

10:15:30 <id>:STRTLogVerifyFile {Sesn=81 Ptr=0x12345140 (13,"the file name") "the file name" Ptr=0x12345180 })",
           R"(
Command(LogVerifyFile, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(13,"the file name");Value(SimpleText"the file name");
   Pointer(0x12345180);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogVerifyFile <rv>12345clks {Sesn=81 Ptr=0x12345140 (13,"the file name") "the file name" Ptr=0x12345180 2001 })",
         R"(
Command(LogVerifyFile, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(13,"the file name");Value(SimpleText"the file name");
   Pointer(0x12345180);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILogVerifyFile <rv>12345clks {})",
         R"(
Command(LogVerifyFile, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogVerifyFile", hSession, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLogVerifyFile {Sesn=81 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(LogVerifyFile, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogVerifyFile <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(LogVerifyFile, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_LogExternal) {
    auto* const pMessage = TextAt(0x12345180, "the message and more");
    const CK_ULONG ulMessageLen = 11;

    Call("CA_LogExternal", slotID, hSession, pMessage, ulMessageLen);
    Starts(R"(

10:15:30 <id>:STRTLogExternal {Slot=7 Sesn=81 Ptr=0x12345180 11 (11,"the message") "the message" })",
           R"(
Command(LogExternal, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   SessionHandle(0x51);
   Pointer(0x12345180);
   ULong(0xb);
   ByteString(11,"the message");Value(SimpleText"the message");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINILogExternal <rv>12345clks {})",
         R"(
Command(LogExternal, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogExternal", slotID, hSession, nullptr, ulMessageLen);
    Starts(R"(

10:15:30 <id>:STRTLogExternal {Slot=7 Sesn=81 Ptr=0x0 11 })",
           R"(
Command(LogExternal, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xb);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINILogExternal <rv>12345clks {})",
         R"(
Command(LogExternal, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_LogImportSecret) {
    auto* const pLogSecret = TextAt(0x12345140, "the log secret and more");
    const CK_ULONG ulLogSecretLen = 14;

    Call("CA_LogImportSecret", hSession, pLogSecret, ulLogSecretLen);
    Starts(R"(

10:15:30 <id>:STRTLogImportSecret {Sesn=81 Ptr=0x12345140 "the log secret" })",
           R"(
Command(LogImportSecret, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the log secret");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINILogImportSecret <rv>12345clks {})",
         R"(
Command(LogImportSecret, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogImportSecret", hSession, nullptr, ulLogSecretLen);
    Starts(R"(

10:15:30 <id>:STRTLogImportSecret {Sesn=81 Ptr=0x0 })",
           R"(
Command(LogImportSecret, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINILogImportSecret <rv>12345clks {})",
         R"(
Command(LogImportSecret, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_LogExportSecret) {
    auto* const pLogSecret = At<CK_BYTE>(0x12345140);
    auto* const pulLogSecretLen = At<CK_ULONG>(0x12345180);
    Before([=] { *pulLogSecretLen = 61; });
    Answer([=] {
        Put(pLogSecret, "returned log secret and more");
        *pulLogSecretLen = 19;
    });

    Call("CA_LogExportSecret", hSession, pLogSecret, pulLogSecretLen);
    Starts(R"(

10:15:30 <id>:STRTLogExportSecret {Sesn=81 Ptr=0x12345140 })",
           R"(
Command(LogExportSecret, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogExportSecret <rv>12345clks {Sesn=81 Ptr=0x12345140 "returned log secret" })",
         R"(
Command(LogExportSecret, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"returned log secret");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILogExportSecret <rv>12345clks {})",
         R"(
Command(LogExportSecret, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogExportSecret", hSession, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLogExportSecret {Sesn=81 Ptr=0x0 })",
           R"(
Command(LogExportSecret, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogExportSecret <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(LogExportSecret, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");

    Call("CA_LogExportSecret", hSession, nullptr, pulLogSecretLen);
    Starts(R"(

10:15:30 <id>:STRTLogExportSecret {Sesn=81 Ptr=0x0 })",
           R"(
Command(LogExportSecret, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINILogExportSecret <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(LogExportSecret, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_TimeSync) {
    const CK_ULONG ulTime = 1001;

    Call("CA_TimeSync", hSession, ulTime);
    Starts(R"(

10:15:30 <id>:STRTTimeSync {Sesn=81 1001 })",
           R"(
Command(TimeSync, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINITimeSync <rv>12345clks {})",
         R"(
Command(TimeSync, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetTime) {
    auto* const pulTime = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTime = 2001; });

    Call("CA_GetTime", hSession, pulTime);
    Starts(R"(

10:15:30 <id>:STRTGetTime {Sesn=81 Ptr=0x12345140 })",
           R"(
Command(GetTime, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTime <rv>12345clks {Sesn=81 Ptr=0x12345140 2001 })",
         R"(
Command(GetTime, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetTime <rv>12345clks {})",
         R"(
Command(GetTime, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetTime", hSession, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetTime {Sesn=81 Ptr=0x0 })",
           R"(
Command(GetTime, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetTime <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(GetTime, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_LogSetConfig) {
    const CK_ULONG ulMask = 1001;
    const CK_ULONG ulRotation = 1002;
    const CK_ULONG ulInterval = 1003;
    const CK_ULONG ulMaxSize = 1004;
    auto* const pPath = TextAt(0x12345240, "the path");

    Call("CA_LogSetConfig", hSession, ulMask, ulRotation, ulInterval, ulMaxSize, pPath);
    Starts(R"(

10:15:30 <id>:STRTLogSetConfig {Sesn=81 1001 1002 1003 1004 Ptr=0x12345240 (8,"the path") "the path" })",
           R"(
Command(LogSetConfig, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x12345240);
   ByteString(8,"the path");Value(SimpleText"the path");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINILogSetConfig <rv>12345clks {})",
         R"(
Command(LogSetConfig, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogSetConfig", hSession, ulMask, ulRotation, ulInterval, ulMaxSize, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLogSetConfig {Sesn=81 1001 1002 1003 1004 Ptr=0x0 })",
           R"(
Command(LogSetConfig, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x0);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINILogSetConfig <rv>12345clks {})",
         R"(
Command(LogSetConfig, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_LogGetConfig) {
    auto* const pulMask = At<CK_ULONG>(0x12345140);
    auto* const pulRotation = At<CK_ULONG>(0x12345180);
    auto* const pulInterval = At<CK_ULONG>(0x123451c0);
    auto* const pulMaxSize = At<CK_ULONG>(0x12345200);
    auto* const pPath = At<CK_BYTE>(0x12345240);
    Answer([=] {
        *pulMask = 2001;
        *pulRotation = 2002;
        *pulInterval = 2003;
        *pulMaxSize = 2004;
        Put(pPath, "returned path");
    });

    Call("CA_LogGetConfig", hSession, pulMask, pulRotation, pulInterval, pulMaxSize, pPath);
    Starts(R"(

10:15:30 <id>:STRTLogGetConfig {Sesn=81 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 })",
           R"(
Command(LogGetConfig, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogGetConfig <rv>12345clks {Sesn=81 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 2001 2002 2003 2004 (13,"returned path") "returned path" })",
         R"(
Command(LogGetConfig, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);
   ULong(0x7d4);
   ByteString(13,"returned path");Value(SimpleText"returned path");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILogGetConfig <rv>12345clks {})",
         R"(
Command(LogGetConfig, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogGetConfig", hSession, nullptr, nullptr, nullptr, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLogGetConfig {Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(LogGetConfig, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogGetConfig <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(LogGetConfig, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_LogGetStatus) {
    auto* const pulStatus1 = At<CK_ULONG>(0x12345140);
    auto* const pulStatus2 = At<CK_ULONG>(0x12345180);
    auto* const pulStatus3 = At<CK_ULONG>(0x123451c0);
    auto* const pulStatus4 = At<CK_ULONG>(0x12345200);
    auto* const pulStatus5 = At<CK_ULONG>(0x12345240);
    Answer([=] {
        *pulStatus1 = 2001;
        *pulStatus2 = 2002;
        *pulStatus3 = 2003;
        *pulStatus4 = 2004;
        *pulStatus5 = 2005;
    });

    Call("CA_LogGetStatus", slotID, pulStatus1, pulStatus2, pulStatus3, pulStatus4, pulStatus5);
    Starts(R"(

10:15:30 <id>:STRTLogGetStatus {Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 })",
           R"(
Command(LogGetStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogGetStatus <rv>12345clks {Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 2001 2002 2003 2004 2005 })",
         R"(
Command(LogGetStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);
   ULong(0x7d4);
   ULong(0x7d5);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINILogGetStatus <rv>12345clks {})",
         R"(
Command(LogGetStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_LogGetStatus", slotID, nullptr, nullptr, nullptr, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTLogGetStatus {Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(LogGetStatus, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINILogGetStatus <rv>12345clks {Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(LogGetStatus, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
})");
}
