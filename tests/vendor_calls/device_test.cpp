#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_Restart) {
    Call("CA_Restart", slotID);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetModuleList) {
    Call("CA_GetModuleList", slotID);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetModuleInfo) {
    const CK_ULONG ulModuleId = 1001;
    auto* const pInfo = At<CK_BYTE>(0x12345180);

    Call("CA_GetModuleInfo", slotID, ulModuleId, pInfo);
    Starts("Slot=7 1001 Ptr=0x12345180 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);)");
    Ends(kEveryResult);

    Call("CA_GetModuleInfo", slotID, ulModuleId, nullptr);
    Starts("Slot=7 1001 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_LoadModule) {
    auto* const pulModuleId = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulModuleId = 2001; });

    Call("CA_LoadModule", hSession, pulModuleId);
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

    Call("CA_LoadModule", hSession, nullptr);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_LoadEncryptedModule) {
    auto* const pulModuleId = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulModuleId = 2001; });

    Call("CA_LoadEncryptedModule", hSession, pulModuleId);
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

    Call("CA_LoadEncryptedModule", hSession, nullptr);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_UnloadModule) {
    const CK_ULONG ulModuleId = 1001;

    Call("CA_UnloadModule", hSession, ulModuleId);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_PerformModuleCall) {
    const CK_ULONG ulModuleId = 1001;

    Call("CA_PerformModuleCall", hSession, ulModuleId);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
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
    Starts(
        R"(Sesn=81 1001 Ptr=0x12345180 "the first" Ptr=0x12345200 "the second" Ptr=0x12345280 "the third" )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   ByteString(SimpleText"the first");
   Pointer(0x12345200);
   ByteString(SimpleText"the second");
   Pointer(0x12345280);
   ByteString(SimpleText"the third");)");
    Ends(kEveryResult);

    Call("CA_FirmwareUpdate", hSession, ulTarget, nullptr, ulFirstLen, nullptr, ulSecondLen, nullptr,
         ulThirdLen);
    Starts("Sesn=81 1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_FirmwareRollback) {
    Call("CA_FirmwareRollback", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CapabilityUpdate) {
    auto* const pFirst = TextAt(0x12345140, "the first and more");
    const CK_ULONG ulFirstLen = 9;
    auto* const pSecond = TextAt(0x123451c0, "the second and more");
    const CK_ULONG ulSecondLen = 10;

    Call("CA_CapabilityUpdate", hSession, pFirst, ulFirstLen, pSecond, ulSecondLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 "the first" Ptr=0x123451c0 "the second" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the first");
   Pointer(0x123451c0);
   ByteString(SimpleText"the second");)");
    Ends(kEveryResult);

    Call("CA_CapabilityUpdate", hSession, nullptr, ulFirstLen, nullptr, ulSecondLen);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_GetRollbackFirmwareVersion) {
    auto* const pulVersion = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulVersion = 2001; });

    Call("CA_GetRollbackFirmwareVersion", slotID, pulVersion);
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

    Call("CA_GetRollbackFirmwareVersion", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_ResetDevice) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_ResetDevice", slotID, flags, ulOption);
    Starts("Slot=7 Flgs=1001 1002 ",
           R"(
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_Zeroize) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_Zeroize", slotID, flags, ulOption);
    Starts("Slot=7 Flgs=1001 1002 ",
           R"(
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_FactoryReset) {
    const CK_FLAGS flags = 1001;
    const CK_ULONG ulOption = 1002;

    Call("CA_FactoryReset", slotID, flags, ulOption);
    Starts("Slot=7 Flgs=1001 1002 ",
           R"(
   SlotID(0x7);
   Flags(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_MTKSetStorage) {
    const CK_ULONG ulStorage = 1001;

    Call("CA_MTKSetStorage", hSession, ulStorage);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_MTKRestore) {
    Call("CA_MTKRestore", slotID);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_MTKResplit) {
    Call("CA_MTKResplit", slotID);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_MTKZeroize) {
    Call("CA_MTKZeroize", slotID);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_MTKGetState) {
    auto* const pulState = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulState = 2001; });

    Call("CA_MTKGetState", slotID, pulState);
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

    Call("CA_MTKGetState", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetTSV) {
    auto* const pulTsv = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTsv = 2001; });

    Call("CA_GetTSV", slotID, pulTsv);
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

    Call("CA_GetTSV", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}
