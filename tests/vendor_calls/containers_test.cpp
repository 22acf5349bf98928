#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_RestartForContainer) {
    const CK_ULONG ulContainerNumber = 1001;

    Call("CA_RestartForContainer", slotID, ulContainerNumber);
    Starts("Slot=7 Container Number1001 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetUserContainerNumber) {
    auto* const pulContainerNumber = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulContainerNumber = 2001; });

    Call("CA_GetUserContainerNumber", slotID, pulContainerNumber);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Container Number2001 ",
         R"(
   SlotID(0x7);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_GetUserContainerNumber", slotID, nullptr);
    Starts("Slot=7 ",
           R"(
   SlotID(0x7);)");
    Ends(kSuccessOrTooSmall, "Slot=7 ",
         R"(
   SlotID(0x7);)");
}

TEST_P(VendorRecords, CA_GetUserContainerName) {
    auto* const pName = At<CK_BYTE>(0x12345140);
    auto* const pulNameLen = At<CK_ULONG>(0x12345180);
    Before([=] { *pulNameLen = 61; });
    Answer([=] {
        Put(pName, "returned name and more");
        *pulNameLen = 13;
    });

    Call("CA_GetUserContainerName", slotID, pName, pulNameLen);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 Name length=61 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall,
         R"(Slot=7 Ptr=0x12345140 Ptr=0x12345180 Name length=13 (13,"returned name") "returned name" )",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(13,"returned name");Value(SimpleText"returned name");)");
    Ends(kOtherErrors);

    Call("CA_GetUserContainerName", slotID, nullptr, nullptr);
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

    Call("CA_GetUserContainerName", slotID, nullptr, pulNameLen);
    Starts("Slot=7 Ptr=0x0 Ptr=0x12345180 Name length=61 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kTooSmall, "Slot=7 Ptr=0x0 Ptr=0x12345180 Name length=13 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0xd);)");
}

TEST_P(VendorRecords, CA_SetUserContainerName) {
    auto* const pName = TextAt(0x12345140, "the name and more");
    const CK_ULONG ulNameLen = 8;

    Call("CA_SetUserContainerName", slotID, pName, ulNameLen);
    Starts(R"(Slot=7 Ptr=0x12345140 length=8 Name=(8,"the name") "the name" )",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x8);
   ByteString(8,"the name");Value(SimpleText"the name");)");
    Ends(kEveryResult);

    Call("CA_SetUserContainerName", slotID, nullptr, ulNameLen);
    Starts("Slot=7 Ptr=0x0 length=8 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   ULong(0x8);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_GetContainerStatus) {
    const CK_ULONG ulContainerNumber = 1001;
    auto* const pulFlags = At<CK_ULONG>(0x12345180);
    auto* const pulFailedSoLogins = At<CK_ULONG>(0x123451c0);
    auto* const pulFailedOfficerLogins = At<CK_ULONG>(0x12345200);
    auto* const pulFailedUserLogins = At<CK_ULONG>(0x12345240);
    Answer([=] {
        *pulFlags = 2001;
        *pulFailedSoLogins = 2002;
        *pulFailedOfficerLogins = 2003;
        *pulFailedUserLogins = 2004;
    });

    Call("CA_GetContainerStatus", slotID, ulContainerNumber, pulFlags, pulFailedSoLogins,
         pulFailedOfficerLogins, pulFailedUserLogins);
    Starts("Slot=7 Container Number1001 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 Container Number1001 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 Container "
         "Status Flags2001 Failed SO Logins2002 Failed Crypto Officer Logins2003 Failed Crypto User "
         "Logins2004 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);
   ULong(0x7d4);)");
    Ends(kOtherErrors);

    Call("CA_GetContainerStatus", slotID, ulContainerNumber, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Container Number1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Container Number1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetTokenStatus) {
    auto* const pulFlags = At<CK_ULONG>(0x12345140);
    auto* const pulSessionCount = At<CK_ULONG>(0x12345180);
    auto* const pulRwSessionCount = At<CK_ULONG>(0x123451c0);
    Answer([=] {
        *pulFlags = 2001;
        *pulSessionCount = 2002;
        *pulRwSessionCount = 2003;
    });

    Call("CA_GetTokenStatus", slotID, pulFlags, pulSessionCount, pulRwSessionCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Flags2001 Session Count2002 R/W Session "
         "Count2003 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);)");
    Ends(kOtherErrors);

    Call("CA_GetTokenStatus", slotID, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_DeleteContainer) {
    Call("CA_DeleteContainer", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetHSMStorageInformation) {
    auto* const pulOverhead = At<CK_ULONG>(0x12345140);
    auto* const pulTotal = At<CK_ULONG>(0x12345180);
    auto* const pulUsed = At<CK_ULONG>(0x123451c0);
    auto* const pulFree = At<CK_ULONG>(0x12345200);
    Answer([=] {
        *pulOverhead = 2001;
        *pulTotal = 2002;
        *pulUsed = 2003;
        *pulFree = 2004;
    });

    Call("CA_GetHSMStorageInformation", slotID, pulOverhead, pulTotal, pulUsed, pulFree);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 Ptr=0x12345140 OvrHd=2001 Ptr=0x12345180 Total=2002 Ptr=0x123451c0 Used=2003 Ptr=0x12345200 "
         "Free=2004 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ULong(0x7d1);
   Pointer(0x12345180);
   ULong(0x7d2);
   Pointer(0x123451c0);
   ULong(0x7d3);
   Pointer(0x12345200);
   ULong(0x7d4);)");
    Ends(kOtherErrors);

    Call("CA_GetHSMStorageInformation", slotID, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetTokenStorageInformation) {
    auto* const pulOverhead = At<CK_ULONG>(0x12345140);
    auto* const pulTotal = At<CK_ULONG>(0x12345180);
    auto* const pulUsed = At<CK_ULONG>(0x123451c0);
    auto* const pulFree = At<CK_ULONG>(0x12345200);
    auto* const pulObjectCount = At<CK_ULONG>(0x12345240);
    Answer([=] {
        *pulOverhead = 2001;
        *pulTotal = 2002;
        *pulUsed = 2003;
        *pulFree = 2004;
        *pulObjectCount = 2005;
    });

    Call("CA_GetTokenStorageInformation", slotID, pulOverhead, pulTotal, pulUsed, pulFree, pulObjectCount);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 Ptr=0x12345140 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 OvrHd=2001 "
         "Total=2002 Used=2003 Free=2004 ObjCnt=2005 ",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);
   ULong(0x7d4);
   ULong(0x7d5);)");
    Ends(kOtherErrors);

    Call("CA_GetTokenStorageInformation", slotID, nullptr, nullptr, nullptr, nullptr, nullptr);
    Starts("Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetContainerStorageInformation) {
    const CK_ULONG ulContainerNumber = 1001;
    auto* const pulOverhead = At<CK_ULONG>(0x12345180);
    auto* const pulTotal = At<CK_ULONG>(0x123451c0);
    auto* const pulUsed = At<CK_ULONG>(0x12345200);
    auto* const pulFree = At<CK_ULONG>(0x12345240);
    auto* const pulObjectCount = At<CK_ULONG>(0x12345280);
    Answer([=] {
        *pulOverhead = 2001;
        *pulTotal = 2002;
        *pulUsed = 2003;
        *pulFree = 2004;
        *pulObjectCount = 2005;
    });

    Call("CA_GetContainerStorageInformation", slotID, ulContainerNumber, pulOverhead, pulTotal, pulUsed,
         pulFree, pulObjectCount);
    Starts("Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 Ptr=0x12345280 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
   Pointer(0x12345280);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 Ptr=0x12345200 Ptr=0x12345240 Ptr=0x12345280 OvrHd=2001 "
         "Total=2002 Used=2003 Free=2004 ObjCnt=2005 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   Pointer(0x12345240);
   Pointer(0x12345280);
   ULong(0x7d1);
   ULong(0x7d2);
   ULong(0x7d3);
   ULong(0x7d4);
   ULong(0x7d5);)");
    Ends(kOtherErrors);

    Call("CA_GetContainerStorageInformation", slotID, ulContainerNumber, nullptr, nullptr, nullptr, nullptr,
         nullptr);
    Starts("Slot=7 1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_SetContainerSize) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulSize = 1002;

    Call("CA_SetContainerSize", hSession, ulContainerNumber, ulSize);
    Starts("Sesn=81 1001 1002 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CreateContainer) {
    const CK_ULONG ulContainerType = 1001;
    auto* const pLabel = TextAt(0x12345180, "the label and more");
    const CK_ULONG ulLabelLen = 9;
    auto* const pPin = TextAt(0x12345200, "the pin and more");
    const CK_ULONG ulPinLen = 7;
    const CK_ULONG ulOption1 = 1002;
    const CK_ULONG ulOption2 = 1003;
    const CK_ULONG ulOption3 = 1004;
    const CK_ULONG ulOption4 = 1005;
    const CK_ULONG ulOption5 = 1006;
    auto* const pulContainerNumber = At<CK_ULONG>(0x123453c0);
    Answer([=] { *pulContainerNumber = 2001; });

    Call("CA_CreateContainer", hSession, ulContainerType, pLabel, ulLabelLen, pPin, ulPinLen, ulOption1,
         ulOption2, ulOption3, ulOption4, ulOption5, pulContainerNumber);
    Starts(R"(Sesn=81 1001 Ptr=0x12345180 "the label" 7 PIN="********" 1002 1003 1004 1005 1006 305419200 )",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   ByteString(SimpleText"the label");
   ULong(0x7);
   ByteString(SimpleText"********");
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   ULong(0x3ed);
   ULong(0x3ee);
   ULong(0x123453c0);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Sesn=81 1001 Ptr=0x12345180 "the label" 7 PIN="********" 1002 1003 1004 1005 1006 305419200 2001 )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x12345180);
   ByteString(SimpleText"the label");
   ULong(0x7);
   ByteString(SimpleText"********");
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   ULong(0x3ed);
   ULong(0x3ee);
   ULong(0x123453c0);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_CreateContainer", hSession, ulContainerType, nullptr, ulLabelLen, nullptr, ulPinLen, ulOption1,
         ulOption2, ulOption3, ulOption4, ulOption5, nullptr);
    Starts(R"(Sesn=81 1001 Ptr=0x0 7 PIN="<null>" 1002 1003 1004 1005 1006 0 )",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   ULong(0x3ed);
   ULong(0x3ee);
   ULong(0x0);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 1001 Ptr=0x0 7 PIN="<null>" 1002 1003 1004 1005 1006 0 )",
         R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   Pointer(0x0);
   ULong(0x7);
   ByteString(SimpleText"<null>");
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   ULong(0x3ed);
   ULong(0x3ee);
   ULong(0x0);)");
}

TEST_P(VendorRecords, CA_DeleteContainerWithHandle) {
    const CK_ULONG ulContainerNumber = 1001;

    Call("CA_DeleteContainerWithHandle", hSession, ulContainerNumber);
    Starts("Sesn=81 1001 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_GetContainerList) {
    const CK_ULONG ulContainerType = 1001;
    const CK_ULONG ulFirst = 1002;
    auto* const pulContainers = At<CK_ULONG>(0x123451c0);
    auto* const pulCount = At<CK_ULONG>(0x12345200);
    Before([=] { *pulCount = 71; });
    Answer([=] {
        PutAll(pulContainers, {2001, 2002, 2003});
        *pulCount = 2;
    });

    Call("CA_GetContainerList", slotID, ulContainerType, ulFirst, pulContainers, pulCount);
    Starts("Slot=7 1001 1002 Ptr=0x123451c0 Ptr=0x12345200 71 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x47);)");
    Ends(kSuccessOrTooSmall,
         "Slot=7 1001 1002 Ptr=0x123451c0 Ptr=0x12345200 2 ObjHndLst={Obj=2001 Obj=2002 } ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x2);
   ObjectHandleList
   {
      ObjectHandle(0x7d1);
      ObjectHandle(0x7d2);
   };)");
    Ends(kOtherErrors);

    Call("CA_GetContainerList", slotID, ulContainerType, ulFirst, nullptr, nullptr);
    Starts("Slot=7 1001 1002 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 1001 1002 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_GetContainerList", slotID, ulContainerType, ulFirst, nullptr, pulCount);
    Starts("Slot=7 1001 1002 Ptr=0x0 Ptr=0x12345200 71 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x47);)");
    Ends(kTooSmall, "Slot=7 1001 1002 Ptr=0x0 Ptr=0x12345200 2 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   Pointer(0x0);
   Pointer(0x12345200);
   ULong(0x2);)");
}

TEST_P(VendorRecords, CA_GetContainerName) {
    const CK_ULONG ulContainerNumber = 1001;
    auto* const pName = At<CK_BYTE>(0x12345180);
    auto* const pulNameLen = At<CK_ULONG>(0x123451c0);
    Before([=] { *pulNameLen = 61; });
    Answer([=] {
        Put(pName, "returned name and more");
        *pulNameLen = 13;
    });

    Call("CA_GetContainerName", slotID, ulContainerNumber, pName, pulNameLen);
    Starts("Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 61 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Slot=7 1001 Ptr=0x12345180 Ptr=0x123451c0 13 "returned name" )",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   ULong(0xd);
   ByteString(SimpleText"returned name");)");
    Ends(kOtherErrors);

    Call("CA_GetContainerName", slotID, ulContainerNumber, nullptr, nullptr);
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

    Call("CA_GetContainerName", slotID, ulContainerNumber, nullptr, pulNameLen);
    Starts("Slot=7 1001 Ptr=0x0 Ptr=0x123451c0 61 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0x3d);)");
    Ends(kTooSmall, "Slot=7 1001 Ptr=0x0 Ptr=0x123451c0 13 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   ULong(0xd);)");
}

TEST_P(VendorRecords, CA_GetNumberOfAllowedContainers) {
    auto* const pulNumber = At<CK_ULONG>(0x12345140);
    Answer([=] { *pulNumber = 2001; });

    Call("CA_GetNumberOfAllowedContainers", slotID, pulNumber);
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

    Call("CA_GetNumberOfAllowedContainers", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}
