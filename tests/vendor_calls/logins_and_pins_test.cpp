#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_InitIndirectToken) {
    Call("CA_InitIndirectToken", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_InitIndirectPIN) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    const CK_ULONG ulPinLen = 7;
    const CK_SESSION_HANDLE hPrimarySession = 1001;

    Call("CA_InitIndirectPIN", hSession, pPin, ulPinLen, hPrimarySession);
    Starts(R"(Sesn=81 PIN="********" Sesn=1001 )",
           R"(
   SessionHandle(0x51);
   ByteString(SimpleText"********");
   SessionHandle(0x3e9);)");
    Ends(kEveryResult);

    Call("CA_InitIndirectPIN", hSession, nullptr, ulPinLen, hPrimarySession);
    Starts(R"(Sesn=81 PIN="<null>" Sesn=1001 )",
           R"(
   SessionHandle(0x51);
   ByteString(SimpleText"<null>");
   SessionHandle(0x3e9);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_ResetPIN) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    const CK_ULONG ulPinLen = 7;

    Call("CA_ResetPIN", hSession, pPin, ulPinLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 7 PIN="********" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x7);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_ResetPIN", hSession, nullptr, ulPinLen);
    Starts(R"(Sesn=81 Ptr=0x0 7 PIN="<null>" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_InitRolePIN) {
    const CK_USER_TYPE userType = 1001;
    const CK_ULONG usOptions = 1002;
    auto* const pPin = TextAt(0x123451c0, "the pin and more");
    const CK_ULONG ulPinLen = 7;

    Call("CA_InitRolePIN", hSession, userType, usOptions, pPin, ulPinLen);
    Starts(R"(Sesn=81 User=1001 1002 Ptr=0x123451c0 7 PIN="********" )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x123451c0);
   ULong(0x7);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_InitRolePIN", hSession, userType, usOptions, nullptr, ulPinLen);
    Starts(R"(Sesn=81 User=1001 1002 Ptr=0x0 7 PIN="<null>" )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_InitSlotRolePIN) {
    const CK_USER_TYPE userType = 1001;
    const CK_ULONG usOptions = 1002;
    auto* const pPin = TextAt(0x12345200, "the pin and more");
    const CK_ULONG ulPinLen = 7;

    Call("CA_InitSlotRolePIN", hSession, slotID, userType, usOptions, pPin, ulPinLen);
    Starts(R"(Sesn=81 Slot=7 User=1001 1002 Ptr=0x12345200 7 PIN="********" )",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x12345200);
   ULong(0x7);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_InitSlotRolePIN", hSession, slotID, userType, usOptions, nullptr, ulPinLen);
    Starts(R"(Sesn=81 Slot=7 User=1001 1002 Ptr=0x0 7 PIN="<null>" )",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);
   UserType(0x3e9);
   UShort(0x3ea);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
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
    Starts(R"(Sesn=81 User=1001 1002 7 PIN="********" 305418816 305418880 )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"********");
   ULong(0x12345240);
   ULong(0x12345280);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 User=1001 1002 7 18 PIN="********" )",
         R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ULong(0x12);
   ByteString(SimpleText"********");)");
    Ends(kOtherErrors);

    Call("CA_CreateLoginChallenge", hSession, userType, usOptions, nullptr, ulPinLen, nullptr, nullptr);
    Starts(R"(Sesn=81 User=1001 1002 7 PIN="<null>" 0 0 )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"<null>");
   ULong(0x0);
   ULong(0x0);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 User=1001 1002 7 PIN="<null>" )",
         R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"<null>");)");

    Call("CA_CreateLoginChallenge", hSession, userType, usOptions, pPin, ulPinLen, nullptr, pulChallengeLen);
    Starts(R"(Sesn=81 User=1001 1002 7 PIN="********" 0 305418880 )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ByteString(SimpleText"********");
   ULong(0x0);
   ULong(0x12345280);)");
    Ends(kTooSmall, R"(Sesn=81 User=1001 1002 7 18 PIN="<null>" )",
         R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   UShort(0x3ea);
   ULong(0x7);
   ULong(0x12);
   ByteString(SimpleText"<null>");)");
}

TEST_P(VendorRecords, CA_Deactivate) {
    const CK_USER_TYPE userType = 1001;

    Call("CA_Deactivate", slotID, userType);
    Starts("Slot=7 User=1001 ",
           R"(
   SlotID(0x7);
   UserType(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_IndirectLogin) {
    const CK_USER_TYPE userType = 1001;
    const CK_SESSION_HANDLE hPrimarySession = 1002;

    Call("CA_IndirectLogin", hSession, userType, hPrimarySession);
    Starts("81 User=1001 1002 ",
           R"(
   ULong(0x51);
   UserType(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetPedId) {
    const CK_ULONG ulPedId = 1001;

    Call("CA_SetPedId", slotID, ulPedId);
    Starts("Slot=7 1001 ",
           R"(
   SlotID(0x7);
   UShort(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetPedId) {
    auto* const pulPedId = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulPedId = 2001; });

    Call("CA_GetPedId", slotID, pulPedId);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 2001 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   UShort(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetPedId", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}
