#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_FindAdminSlotForSlot) {
    auto* const pAdminSlotID = At<CK_SLOT_ID>(0x12345140);
    auto* const pOtherSlotID = At<CK_SLOT_ID>(0x12345180);
    Answer([=] {
        *pAdminSlotID = 2001;
        *pOtherSlotID = 2002;
    });

    Call("CA_FindAdminSlotForSlot", slotID, pAdminSlotID, pOtherSlotID);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 Ptr=0x12345180 Slot=2001 Slot=2002 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   SlotID(0x7d1);
   SlotID(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_FindAdminSlotForSlot", slotID, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_TokenInsert) {
    auto* const pTokenHandle = At<CK_BYTE>(0x12345140);

    Call("CA_TokenInsert", hSession, pTokenHandle, slotID);
    Starts("Sesn=81 Ptr=0x12345140 Slot=7 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   SlotID(0x7);)");
    Ends(kEveryResult);

    Call("CA_TokenInsert", hSession, nullptr, slotID);
    Starts("Sesn=81 Ptr=0x0 Slot=7 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   SlotID(0x7);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_TokenInsertNoAuth) {
    auto* const pTokenHandle = At<CK_BYTE>(0x12345100);

    Call("CA_TokenInsertNoAuth", pTokenHandle, slotID);
    Starts("Ptr=0x12345100 Slot=7 ",
           R"(
   Pointer(0x12345100);
   SlotID(0x7);)");
    Ends(kEveryResult);

    Call("CA_TokenInsertNoAuth", nullptr, slotID);
    Starts("Ptr=0x0 Slot=7 ",
           R"(
   Pointer(0x0);
   SlotID(0x7);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_TokenZeroize) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_TokenZeroize", slotID, flags, ulOption);
    Starts("Slot=7 Flgs=1001 1002 ",
           R"(
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_TokenDelete) {
    Call("CA_TokenDelete", hSession, slotID);
    Starts("Sesn=81 Slot=7 ",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GenerateTokenKeys) {
    Call("CA_GenerateTokenKeys", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetTokenCertificateInfo) {
    Call("CA_GetTokenCertificateInfo", slotID);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetTokenCertificateSignature) {
    Call("CA_SetTokenCertificateSignature", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetTokenInsertionCount) {
    auto* const pulCount = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulCount = 2001; });

    Call("CA_GetTokenInsertionCount", slotID, pulCount);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 cnt=2001 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetTokenInsertionCount", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
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
    Starts("1001 Ptr=0x12345140 Ptr=0x12345180 61 ",
           R"(
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(1001 Ptr=0x12345140 Ptr=0x12345180 13 "returned data" )",
         R"(
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(SimpleText"returned data");)");
    Ends(kOtherErrors);

    Call("CA_ReadCommonStore", ulIndex, nullptr, nullptr);
    Starts("1001 Ptr=0x0 Ptr=0x0 ",
           R"(
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "1001 Ptr=0x0 Ptr=0x0 ",
         R"(
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_ReadCommonStore", ulIndex, nullptr, pulDataLen);
    Starts("1001 Ptr=0x0 Ptr=0x12345180 61 ",
           R"(
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kTooSmall, "1001 Ptr=0x0 Ptr=0x12345180 13 ",
         R"(
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0xd);)");
}

TEST_P(VendorRecords, CA_WriteCommonStore) {
    const CK_ULONG ulIndex = 1001;
    auto* const pData = TextAt(0x12345140, "the data and more");
    const CK_ULONG ulDataLen = 8;

    Call("CA_WriteCommonStore", ulIndex, pData, ulDataLen);
    Starts(R"(1001 Ptr=0x12345140 "the data" 8 )",
           R"(
   ULong(0x3e9);
   Pointer(0x12345140);
   ByteString(SimpleText"the data");
   ULong(0x8);)");
    Ends(kEveryResult);

    Call("CA_WriteCommonStore", ulIndex, nullptr, ulDataLen);
    Starts("1001 Ptr=0x0 8 ",
           R"(
   ULong(0x3e9);
   Pointer(0x0);
   ULong(0x8);)");
    Ends(kSuccess);
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
    Starts("Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 61 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 21 "returned certificates" )",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x15);
   ByteString(SimpleText"returned certificates");)");
    Ends(kOtherErrors);

    Call("CA_GetTokenCertificates", slotID, ulCertificateType, nullptr, nullptr);
    Starts("Slot=7 1001 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 1001 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetTokenCertificates", slotID, ulCertificateType, nullptr, pulCertificatesLen);
    Starts("Slot=7 1001 Ptr=0x0 Ptr=0x123451c0 61 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x3d);)");
    Ends(kTooSmall, "Slot=7 1001 Ptr=0x0 Ptr=0x123451c0 21 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x15);)");
}

TEST_P(VendorRecords, CA_GetTunnelSlotNumber) {
    auto* const pulTunnelSlot = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTunnelSlot = 2001; });

    Call("CA_GetTunnelSlotNumber", slotID, pulTunnelSlot);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 2001 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetTunnelSlotNumber", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_EnableUnauthTokenInsertion) {
    const CK_ULONG ulMaximum = 1001;
    auto* const pulContext = At<CK_ULONG>(0x12345180);
    Answer([=] { *pulContext = 2001; });

    Call("CA_EnableUnauthTokenInsertion", hSession, ulMaximum, pulContext);
    Starts("Sesn=81 Max=1001 Ptr=0x12345180 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Max=1001 Ptr=0x12345180 Ctxt=2001 ",
         R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_EnableUnauthTokenInsertion", hSession, ulMaximum, nullptr);
    Starts("Sesn=81 Max=1001 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Max=1001 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);)");
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
    Starts("Sesn=81 Ctxt=1001 Ptr=0x12345180 Ptr=0x123451c0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ctxt=1001 Ptr=0x12345180 Ptr=0x123451c0 Max=2001 Cur=2002 ",
         R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x7d1);
   ULong(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_GetUnauthTokenInsertionStatus", hSession, ulContext, nullptr, nullptr);
    Starts("Sesn=81 Ctxt=1001 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ctxt=1001 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_DisableUnauthTokenInsertion) {
    const CK_ULONG ulContext = 1001;

    Call("CA_DisableUnauthTokenInsertion", hSession, ulContext);
    Starts("Sesn=81 Ctxt=1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}
