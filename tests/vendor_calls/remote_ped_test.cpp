#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_InitializeRemotePEDVector) {
    Call("CA_InitializeRemotePEDVector", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_DeleteRemotePEDVector) {
    Call("CA_DeleteRemotePEDVector", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetRemotePEDVectorStatus) {
    auto* const pulStatus = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulStatus = 2001; });

    Call("CA_GetRemotePEDVectorStatus", slotID, pulStatus);
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

    Call("CA_GetRemotePEDVectorStatus", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_ConfigureRemotePED) {
    auto* const pHostName = TextAt(0x12345140, "the host name");
    const CK_ULONG ulPort = 1001;
    auto* const pulPedId = At<CK_ULONG>(0x123451c0);
    Answer([=] { *pulPedId = 2001; });

    Call("CA_ConfigureRemotePED", slotID, pHostName, ulPort, pulPedId);
    Starts(R"(Slot=7 "the host name" 1001 )",
           R"(
   SlotID(0x7);
   ByteString(SimpleText"the host name");
   ULong(0x3e9);)");
    Ends(kSuccessOrTooSmall, R"(Slot=7 "the host name" 1001 Ptr=0x123451c0 2001 )",
         R"(
   SlotID(0x7);
   ByteString(SimpleText"the host name");
   ULong(0x3e9);
   Pointer(0x123451c0);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_ConfigureRemotePED", slotID, nullptr, ulPort, nullptr);
    Starts("Slot=7 1001 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);)");
    Ends(kSuccessOrTooSmall, "Slot=7 1001 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_DismantleRemotePED) {
    const CK_ULONG ulPedId = 1001;

    Call("CA_DismantleRemotePED", slotID, ulPedId);
    Starts("Slot=7 1001 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SpRawRead) {
    auto* const pData = At<CK_BYTE>(0x12345140);

    Call("CA_SpRawRead", slotID, pData);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kEveryResult);

    Call("CA_SpRawRead", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_SpRawWrite) {
    auto* const pData = At<CK_BYTE>(0x12345140);

    Call("CA_SpRawWrite", slotID, pData);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kEveryResult);

    Call("CA_SpRawWrite", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccess);
}
