#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_InitAudit) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    const CK_ULONG ulPinLen = 7;
    auto* const pLabel = TextAt(0x123451c0, "the label");

    Call("CA_InitAudit", slotID, pPin, ulPinLen, pLabel);
    Starts(R"(Slot=7 Ptr=0x12345140 7 PIN="********" Ptr=0x123451c0 (9,"the label") "the label" )",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7);
   ByteString(SimpleText"********");
   Pointer(0x123451c0);
   ByteString(9,"the label");Value(SimpleText"the label");)");
    Ends(kEveryResult);

    Call("CA_InitAudit", slotID, nullptr, ulPinLen, nullptr);
    Starts(R"(Slot=7 Ptr=0x0 7 PIN="<null>" Ptr=0x0 )",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
   Pointer(0x0);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_LogVerify) {
    auto* const pMessages = At<CK_BYTE>(0x12345140);
    const CK_ULONG ulMessageCount = 1001;
    const CK_ULONG ulChained = 1002;
    auto* const pulVerified = At<CK_ULONG>(0x12345200);
    Answer([=] { *pulVerified = 2001; });

    Call("CA_LogVerify", hSession, pMessages, ulMessageCount, ulChained, pulVerified);
    Starts("Sesn=81 Ptr=0x12345140 1001 1002 Ptr=0x12345200 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x12345140 1001 1002 Ptr=0x12345200 2001 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x12345200);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_LogVerify", hSession, nullptr, ulMessageCount, ulChained, nullptr);
    Starts("Sesn=81 Ptr=0x0 1001 1002 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 1001 1002 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_LogVerifyFile) {
    auto* const pFileName = TextAt(0x12345140, "the file name");
    auto* const pulVerified = At<CK_ULONG>(0x12345180);
    Answer([=] { *pulVerified = 2001; });

    Call("CA_LogVerifyFile", hSession, pFileName, pulVerified);
    Starts(R"(Sesn=81 Ptr=0x12345140 (13,"the file name") "the file name" Ptr=0x12345180 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(13,"the file name");Value(SimpleText"the file name");
   Pointer(0x12345180);)");
    Ends(kSuccessOrTooSmall,
         R"(Sesn=81 Ptr=0x12345140 (13,"the file name") "the file name" Ptr=0x12345180 2001 )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(13,"the file name");Value(SimpleText"the file name");
   Pointer(0x12345180);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_LogVerifyFile", hSession, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_LogExternal) {
    auto* const pMessage = TextAt(0x12345180, "the message and more");
    const CK_ULONG ulMessageLen = 11;

    Call("CA_LogExternal", slotID, hSession, pMessage, ulMessageLen);
    Starts(R"(Slot=7 Sesn=81 Ptr=0x12345180 11 (11,"the message") "the message" )",
           R"(
   SlotID(0x7);
   SessionHandle(0x51);
   Pointer(0x12345180);
   ULong(0xb);
   ByteString(11,"the message");Value(SimpleText"the message");)");
    Ends(kEveryResult);

    Call("CA_LogExternal", slotID, hSession, nullptr, ulMessageLen);
    Starts("Slot=7 Sesn=81 Ptr=0x0 11 ",
           R"(
   SlotID(0x7);
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xb);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_LogImportSecret) {
    auto* const pLogSecret = TextAt(0x12345140, "the log secret and more");
    const CK_ULONG ulLogSecretLen = 14;

    Call("CA_LogImportSecret", hSession, pLogSecret, ulLogSecretLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 "the log secret" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the log secret");)");
    Ends(kEveryResult);

    Call("CA_LogImportSecret", hSession, nullptr, ulLogSecretLen);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccess);
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
    Starts("Sesn=81 Ptr=0x12345140 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345140 "returned log secret" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"returned log secret");)");
    Ends(kOtherErrors);

    Call("CA_LogExportSecret", hSession, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");

    Call("CA_LogExportSecret", hSession, nullptr, pulLogSecretLen);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_TimeSync) {
    const CK_ULONG ulTime = 1001;

    Call("CA_TimeSync", hSession, ulTime);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetTime) {
    auto* const pulTime = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTime = 2001; });

    Call("CA_GetTime", hSession, pulTime);
    Starts("Sesn=81 Ptr=0x12345140 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x12345140 2001 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetTime", hSession, nullptr);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_LogSetConfig) {
    const CK_ULONG ulMask = 1001;
    const CK_ULONG ulRotation = 1002;
    const CK_ULONG ulInterval = 1003;
    const CK_ULONG ulMaxSize = 1004;
    auto* const pPath = TextAt(0x12345240, "the path");

    Call("CA_LogSetConfig", hSession, ulMask, ulRotation, ulInterval, ulMaxSize, pPath);
    Starts(R"(Sesn=81 1001 1002 1003 1004 Ptr=0x12345240 (8,"the path") "the path" )",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x12345240);
   ByteString(8,"the path");Value(SimpleText"the path");)");
    Ends(kEveryResult);

    Call("CA_LogSetConfig", hSession, ulMask, ulRotation, ulInterval, ulMaxSize, nullptr);
    Starts("Sesn=81 1001 1002 1003 1004 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x0);)");
    Ends(kSuccess);
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
    Starts("Sesn=81 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Sesn=81 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 2001 2002 2003 2004 (13,"returned path") "returned path" )",
        R"(
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
   ByteString(13,"returned path");Value(SimpleText"returned path");)");
    Ends(kOtherErrors);

    Call("CA_LogGetConfig", hSession, nullptr, nullptr, nullptr, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
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
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 2001 2002 2003 "
         "2004 2005 ",
         R"(
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
   ULong(0x7d5);)");
    Ends(kOtherErrors);

    Call("CA_LogGetStatus", slotID, nullptr, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}
