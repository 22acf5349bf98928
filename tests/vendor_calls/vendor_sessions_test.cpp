#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_OpenSession) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_FLAGS flags = 1002;
    auto* const pApplication = At<CK_BYTE>(0x123451c0);
    const CK_ULONG Notify = 1003;
    auto* const phSession = At<CK_SESSION_HANDLE>(0x12345240);
    Answer([=] { *phSession = 2001; });

    Call("CA_OpenSession", slotID, ulContainerNumber, flags, pApplication, Notify, phSession);
    Starts("Slot=7 1001 Flgs=1002 305418688 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x123451c0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 1001 Flgs=1002 305418688 Sesn=2001 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x123451c0);
   SessionHandle(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_OpenSession", slotID, ulContainerNumber, flags, nullptr, Notify, nullptr);
    Starts("Slot=7 1001 Flgs=1002 0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 1001 Flgs=1002 0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Flags(0x3ea);
   ULong(0x0);)");
}

TEST_P(VendorRecords, CA_CloseApplicationIDForContainer) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulIdHigh = 1002;
    const CK_ULONG ulIdLow = 1003;

    Call("CA_CloseApplicationIDForContainer", slotID, ulContainerNumber, ulIdHigh, ulIdLow);
    Starts("Slot=7 Container Number1001 1002 1003 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_OpenApplicationID) {
    const CK_ULONG ulIdHigh = 1001;
    const CK_ULONG ulIdLow = 1002;

    Call("CA_OpenApplicationID", slotID, ulIdHigh, ulIdLow);
    Starts("Slot=7 1001 1002 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_OpenApplicationIDForContainer) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulIdHigh = 1002;
    const CK_ULONG ulIdLow = 1003;

    Call("CA_OpenApplicationIDForContainer", slotID, ulContainerNumber, ulIdHigh, ulIdLow);
    Starts("Slot=7 Container Number1001 1002 1003 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetApplicationID) {
    const CK_ULONG ulIdHigh = 1001;
    const CK_ULONG ulIdLow = 1002;

    Call("CA_SetApplicationID", ulIdHigh, ulIdLow);
    Starts("1001 1002 ",
           R"(
   ULong(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetPrimarySlot) {
    auto* const pSlotID = At<CK_SLOT_ID>(0x12345140);
    Answer([=] { *pSlotID = 2001; });

    Call("CA_GetPrimarySlot", hSession, pSlotID);
    Starts("Sesn=81 Ptr=0x12345140 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x12345140 Slot=2001 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   SlotID(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetPrimarySlot", hSession, nullptr);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetSecondarySlot) {
    auto* const pSlotID = At<CK_SLOT_ID>(0x12345140);
    Answer([=] { *pSlotID = 2001; });

    Call("CA_GetSecondarySlot", hSession, pSlotID);
    Starts("Sesn=81 Ptr=0x12345140 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x12345140 Slot=2001 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   SlotID(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetSecondarySlot", hSession, nullptr);
    Starts("Sesn=81 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_SwitchSecondarySlot) {
    const CK_ULONG ulInstance = 1001;

    Call("CA_SwitchSecondarySlot", hSession, slotID, ulInstance);
    Starts("Sesn=81 Slot=7 1001 ",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CloseSecondarySession) {
    const CK_ULONG ulInstance = 1001;

    Call("CA_CloseSecondarySession", hSession, slotID, ulInstance);
    Starts("Sesn=81 Slot=7 1001 ",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CloseAllSecondarySessions) {
    Call("CA_CloseAllSecondarySessions", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_ChoosePrimarySlot) {
    Call("CA_ChoosePrimarySlot", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_ChooseSecondarySlot) {
    Call("CA_ChooseSecondarySlot", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CheckOperationState) {
    const CK_ULONG ulOperation = 1001;

    Call("CA_CheckOperationState", hSession, ulOperation);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}
