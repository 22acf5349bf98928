// The two arrays of a set of policies or capabilities differ, or one of them is missing.
#include "tests/vendor_calls/vendor_records.h"

namespace {

class PolicySets : public VendorRecords {
protected:
    CK_ULONG* const ids = At<CK_ULONG>(0x12345140);
    CK_ULONG* const idCount = At<CK_ULONG>(0x12345180);
    CK_ULONG* const values = At<CK_ULONG>(0x123451c0);
    CK_ULONG* const valueCount = At<CK_ULONG>(0x12345200);

    // Lets the target return this many identifiers and values.
    void Return(CK_ULONG returnedIds, CK_ULONG returnedValues) {
        PutAll(ids, {2001, 2002, 2003, 2004, 2005, 2006});
        PutAll(values, {2011, 2012, 2013, 2014, 2015, 2016});
        Before([this] {
            *idCount = 61;
            *valueCount = 62;
        });
        Answer([=, this] {
            *idCount = returnedIds;
            *valueCount = returnedValues;
        });
    }

    void StartsWithEverything() {
        Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 idSize=61 Ptr=0x123451c0 Ptr=0x12345200 valSize=62 ",
               R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x3e);)");
    }
};

}  // namespace

TEST_P(PolicySets, MoreValuesThanIdentifiers_EachArrayIsShownToItsOwnCount) {
    Return(3, 5);
    Call("CA_GetTokenPolicies", slotID, ids, idCount, values, valueCount);
    StartsWithEverything();
    Ends(kSuccessOrTooSmall,
         "Slot=7 Ptr=0x12345180 idSize=3 Ptr=0x12345200 valSize=5 id=2001 val=2011 id=2002 val=2012 id=2003 "
         "val=2013 val=2014 val=2015 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x3);
   Pointer(0x12345200);
   ULong(0x5);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7d3);
   ULong(0x7dd);
   ULong(0x7de);
   ULong(0x7df);)");
}

TEST_P(PolicySets, MoreIdentifiersThanValues_EachArrayIsShownToItsOwnCount) {
    Return(4, 2);
    Call("CA_GetTokenPolicies", slotID, ids, idCount, values, valueCount);
    StartsWithEverything();
    Ends(kSuccess,
         "Slot=7 Ptr=0x12345180 idSize=4 Ptr=0x12345200 valSize=2 id=2001 val=2011 id=2002 val=2012 id=2003 "
         "id=2004 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x4);
   Pointer(0x12345200);
   ULong(0x2);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7d3);
   ULong(0x7d4);)");
}

TEST_P(PolicySets, EmptySet_RecordShowsOnlyTheSizes) {
    Return(0, 0);
    Call("CA_GetTokenPolicies", slotID, ids, idCount, values, valueCount);
    StartsWithEverything();
    Ends(kSuccess, "Slot=7 Ptr=0x12345180 idSize=0 Ptr=0x12345200 valSize=0 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x0);
   Pointer(0x12345200);
   ULong(0x0);)");
}

TEST_P(PolicySets, IdentifiersWithoutValues_RecordShowsNeither) {
    Return(3, 5);
    Call("CA_GetTokenPolicies", slotID, ids, idCount, nullptr, valueCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 idSize=61 Ptr=0x0 Ptr=0x12345200 valSize=62 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x3e);)");
    Ends(kSuccess, "Slot=7 Ptr=0x12345180 idSize=3 Ptr=0x12345200 valSize=5 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x3);
   Pointer(0x12345200);
   ULong(0x5);)");
}

TEST_P(PolicySets, ArrayWithoutACount_RecordShowsNoneOfIt) {
    Return(3, 2);
    Call("CA_GetTokenPolicies", slotID, ids, nullptr, values, valueCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x0 Ptr=0x123451c0 Ptr=0x12345200 valSize=62 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x0);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x3e);)");
    Ends(kSuccess, "Slot=7 Ptr=0x0 Ptr=0x12345200 valSize=2 val=2011 val=2012 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x2);
   ULong(0x7db);
   ULong(0x7dc);)");
}

TEST_P(PolicySets, NoPolicyIsSet_RecordShowsOnlyTheCount) {
    PutAll(ids, {2001});
    PutAll(values, {2011});
    Call("CA_SetHSMPolicies", hSession, 0, ids, values);
    Starts("Sesn=81 cnt=0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x0);)");
    Ends(kSuccess);
}

INSTANTIATE_TEST_SUITE_P(Log, PolicySets, testing::Values(LogFormat::kNew, LogFormat::kOld), FormatName);
