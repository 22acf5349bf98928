// Records of the vendor's functions mask data if "HideData" asks for it.
#include "tests/vendor_calls/vendor_records.h"

namespace {

class HiddenVendorData : public VendorRecords {
protected:
    HiddenVendorData() { Set("HideData", "1"); }
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Log, HiddenVendorData, testing::Values(LogFormat::kNew, LogFormat::kOld),
                         FormatName);

TEST_P(HiddenVendorData, LengthOfAPinIsZero) {
    auto* const pPin = TextAt(0x12345140, "Q~J^Q~J^");
    Call("CA_ResetPIN", hSession, pPin, 8);
    Starts(R"(Sesn=81 Ptr=0x12345140 0 PIN="********" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x0);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);
}

TEST_P(HiddenVendorData, LengthOfAReturnedSecretIsZero) {
    auto* const pKev = TextAt(0x12345140, "Q~J^Q~J^");
    auto* const pulKevLen = At<CK_ULONG>(0x12345100);
    *pulKevLen = 8;
    Call("CA_GenerateCloningKEV", hSession, pKev, pulKevLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 Ptr=0x12345100 0 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345100);
   ULong(0x0);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 305418560 305418496 0 PIN="********" )",
         R"(
   SessionHandle(0x51);
   ULong(0x12345140);
   ULong(0x12345100);
   ULong(0x0);
   ByteString(SimpleText"********");)");
}

TEST_P(HiddenVendorData, NameOfAContainerStaysVisible) {
    auto* const pName = TextAt(0x12345140, "container");
    Call("CA_SetUserContainerName", slotID, pName, 9);
    Starts(R"-(Slot=7 Ptr=0x12345140 length=9 Name=(9,"container") "container" )-",
           R"-(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x9);
   ByteString(9,"container");Value(SimpleText"container");)-");
    Ends(kEveryResult);
}

TEST_P(HiddenVendorData, MessagesAndSecretsOfTheAuditLogBecomeAMask) {
    auto* const pMessage = TextAt(0x12345140, "a message");
    Call("CA_LogExternal", slotID, hSession, pMessage, 9);
    Starts(R"-(Slot=7 Sesn=81 Ptr=0x12345140 9 (8,"********") "********" )-",
           R"-(
   SlotID(0x7);
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x9);
   ByteString(8,"********");Value(SimpleText"********");)-");
    Ends(kEveryResult);

    Call("CA_LogImportSecret", hSession, pMessage, 9);
    Starts(R"(Sesn=81 Ptr=0x12345140 "********" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);
}
