// Events show the kinds of children that only the vendor's functions have.
#include "tests/vendor_calls/vendor_records.h"

namespace {

class VendorEvents : public VendorCallTest {
protected:
    VendorEvents() : VendorCallTest(LogFormat::kNew) { Set("HideData", "0"); }

    // Return the elements of "in" and "out" of the only call in the events file.
    std::string In() const { return Member(R"("in":[)", R"(],"out":)"); }
    std::string Out() const { return Member(R"("out":[)", "]}\n"); }

private:
    std::string Member(const std::string& begin, const std::string& end) const {
        const std::string events = Events();
        const std::size_t line = events.find(R"({"event":"end")");
        const std::size_t from = events.find(begin, line) + begin.size();
        return events.substr(from, events.rfind(end) - from);
    }
};

}  // namespace

TEST_F(VendorEvents, StatusOfAnActivationHasItsNumbersAsChildren) {
    auto* const pStatus = At<CA_M_OF_N_STATUS>(0x12345140);
    *pStatus = {{2001, 2002, 2003, 2004, 2005}};
    MakeCallWithoutLog("CA_GetMofNStatus", slotID, pStatus);
    EXPECT_EQ(R"({"kind":"SlotID","value":7})", In());
    EXPECT_EQ(
        R"({"kind":"SlotID","value":7},{"kind":"MofNStatusInfo","children":[{"kind":"ULong","value":2001},{"kind":"ULong","value":2002},{"kind":"ULong","value":2003},{"kind":"ULong","value":2004},{"kind":"ULong","value":2005}]})",
        Out());
}

TEST_F(VendorEvents, HighAvailabilityGroupHasItsMembersAsChildren) {
    auto* const pState = At<CK_HA_STATUS>(0x12345140);
    *pState = {"Group", {{"First", 2001}, {"Sec\xFFond\n\"", 2002}}, 2};
    MakeCallWithoutLog("CA_GetHAState", slotID, pState);
    EXPECT_EQ(
        R"({"kind":"SlotID","value":7},{"kind":"Pointer","value":305418560},{"kind":"HAStatus","children":[{"kind":"ByteString","name":"Group","size":0},{"kind":"HAMember","children":[{"kind":"ByteString","name":"First","size":0},{"kind":"UShort","value":2001}]},{"kind":"HAMember","children":[{"kind":"ByteString","name":"Sec)"
        "\xEF\xBF\xBD"
        R"(ond\u000a\"","size":0},{"kind":"UShort","value":2002}]},{"kind":"UShort","value":2}]})",
        Out());
}

TEST_F(VendorEvents, LengthOfAPinIsNeverThere) {
    auto* const pPin = TextAt(0x12345140, "Q~J^Q~J^");
    MakeCallWithoutLog("CA_ResetPIN", hSession, pPin, CK_ULONG{8});
    EXPECT_EQ(
        R"({"kind":"SessionHandle","value":81},{"kind":"Pointer","value":305418560},{"kind":"ULong"},{"kind":"PIN"})",
        In());
}

TEST_F(VendorEvents, NamesAreShownWithoutDataToo) {
    Unset("HideData");
    auto* const pName = TextAt(0x12345140, "container");
    MakeCallWithoutLog("CA_SetUserContainerName", slotID, pName, CK_ULONG{9});
    EXPECT_EQ(
        R"({"kind":"SlotID","value":7},{"kind":"Pointer","value":305418560},{"kind":"ULong","name":"length","value":9},{"kind":"ByteString","name":"Name","size":9,"text":"container"},{"kind":"Value","name":"Name","size":9,"text":"container"})",
        In());
}

TEST_F(VendorEvents, LabelledNumbersHaveTheirNames) {
    MakeCallWithoutLog("CA_ModifyUsageCount", hSession, CK_ULONG{98}, CK_ULONG{3}, CK_ULONG{4});
    EXPECT_EQ(
        R"({"kind":"SessionHandle","value":81},{"kind":"ObjectHandle","value":98},{"kind":"ULong","name":"Type","value":3},{"kind":"ULong","name":"Value","value":4})",
        In());
}

// A record reads as many bytes as the target asked for, even those behind the buffer.
TEST_F(VendorEvents, BufferForANameIsTooSmall_EventWithoutDataShowsNothingOfIt) {
    Unset("HideData");
    auto* const pName = TextAt(0x12345140, "namebehind the buffer");
    auto* const pulLength = At<CK_ULONG>(0x12345200);
    script.result = CKR_BUFFER_TOO_SMALL;
    Answer([=] { *pulLength = 21; });
    MakeCallWithoutLog("CA_GetUserContainerName", slotID, pName, pulLength);
    EXPECT_EQ(std::string::npos, Events().find("behind"));
    EXPECT_EQ(
        R"({"kind":"SlotID","value":7},{"kind":"Pointer","value":305418560},{"kind":"Pointer","value":305418752},{"kind":"ULong","name":"Name length","value":21},{"kind":"ByteString","size":21},{"kind":"Value","size":21})",
        Out());
}

TEST_F(VendorEvents, BufferForAStatusIsTooSmall_EventWithoutDataShowsNoChildren) {
    Unset("HideData");
    auto* const pStatus = At<CA_M_OF_N_STATUS>(0x12345140);
    *pStatus = {{2001, 2002, 2003, 2004, 2005}};
    script.result = CKR_BUFFER_TOO_SMALL;
    MakeCallWithoutLog("CA_GetMofNStatus", slotID, pStatus);
    EXPECT_EQ(R"({"kind":"SlotID","value":7},{"kind":"MofNStatusInfo","children":[]})", Out());
}
