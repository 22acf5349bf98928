#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_GetFPV) {
    auto* const pulFpv = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulFpv = 2001; });

    Call("CA_GetFPV", slotID, pulFpv);
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

    Call("CA_GetFPV", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetTPV) {
    auto* const pulTpv = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulTpv = 2001; });

    Call("CA_GetTPV", slotID, pulTpv);
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

    Call("CA_GetTPV", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetExtendedTPV) {
    auto* const pulTpv = At<CK_ULONG>(0x12345140);
    auto* const pulTpvExtension = At<CK_ULONG>(0x12345180);
    Answer([=] {
        *pulTpv = 2001;
        *pulTpvExtension = 2002;
    });

    Call("CA_GetExtendedTPV", slotID, pulTpv, pulTpvExtension);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 2001 Ptr=0x12345180 2002 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
   Pointer(0x12345180);
   ULong(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_GetExtendedTPV", slotID, nullptr, nullptr);
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

TEST_P(VendorRecords, CA_GetConfigurationElementDescription) {
    const CK_ULONG ulContainer = 1001;
    const CK_ULONG ulCapability = 1002;
    const CK_ULONG ulElementId = 1003;
    auto* const pulBitLength = At<CK_ULONG>(0x12345200);
    auto* const pulDestructive = At<CK_ULONG>(0x12345240);
    auto* const pulRestricted = At<CK_ULONG>(0x12345280);
    auto* const pDescription = At<CK_BYTE>(0x123452c0);
    Answer([=] {
        *pulBitLength = 2001;
        *pulDestructive = 2002;
        *pulRestricted = 2003;
        Put(pDescription, "returned description");
    });

    Call("CA_GetConfigurationElementDescription", slotID, ulContainer, ulCapability, ulElementId,
         pulBitLength, pulDestructive, pulRestricted, pDescription);
    Starts("Slot=7 cnt=1001 cap=1002 id=1003 Ptr=0x12345200 Ptr=0x12345240 Ptr=0x12345280 Ptr=0x123452c0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   Pointer(0x12345240);
   Pointer(0x12345280);
   Pointer(0x123452c0);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Slot=7 cnt=1001 cap=1002 id=1003 Ptr=0x12345200 Ptr=0x12345240 Ptr=0x12345280 Ptr=0x123452c0 bitLen=2001 dest=2002 rest=2003 "returned description" )",
        R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   Pointer(0x12345240);
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);
   ByteString(SimpleText"returned description");)");
    Ends(kOtherErrors);

    Call("CA_GetConfigurationElementDescription", slotID, ulContainer, ulCapability, ulElementId, nullptr,
         nullptr, nullptr, nullptr);
    Starts("Slot=7 cnt=1001 cap=1002 id=1003 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 cnt=1001 cap=1002 id=1003 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetHSMCapabilitySet) {
    auto* const pulIds = At<CK_ULONG>(0x12345140);
    auto* const pulIdCount = At<CK_ULONG>(0x12345180);
    auto* const pulValues = At<CK_ULONG>(0x123451c0);
    auto* const pulValueCount = At<CK_ULONG>(0x12345200);
    Before([=] {
        *pulIdCount = 6;
        *pulValueCount = 7;
    });
    Answer([=] {
        PutAll(pulIds, {2001, 2002});
        *pulIdCount = 2;
        PutAll(pulValues, {2011, 2012, 2013});
        *pulValueCount = 3;
    });

    Call("CA_GetHSMCapabilitySet", slotID, pulIds, pulIdCount, pulValues, pulValueCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 idSize=6 Ptr=0x123451c0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(
        kSuccessOrTooSmall,
        "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 id=2001 val=2011 id=2002 val=2012 val=2013 ",
        R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7dd);)");
    Ends(kOtherErrors);

    Call("CA_GetHSMCapabilitySet", slotID, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetHSMCapabilitySet", slotID, nullptr, pulIdCount, nullptr, pulValueCount);
    Starts("Slot=7 Ptr=0x0 Ptr=0x12345180 idSize=6 Ptr=0x0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(kTooSmall, "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);)");
}

TEST_P(VendorRecords, CA_GetHSMCapabilitySetting) {
    const CK_ULONG ulId = 1001;
    auto* const pulValue = At<CK_ULONG>(0x12345180);
    Answer([=] { *pulValue = 2001; });

    Call("CA_GetHSMCapabilitySetting", slotID, ulId, pulValue);
    Starts("Slot=7 id=1001 Ptr=0x12345180 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);)");
    Ends(kSuccessOrTooSmall, "Slot=7 id=1001 Ptr=0x12345180 val=2001 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetHSMCapabilitySetting", slotID, ulId, nullptr);
    Starts("Slot=7 id=1001 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 id=1001 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetHSMPolicySet) {
    auto* const pulIds = At<CK_ULONG>(0x12345140);
    auto* const pulIdCount = At<CK_ULONG>(0x12345180);
    auto* const pulValues = At<CK_ULONG>(0x123451c0);
    auto* const pulValueCount = At<CK_ULONG>(0x12345200);
    Before([=] {
        *pulIdCount = 6;
        *pulValueCount = 7;
    });
    Answer([=] {
        PutAll(pulIds, {2001, 2002});
        *pulIdCount = 2;
        PutAll(pulValues, {2011, 2012, 2013});
        *pulValueCount = 3;
    });

    Call("CA_GetHSMPolicySet", slotID, pulIds, pulIdCount, pulValues, pulValueCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 idSize=6 Ptr=0x123451c0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(
        kSuccessOrTooSmall,
        "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 id=2001 val=2011 id=2002 val=2012 val=2013 ",
        R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7dd);)");
    Ends(kOtherErrors);

    Call("CA_GetHSMPolicySet", slotID, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetHSMPolicySet", slotID, nullptr, pulIdCount, nullptr, pulValueCount);
    Starts("Slot=7 Ptr=0x0 Ptr=0x12345180 idSize=6 Ptr=0x0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(kTooSmall, "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);)");
}

TEST_P(VendorRecords, CA_GetHSMPolicySetting) {
    const CK_ULONG ulId = 1001;
    auto* const pulValue = At<CK_ULONG>(0x12345180);
    Answer([=] { *pulValue = 2001; });

    Call("CA_GetHSMPolicySetting", slotID, ulId, pulValue);
    Starts("Slot=7 id=1001 Ptr=0x12345180 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);)");
    Ends(kSuccessOrTooSmall, "Slot=7 id=1001 Ptr=0x12345180 val=2001 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetHSMPolicySetting", slotID, ulId, nullptr);
    Starts("Slot=7 id=1001 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 id=1001 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetContainerCapabilitySet) {
    const CK_ULONG ulContainerNumber = 1001;
    auto* const pulIds = At<CK_ULONG>(0x12345180);
    auto* const pulIdCount = At<CK_ULONG>(0x123451c0);
    auto* const pulValues = At<CK_ULONG>(0x12345200);
    auto* const pulValueCount = At<CK_ULONG>(0x12345240);
    Before([=] {
        *pulIdCount = 6;
        *pulValueCount = 7;
    });
    Answer([=] {
        PutAll(pulIds, {2001, 2002});
        *pulIdCount = 2;
        PutAll(pulValues, {2011, 2012, 2013});
        *pulValueCount = 3;
    });

    Call("CA_GetContainerCapabilitySet", slotID, ulContainerNumber, pulIds, pulIdCount, pulValues,
         pulValueCount);
    Starts("Slot=7 part=1001 Ptr=0x12345180 Ptr=0x123451c0 idSize=6 Ptr=0x12345200 Ptr=0x12345240 valSize=7 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x6);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 part=1001 Ptr=0x123451c0 idSize=2 Ptr=0x12345240 valSize=3 id=2001 val=2011 id=2002 "
         "val=2012 val=2013 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x123451c0);
   ULong(0x2);
   Pointer(0x12345240);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7dd);)");
    Ends(kOtherErrors);

    Call("CA_GetContainerCapabilitySet", slotID, ulContainerNumber, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 part=1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 part=1001 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetContainerCapabilitySet", slotID, ulContainerNumber, nullptr, pulIdCount, nullptr,
         pulValueCount);
    Starts("Slot=7 part=1001 Ptr=0x0 Ptr=0x123451c0 idSize=6 Ptr=0x0 Ptr=0x12345240 valSize=7 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x6);
   Pointer(0x0);
   Pointer(0x12345240);
   ULong(0x7);)");
    Ends(kTooSmall, "Slot=7 part=1001 Ptr=0x123451c0 idSize=2 Ptr=0x12345240 valSize=3 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x123451c0);
   ULong(0x2);
   Pointer(0x12345240);
   ULong(0x3);)");
}

TEST_P(VendorRecords, CA_GetContainerCapabilitySetting) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulId = 1002;
    auto* const pulValue = At<CK_ULONG>(0x123451c0);
    Answer([=] { *pulValue = 2001; });

    Call("CA_GetContainerCapabilitySetting", slotID, ulContainerNumber, ulId, pulValue);
    Starts("Slot=7 part=1001 id=1002 Ptr=0x123451c0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 part=1001 id=1002 Ptr=0x123451c0 val=2001 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x123451c0);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetContainerCapabilitySetting", slotID, ulContainerNumber, ulId, nullptr);
    Starts("Slot=7 part=1001 id=1002 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 part=1001 id=1002 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetContainerPolicySet) {
    const CK_ULONG ulContainerNumber = 1001;
    auto* const pulIds = At<CK_ULONG>(0x12345180);
    auto* const pulIdCount = At<CK_ULONG>(0x123451c0);
    auto* const pulValues = At<CK_ULONG>(0x12345200);
    auto* const pulValueCount = At<CK_ULONG>(0x12345240);
    Before([=] {
        *pulIdCount = 6;
        *pulValueCount = 7;
    });
    Answer([=] {
        PutAll(pulIds, {2001, 2002});
        *pulIdCount = 2;
        PutAll(pulValues, {2011, 2012, 2013});
        *pulValueCount = 3;
    });

    Call("CA_GetContainerPolicySet", slotID, ulContainerNumber, pulIds, pulIdCount, pulValues, pulValueCount);
    Starts("Slot=7 part=1001 Ptr=0x12345180 Ptr=0x123451c0 idSize=6 Ptr=0x12345200 Ptr=0x12345240 valSize=7 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x6);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 part=1001 Ptr=0x123451c0 idSize=2 Ptr=0x12345240 valSize=3 id=2001 val=2011 id=2002 "
         "val=2012 val=2013 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x123451c0);
   ULong(0x2);
   Pointer(0x12345240);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7dd);)");
    Ends(kOtherErrors);

    Call("CA_GetContainerPolicySet", slotID, ulContainerNumber, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 part=1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 part=1001 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetContainerPolicySet", slotID, ulContainerNumber, nullptr, pulIdCount, nullptr, pulValueCount);
    Starts("Slot=7 part=1001 Ptr=0x0 Ptr=0x123451c0 idSize=6 Ptr=0x0 Ptr=0x12345240 valSize=7 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x6);
   Pointer(0x0);
   Pointer(0x12345240);
   ULong(0x7);)");
    Ends(kTooSmall, "Slot=7 part=1001 Ptr=0x123451c0 idSize=2 Ptr=0x12345240 valSize=3 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x123451c0);
   ULong(0x2);
   Pointer(0x12345240);
   ULong(0x3);)");
}

TEST_P(VendorRecords, CA_GetContainerPolicySetting) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulId = 1002;
    auto* const pulValue = At<CK_ULONG>(0x123451c0);
    Answer([=] { *pulValue = 2001; });

    Call("CA_GetContainerPolicySetting", slotID, ulContainerNumber, ulId, pulValue);
    Starts("Slot=7 part=1001 id=1002 Ptr=0x123451c0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 part=1001 id=1002 Ptr=0x123451c0 val=2001 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x123451c0);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetContainerPolicySetting", slotID, ulContainerNumber, ulId, nullptr);
    Starts("Slot=7 part=1001 id=1002 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 part=1001 id=1002 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_SetTPV) {
    const CK_ULONG ulTpv = 1001;

    Call("CA_SetTPV", hSession, ulTpv);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetExtendedTPV) {
    const CK_ULONG ulTpv = 1001;
    const CK_ULONG ulTpvExtension = 1002;

    Call("CA_SetExtendedTPV", hSession, ulTpv, ulTpvExtension);
    Starts("Sesn=81 1001 1002 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetHSMPolicy) {
    const CK_ULONG ulId = 1001;
    const CK_ULONG ulValue = 1002;

    Call("CA_SetHSMPolicy", hSession, ulId, ulValue);
    Starts("Sesn=81 cnt=1 id=1001 val=1002 ",
           R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetHSMPolicies) {
    const CK_ULONG ulCount = 2;
    auto* const pulIds = At<CK_ULONG>(0x12345180);
    PutAll(pulIds, {2001, 2002, 2003});
    auto* const pulValues = At<CK_ULONG>(0x123451c0);
    PutAll(pulValues, {2011, 2012, 2013});

    Call("CA_SetHSMPolicies", hSession, ulCount, pulIds, pulValues);
    Starts("Sesn=81 cnt=2 id=2001 val=2011 id=2002 val=2012 ",
           R"(
   SessionHandle(0x51);
   ULong(0x2);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);)");
    Ends(kEveryResult);

    Call("CA_SetHSMPolicies", hSession, ulCount, nullptr, nullptr);
    Starts("Sesn=81 cnt=2 ",
           R"(
   SessionHandle(0x51);
   ULong(0x2);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_SetDestructiveHSMPolicy) {
    const CK_ULONG ulId = 1001;
    const CK_ULONG ulValue = 1002;

    Call("CA_SetDestructiveHSMPolicy", hSession, ulId, ulValue);
    Starts("Sesn=81 cnt=1 id=1001 val=1002 ",
           R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetDestructiveHSMPolicies) {
    const CK_ULONG ulCount = 2;
    auto* const pulIds = At<CK_ULONG>(0x12345180);
    PutAll(pulIds, {2001, 2002, 2003});
    auto* const pulValues = At<CK_ULONG>(0x123451c0);
    PutAll(pulValues, {2011, 2012, 2013});

    Call("CA_SetDestructiveHSMPolicies", hSession, ulCount, pulIds, pulValues);
    Starts("Sesn=81 cnt=2 id=2001 val=2011 id=2002 val=2012 ",
           R"(
   SessionHandle(0x51);
   ULong(0x2);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);)");
    Ends(kEveryResult);

    Call("CA_SetDestructiveHSMPolicies", hSession, ulCount, nullptr, nullptr);
    Starts("Sesn=81 cnt=2 ",
           R"(
   SessionHandle(0x51);
   ULong(0x2);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_SetContainerPolicy) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulId = 1002;
    const CK_ULONG ulValue = 1003;

    Call("CA_SetContainerPolicy", hSession, ulContainerNumber, ulId, ulValue);
    Starts("Sesn=81 part=1001 cnt=1 id=1002 val=1003 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x1);
   ULong(0x3ea);
   ULong(0x3eb);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetContainerPolicies) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulCount = 2;
    auto* const pulIds = At<CK_ULONG>(0x123451c0);
    PutAll(pulIds, {2001, 2002, 2003});
    auto* const pulValues = At<CK_ULONG>(0x12345200);
    PutAll(pulValues, {2011, 2012, 2013});

    Call("CA_SetContainerPolicies", hSession, ulContainerNumber, ulCount, pulIds, pulValues);
    Starts("Sesn=81 part=1001 cnt=2 id=2001 val=2011 id=2002 val=2012 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x2);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);)");
    Ends(kEveryResult);

    Call("CA_SetContainerPolicies", hSession, ulContainerNumber, ulCount, nullptr, nullptr);
    Starts("Sesn=81 part=1001 cnt=2 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x2);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_GetTokenCapabilities) {
    auto* const pulIds = At<CK_ULONG>(0x12345140);
    auto* const pulIdCount = At<CK_ULONG>(0x12345180);
    auto* const pulValues = At<CK_ULONG>(0x123451c0);
    auto* const pulValueCount = At<CK_ULONG>(0x12345200);
    Before([=] {
        *pulIdCount = 6;
        *pulValueCount = 7;
    });
    Answer([=] {
        PutAll(pulIds, {2001, 2002});
        *pulIdCount = 2;
        PutAll(pulValues, {2011, 2012, 2013});
        *pulValueCount = 3;
    });

    Call("CA_GetTokenCapabilities", slotID, pulIds, pulIdCount, pulValues, pulValueCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 idSize=6 Ptr=0x123451c0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(
        kSuccessOrTooSmall,
        "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 id=2001 val=2011 id=2002 val=2012 val=2013 ",
        R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7dd);)");
    Ends(kOtherErrors);

    Call("CA_GetTokenCapabilities", slotID, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetTokenCapabilities", slotID, nullptr, pulIdCount, nullptr, pulValueCount);
    Starts("Slot=7 Ptr=0x0 Ptr=0x12345180 idSize=6 Ptr=0x0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(kTooSmall, "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);)");
}

TEST_P(VendorRecords, CA_SetTokenPolicies) {
    const CK_ULONG ulCount = 3;
    auto* const pulIds = At<CK_ULONG>(0x123451c0);
    PutAll(pulIds, {2001, 2002, 2003});
    auto* const pulValues = At<CK_ULONG>(0x12345200);
    PutAll(pulValues, {2011, 2012, 2013});

    Call("CA_SetTokenPolicies", hSession, slotID, ulCount, pulIds, pulValues);
    Starts("Sesn=81 Slot=7 cnt=3 id=2001 val=2011 id=2002 val=2012 id=2003 val=2013 ",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7d3);
   ULong(0x7dd);)");
    Ends(kEveryResult);

    Call("CA_SetTokenPolicies", hSession, slotID, ulCount, nullptr, nullptr);
    Starts("Sesn=81 Slot=7 cnt=3 ",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);
   ULong(0x3);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_GetTokenPolicies) {
    auto* const pulIds = At<CK_ULONG>(0x12345140);
    auto* const pulIdCount = At<CK_ULONG>(0x12345180);
    auto* const pulValues = At<CK_ULONG>(0x123451c0);
    auto* const pulValueCount = At<CK_ULONG>(0x12345200);
    Before([=] {
        *pulIdCount = 6;
        *pulValueCount = 7;
    });
    Answer([=] {
        PutAll(pulIds, {2001, 2002});
        *pulIdCount = 2;
        PutAll(pulValues, {2011, 2012, 2013});
        *pulValueCount = 3;
    });

    Call("CA_GetTokenPolicies", slotID, pulIds, pulIdCount, pulValues, pulValueCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 idSize=6 Ptr=0x123451c0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(
        kSuccessOrTooSmall,
        "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 id=2001 val=2011 id=2002 val=2012 val=2013 ",
        R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);
   ULong(0x7d1);
   ULong(0x7db);
   ULong(0x7d2);
   ULong(0x7dc);
   ULong(0x7dd);)");
    Ends(kOtherErrors);

    Call("CA_GetTokenPolicies", slotID, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetTokenPolicies", slotID, nullptr, pulIdCount, nullptr, pulValueCount);
    Starts("Slot=7 Ptr=0x0 Ptr=0x12345180 idSize=6 Ptr=0x0 Ptr=0x12345200 valSize=7 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x6);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x7);)");
    Ends(kTooSmall, "Slot=7 Ptr=0x12345180 idSize=2 Ptr=0x12345200 valSize=3 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345180);
   ULong(0x2);
   Pointer(0x12345200);
   ULong(0x3);)");
}
