#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_SetMofN) {
    Call("CA_SetMofN", CK_TRUE);
    Starts("true ",
           R"(
   ByteBooleantrue;)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GenerateMofN) {
    Call("CA_GenerateMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GenerateCloneableMofN) {
    Call("CA_GenerateCloneableMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_ModifyMofN) {
    Call("CA_ModifyMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CloneMofN) {
    Call("CA_CloneMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CloneModifyMofN) {
    Call("CA_CloneModifyMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_ActivateMofN) {
    Call("CA_ActivateMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_DeactivateMofN) {
    Call("CA_DeactivateMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetMofNStatus) {
    auto* const pStatus = At<CA_M_OF_N_STATUS>(0x12345140);
    Answer([=] { *pStatus = {{2001, 2002, 2003, 2004, 2005}}; });

    Call("CA_GetMofNStatus", slotID, pStatus);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kSuccessOrTooSmall, "Slot=7 MofNStatus={2001 2002 2003 2004 2005 } ",
         R"(
   SlotID(0x7);
   MofNStatusInfo
   {
      ULong(0x7d1);
      ULong(0x7d2);
      ULong(0x7d3);
      ULong(0x7d4);
      ULong(0x7d5);
   };)");
    Ends(kOtherErrors);

    Call("CA_GetMofNStatus", slotID, nullptr);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kSuccessOrTooSmall, "Slot=7 ",
         R"(
   SlotID(0x7);)");
}

TEST_P(VendorRecords, CA_DuplicateMofN) {
    Call("CA_DuplicateMofN", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_IsMofNEnabled) {
    auto* const pulEnabled = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulEnabled = 2001; });

    Call("CA_IsMofNEnabled", slotID, pulEnabled);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 enabled=2001 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_IsMofNEnabled", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_IsMofNRequired) {
    auto* const pulRequired = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulRequired = 2001; });

    Call("CA_IsMofNRequired", slotID, pulRequired);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 required=2001 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_IsMofNRequired", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}
