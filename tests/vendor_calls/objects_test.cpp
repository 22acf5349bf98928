#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_DestroyMultipleObjects) {
    const CK_ULONG ulCount = 2;
    auto* const phObjects = At<CK_OBJECT_HANDLE>(0x12345180);
    PutAll(phObjects, {2001, 2002, 2003});
    auto* const pulIndex = At<CK_ULONG>(0x123451c0);
    Answer([=] { *pulIndex = 2004; });

    Call("CA_DestroyMultipleObjects", hSession, ulCount, phObjects, pulIndex);
    Starts("Sesn=81 2 Ptr=0x12345180 ObjHndLst={Obj=2001 Obj=2002 } Ptr=0x123451c0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x2);
   Pointer(0x12345180);
   ObjectHandleList
   {
      ObjectHandle(0x7d1);
      ObjectHandle(0x7d2);
   };
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x123451c0 Index=2004 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x123451c0);
   ULong(0x7d4);)");
    Ends(kOtherErrors);

    Call("CA_DestroyMultipleObjects", hSession, ulCount, nullptr, nullptr);
    Starts("Sesn=81 2 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x2);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetTokenObjectUID) {
    const CK_ULONG ulObjectType = 1001;
    const CK_OBJECT_HANDLE hObject = 1002;
    auto* const pOuid = At<CK_BYTE>(0x123451c0);
    auto* const pulOuidLen = At<CK_ULONG>(0x12345200);
    Before([=] { *pulOuidLen = 61; });
    Answer([=] {
        Put(pOuid, "returned ouid and more");
        *pulOuidLen = 13;
    });

    Call("CA_GetTokenObjectUID", slotID, ulObjectType, hObject, pOuid, pulOuidLen);
    Starts("Slot=7 Type=1001 Obj=1002 Ptr=0x123451c0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall, R"(Slot=7 Type=1001 Obj=1002 Ptr=0x123451c0 OUID="returned ouid" )",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x123451c0);
   ByteString(SimpleText"returned ouid");)");
    Ends(kOtherErrors);

    Call("CA_GetTokenObjectUID", slotID, ulObjectType, hObject, nullptr, nullptr);
    Starts("Slot=7 Type=1001 Obj=1002 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Type=1001 Obj=1002 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x0);)");

    Call("CA_GetTokenObjectUID", slotID, ulObjectType, hObject, nullptr, pulOuidLen);
    Starts("Slot=7 Type=1001 Obj=1002 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x0);)");
    Ends(kTooSmall, "Slot=7 Type=1001 Obj=1002 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetTokenObjectHandle) {
    auto* const pOuid = TextAt(0x12345140, "the ouid and more");
    const CK_ULONG ulOuidLen = 8;
    auto* const pulObjectType = At<CK_ULONG>(0x123451c0);
    auto* const phObject = At<CK_OBJECT_HANDLE>(0x12345200);
    Answer([=] {
        *pulObjectType = 2001;
        *phObject = 2002;
    });

    Call("CA_GetTokenObjectHandle", slotID, pOuid, ulOuidLen, pulObjectType, phObject);
    Starts(R"(Slot=7 Ptr=0x12345140 OUID="the ouid" Ptr=0x123451c0 Ptr=0x12345200 )",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ByteString(SimpleText"the ouid");
   Pointer(0x123451c0);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall,
         R"(Slot=7 Ptr=0x12345140 OUID="the ouid" Ptr=0x123451c0 Ptr=0x12345200 Type=2001 Obj=2002 )",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   ByteString(SimpleText"the ouid");
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ULong(0x7d1);
   ObjectHandle(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_GetTokenObjectHandle", slotID, nullptr, ulOuidLen, nullptr, nullptr);
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

TEST_P(VendorRecords, CA_GetObjectUID) {
    const CK_ULONG ulContainerNumber = 1001;
    const CK_ULONG ulObjectType = 1002;
    const CK_OBJECT_HANDLE hObject = 1003;
    auto* const pOuid = At<CK_BYTE>(0x12345200);
    auto* const pulOuidLen = At<CK_ULONG>(0x12345240);
    Before([=] { *pulOuidLen = 61; });
    Answer([=] {
        Put(pOuid, "returned ouid and more");
        *pulOuidLen = 13;
    });

    Call("CA_GetObjectUID", slotID, ulContainerNumber, ulObjectType, hObject, pOuid, pulOuidLen);
    Starts("Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x12345200 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall, R"(Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x12345200 "returned ouid" )",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"returned ouid");)");
    Ends(kOtherErrors);

    Call("CA_GetObjectUID", slotID, ulContainerNumber, ulObjectType, hObject, nullptr, nullptr);
    Starts("Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);)");

    Call("CA_GetObjectUID", slotID, ulContainerNumber, ulObjectType, hObject, nullptr, pulOuidLen);
    Starts("Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);)");
    Ends(kTooSmall, "Slot=7 Container=1001 ObjType=1002 Obj=1003 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GetObjectHandle) {
    const CK_ULONG ulContainerNumber = 1001;
    auto* const pOuid = TextAt(0x12345180, "the ouid and more");
    const CK_ULONG ulOuidLen = 8;
    auto* const pulObjectType = At<CK_ULONG>(0x12345200);
    auto* const phObject = At<CK_OBJECT_HANDLE>(0x12345240);
    Answer([=] {
        *pulObjectType = 2001;
        *phObject = 2002;
    });

    Call("CA_GetObjectHandle", slotID, ulContainerNumber, pOuid, ulOuidLen, pulObjectType, phObject);
    Starts(R"(Slot=7 Container=1001 Ptr=0x12345180 "the ouid" Ptr=0x12345200 Ptr=0x12345240 )",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   ByteString(SimpleText"the ouid");
   Pointer(0x12345200);
   Pointer(0x12345240);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Slot=7 Container=1001 Ptr=0x12345180 "the ouid" Ptr=0x12345200 Ptr=0x12345240 Type=2001 Obj=2002 )",
        R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x12345180);
   ByteString(SimpleText"the ouid");
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x7d1);
   ObjectHandle(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_GetObjectHandle", slotID, ulContainerNumber, nullptr, ulOuidLen, nullptr, nullptr);
    Starts("Slot=7 Container=1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Container=1001 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   ULong(0x3e9);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_ModifyUsageCount) {
    const CK_OBJECT_HANDLE hObject = 1001;
    const CK_ULONG ulCommandType = 1002;
    const CK_ULONG ulValue = 1003;

    Call("CA_ModifyUsageCount", hSession, hObject, ulCommandType, ulValue);
    Starts("Sesn=81 Obj=1001 Type=1002 Value=1003 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);)");
    Ends(kEveryResult);
}
