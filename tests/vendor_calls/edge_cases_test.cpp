// The arguments of these calls are missing, too short or unusually large.
#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, FailedQuery_EndRecordShowsOnlyTheResult) {
    auto* const pulTunnelSlot = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTunnelSlot = 2001; });

    Call("CA_GetTunnelSlotNumber", slotID, pulTunnelSlot);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(kOtherErrors);
}

TEST_P(VendorRecords, SuccessWithoutAnOutputPointer_EndRecordShowsNoValue) {
    Call("CA_GetTunnelSlotNumber", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccess, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, LengthQuery_EndRecordShowsTheLengthThatIsNeeded) {
    auto* const pulNameLen = At<CK_ULONG>(0x12345140);
    Before([=] { *pulNameLen = 0; });
    Answer([=] { *pulNameLen = 40; });

    Call("CA_GetContainerName", slotID, 1001, nullptr, pulNameLen);
    Starts("Slot=7 1001 Ptr=0x0 Ptr=0x12345140 0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x0);)");
    Ends(kTooSmall, "Slot=7 1001 Ptr=0x0 Ptr=0x12345140 40 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x28);)");
}

TEST_P(VendorRecords, PaddedLabel_RecordShowsNothingThatFollowsIt) {
    auto* const pPin = TextAt(0x12345140, "the pin and more");
    auto* const pLabel = TextAt(0x123451c0, "a label of the token's          the next PIN");

    Call("CA_InitAudit", slotID, pPin, 7, pLabel);
    Starts(
        R"(Slot=7 Ptr=0x12345140 7 PIN="********" Ptr=0x123451c0 (32,"a label of the token's          ") "a label of the token's          " )",
        R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7);
   ByteString(SimpleText"********");
   Pointer(0x123451c0);
   ByteString(32,"a label of the token's          ");Value(SimpleText"a label of the token's          ");)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, BufferWithoutItsLength_EndRecordShowsNoByte) {
    auto* const pName = TextAt(0x12345140, "a name of unknown length");

    Call("CA_GetContainerName", slotID, 1001, pName, nullptr);
    Starts("Slot=7 1001 Ptr=0x12345140 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x0);)");
    Ends(kSuccess, R"(Slot=7 1001 Ptr=0x12345140 Ptr=0x0 "<null>" )",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x0);
   ByteString(SimpleText"<null>");)");
}

// The target needs more room than the application's buffer has, and says how much.
TEST_P(VendorRecords, BufferIsTooSmall_EndRecordShowsItAsFarAsItIsReadable) {
    auto* const pName = At<CK_BYTE>(0x12345ff8);
    auto* const pulNameLen = At<CK_ULONG>(0x12345140);
    std::copy_n("the name", 8, pName);
    Before([=] { *pulNameLen = 8; });
    Answer([=] { *pulNameLen = 40; });

    Call("CA_GetContainerName", slotID, 1001, pName, pulNameLen);
    Starts("Slot=7 1001 Ptr=0x12345ff8 Ptr=0x12345140 8 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345ff8);
   Pointer(0x12345140);
   ULong(0x8);)");
    Ends(kTooSmall, R"(Slot=7 1001 Ptr=0x12345ff8 Ptr=0x12345140 40 "the name" )",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345ff8);
   Pointer(0x12345140);
   ULong(0x28);
   ByteString(SimpleText"the name");)");
}

// The old format shows the lower half of a number. Both formats show the lower half of an address.
TEST_P(VendorRecords, NumbersOf64Bits_OldFormatShowsTheirLowerHalf) {
    Call("CA_GetModuleInfo", slotID, 0x123456789, reinterpret_cast<void*>(0xabcdef012345));
    Starts("Slot=7 4886718345 Ptr=0xef012345 ",
           R"(
   SlotID(0x7);
   ULong(0x23456789);
   Pointer(0xef012345);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, PinsOfAnyLength_RecordsShowTheSameMask) {
    const std::string pin(100, 'p');
    auto* const pPin = TextAt(0x12345140, pin);
    for (const CK_ULONG ulPinLen : {0UL, 3UL, 100UL}) {
        const std::string length = std::to_string(ulPinLen);
        const std::string hexLength = ulPinLen == 100 ? "64" : length;
        Call("CA_ResetPIN", hSession, pPin, ulPinLen);
        Starts(ReplaceAll(R"(Sesn=81 Ptr=0x12345140 <length> PIN="********" )", "<length>", length),
               ReplaceAll(R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x<length>);
   ByteString(SimpleText"********");)",
                          "<length>", hexLength));
        Ends(kSuccess);
    }
}

TEST_P(VendorRecords, ContainerStatusWithNullPointers_EndRecordShowsOnlyTheOthers) {
    auto* const pulFlags = At<CK_ULONG>(0x12345140);
    auto* const pulFailedOfficerLogins = At<CK_ULONG>(0x12345180);
    Answer([=] {
        *pulFlags = 2001;
        *pulFailedOfficerLogins = 2002;
    });

    Call("CA_GetContainerStatus", slotID, 1001, pulFlags, nullptr, pulFailedOfficerLogins, nullptr);
    Starts("Slot=7 Container Number1001 Ptr=0x12345140 Ptr=0x0 Ptr=0x12345180 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x0);
   Pointer(0x12345180);
   Pointer(0x0);)");
    Ends(kSuccess,
         "Slot=7 Container Number1001 Ptr=0x12345140 Ptr=0x0 Ptr=0x12345180 Ptr=0x0 Container Status "
         "Flags2001 Failed Crypto Officer Logins2002 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345140);
   Pointer(0x0);
   Pointer(0x12345180);
   Pointer(0x0);
   ULong(0x7d1);
   ULong(0x7d2);)");
    Ends(kOtherErrors);
}

TEST_P(VendorRecords, CurveWithoutASeed_RecordShowsItsAddressAndLengthButNoBytes) {
    auto* const pECParams = At<CK_BYTE>(0x12345100);
    auto* const pulECParamsLen = At<CK_ULONG>(0x12345140);
    auto* const pPrime = TextAt(0x12345180, "the prime");
    auto* const pA = TextAt(0x123451c0, "the a");
    auto* const pB = TextAt(0x12345200, "the b");
    auto* const pX = TextAt(0x12345240, "the x");
    auto* const pY = TextAt(0x12345280, "the y");
    auto* const pOrder = TextAt(0x123452c0, "the order");
    auto* const pCofactor = TextAt(0x12345300, "the cofactor");
    Before([=] { *pulECParamsLen = 61; });
    Answer([=] {
        Put(pECParams, "parameters");
        *pulECParamsLen = 10;
    });

    Call("CA_EncodeECPrimeParams", pECParams, pulECParamsLen, pPrime, 9, pA, 5, pB, 4, nullptr, 3, pX, 2, pY,
         5, pOrder, 8, pCofactor, 12);
    Starts(
        R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=61 Ptr=0x12345180 prime len=9 prime="the prime" Ptr=0x123451c0 a len=5 a="the a" Ptr=0x12345200 b len=4 b="the " Ptr=0x0 seed len=3 Ptr=0x12345240 x len=2 x="th" Ptr=0x12345280 y len=5 y="the y" Ptr=0x123452c0 order len=8 order="the orde" Ptr=0x12345300 cofactor len=12 cofactor="the cofactor" )",
        R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x3d);
   Pointer(0x12345180);
   ULong(0x9);
   ByteString(SimpleText"the prime");
   Pointer(0x123451c0);
   ULong(0x5);
   ByteString(SimpleText"the a");
   Pointer(0x12345200);
   ULong(0x4);
   ByteString(SimpleText"the ");
   Pointer(0x0);
   ULong(0x3);
   Pointer(0x12345240);
   ULong(0x2);
   ByteString(SimpleText"th");
   Pointer(0x12345280);
   ULong(0x5);
   ByteString(SimpleText"the y");
   Pointer(0x123452c0);
   ULong(0x8);
   ByteString(SimpleText"the orde");
   Pointer(0x12345300);
   ULong(0xc);
   ByteString(SimpleText"the cofactor");)");
    Ends(kSuccess, R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=10 EC Params="parameters" )",
         R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"parameters");)");
}
