#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_ManualKCV) {
    Call("CA_ManualKCV", hSession);
    Starts("Sesn=81 ",
           R"(
   SessionHandle(0x51);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_SetLKCV) {
    auto* const pDomain = TextAt(0x12345140, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetLKCV", hSession, pDomain, ulDomainLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 10 PIN="********" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_SetLKCV", hSession, nullptr, ulDomainLen);
    Starts(R"(Sesn=81 Ptr=0x0 10 PIN="<null>" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_SetKCV) {
    auto* const pDomain = TextAt(0x12345140, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetKCV", hSession, pDomain, ulDomainLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 10 PIN="********" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_SetKCV", hSession, nullptr, ulDomainLen);
    Starts(R"(Sesn=81 Ptr=0x0 10 PIN="<null>" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_SetRDK) {
    auto* const pDomain = TextAt(0x12345140, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetRDK", hSession, pDomain, ulDomainLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 10 PIN="********" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_SetRDK", hSession, nullptr, ulDomainLen);
    Starts(R"(Sesn=81 Ptr=0x0 10 PIN="<null>" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_SetCloningDomain) {
    auto* const pDomain = TextAt(0x12345100, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetCloningDomain", pDomain, ulDomainLen);
    Starts(R"(PIN="********" )",
           R"(
   ByteString(SimpleText"********");)");
    Ends(kEveryResult);

    Call("CA_SetCloningDomain", nullptr, ulDomainLen);
    Starts(R"(PIN="<null>" )",
           R"(
   ByteString(SimpleText"<null>");)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_ClonePrivateKey) {
    const CK_SESSION_HANDLE hTargetSession = 1001;
    const CK_SESSION_HANDLE hSourceSession = 1002;
    const CK_OBJECT_HANDLE hObject = 1003;
    auto* const phClone = At<CK_OBJECT_HANDLE>(0x123451c0);
    Answer([=] { *phClone = 2001; });

    Call("CA_ClonePrivateKey", hTargetSession, hSourceSession, hObject, phClone);
    Starts("1001 1002 Obj=1003 Ptr=0x123451c0 ",
           R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x123451c0);)");
    Ends(kSuccessOrTooSmall, "1001 1002 Obj=1003 Ptr=0x123451c0 Obj=2001 ",
         R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x123451c0);
   ObjectHandle(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_ClonePrivateKey", hTargetSession, hSourceSession, hObject, nullptr);
    Starts("1001 1002 Obj=1003 Ptr=0x0 ",
           R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "1001 1002 Obj=1003 Ptr=0x0 ",
         R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_CloneObject) {
    const CK_SESSION_HANDLE hTargetSession = 1001;
    const CK_SESSION_HANDLE hSourceSession = 1002;
    const CK_ULONG ulObjectType = 1003;
    const CK_OBJECT_HANDLE hObject = 1004;
    auto* const phClone = At<CK_OBJECT_HANDLE>(0x12345200);
    Answer([=] { *phClone = 2001; });

    Call("CA_CloneObject", hTargetSession, hSourceSession, ulObjectType, hObject, phClone);
    Starts("1001 1002 Type=1003 Obj=1004 Ptr=0x12345200 ",
           R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ObjectHandle(0x3ec);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall, "1001 1002 Type=1003 1004 Ptr=0x12345200 2001 ",
         R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x12345200);
   ULong(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_CloneObject", hTargetSession, hSourceSession, ulObjectType, hObject, nullptr);
    Starts("1001 1002 Type=1003 Obj=1004 Ptr=0x0 ",
           R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ObjectHandle(0x3ec);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "1001 1002 Type=1003 1004 Ptr=0x0 ",
         R"(
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_GenerateCloningKEV) {
    auto* const pKev = At<CK_BYTE>(0x12345140);
    auto* const pulKevLen = At<CK_ULONG>(0x12345180);
    Before([=] { *pulKevLen = 61; });
    Answer([=] {
        Put(pKev, "returned kev and more");
        *pulKevLen = 12;
    });

    Call("CA_GenerateCloningKEV", hSession, pKev, pulKevLen);
    Starts("Sesn=81 Ptr=0x12345140 Ptr=0x12345180 61 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 305418560 305418624 12 PIN="********" )",
         R"(
   SessionHandle(0x51);
   ULong(0x12345140);
   ULong(0x12345180);
   ULong(0xc);
   ByteString(SimpleText"********");)");
    Ends(kOtherErrors);

    Call("CA_GenerateCloningKEV", hSession, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 0 0 PIN="<null>" )",
         R"(
   SessionHandle(0x51);
   ULong(0x0);
   ULong(0x0);
   ByteString(SimpleText"<null>");)");

    Call("CA_GenerateCloningKEV", hSession, nullptr, pulKevLen);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x12345180 61 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kTooSmall, R"(Sesn=81 0 305418624 12 PIN="<null>" )",
         R"(
   SessionHandle(0x51);
   ULong(0x0);
   ULong(0x12345180);
   ULong(0xc);
   ByteString(SimpleText"<null>");)");
}

TEST_P(VendorRecords, CA_CloneAsTargetInit) {
    auto* const pSourceData = TextAt(0x12345140, "the source data and more");
    const CK_ULONG ulSourceDataLen = 15;
    auto* const pKev = TextAt(0x123451c0, "the kev and more");
    const CK_ULONG ulKevLen = 7;
    auto* const pTargetData = At<CK_BYTE>(0x12345280);
    auto* const pulTargetDataLen = At<CK_ULONG>(0x123452c0);
    Before([=] { *pulTargetDataLen = 61; });
    Answer([=] {
        Put(pTargetData, "returned target data and more");
        *pulTargetDataLen = 20;
    });

    Call("CA_CloneAsTargetInit", hSession, pSourceData, ulSourceDataLen, pKev, ulKevLen, CK_TRUE, pTargetData,
         pulTargetDataLen);
    Starts(
        R"(Sesn=81 Ptr=0x12345140 "the source data" Ptr=0x123451c0 PIN="********" true Ptr=0x12345280 Ptr=0x123452c0 61 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the source data");
   Pointer(0x123451c0);
   ByteString(SimpleText"********");
   ByteBooleantrue;
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345280 Ptr=0x123452c0 "returned target data" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ByteString(SimpleText"returned target data");)");
    Ends(kOtherErrors);

    Call("CA_CloneAsTargetInit", hSession, nullptr, ulSourceDataLen, nullptr, ulKevLen, CK_FALSE, nullptr,
         nullptr);
    Starts(R"(Sesn=81 Ptr=0x0 Ptr=0x0 PIN="<null>" false Ptr=0x0 Ptr=0x0 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   ByteString(SimpleText"<null>");
   ByteBooleanfalse;
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_CloneAsTargetInit", hSession, pSourceData, ulSourceDataLen, pKev, ulKevLen, CK_TRUE, nullptr,
         pulTargetDataLen);
    Starts(
        R"(Sesn=81 Ptr=0x12345140 "the source data" Ptr=0x123451c0 PIN="********" true Ptr=0x0 Ptr=0x123452c0 61 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the source data");
   Pointer(0x123451c0);
   ByteString(SimpleText"********");
   ByteBooleantrue;
   Pointer(0x0);
   Pointer(0x123452c0);
   ULong(0x3d);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x123452c0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x123452c0);)");
}

TEST_P(VendorRecords, CA_CloneAsSource) {
    const CK_ULONG ulObjectType = 1001;
    const CK_OBJECT_HANDLE hObject = 1002;
    auto* const pTargetData = TextAt(0x123451c0, "the target data and more");
    const CK_ULONG ulTargetDataLen = 15;
    auto* const pClone = At<CK_BYTE>(0x12345280);
    auto* const pulCloneLen = At<CK_ULONG>(0x123452c0);
    Before([=] { *pulCloneLen = 61; });
    Answer([=] {
        Put(pClone, "returned clone and more");
        *pulCloneLen = 14;
    });

    Call("CA_CloneAsSource", hSession, ulObjectType, hObject, pTargetData, ulTargetDataLen, CK_TRUE, pClone,
         pulCloneLen);
    Starts(
        R"(Sesn=81 Type=1001 Obj=1002 Ptr=0x123451c0 "the target data" true Ptr=0x12345280 Ptr=0x123452c0 61 )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x123451c0);
   ByteString(SimpleText"the target data");
   ByteBooleantrue;
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345280 Ptr=0x123452c0 "returned clone" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ByteString(SimpleText"returned clone");)");
    Ends(kOtherErrors);

    Call("CA_CloneAsSource", hSession, ulObjectType, hObject, nullptr, ulTargetDataLen, CK_FALSE, nullptr,
         nullptr);
    Starts("Sesn=81 Type=1001 Obj=1002 Ptr=0x0 false Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x0);
   ByteBooleanfalse;
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_CloneAsSource", hSession, ulObjectType, hObject, pTargetData, ulTargetDataLen, CK_TRUE, nullptr,
         pulCloneLen);
    Starts(R"(Sesn=81 Type=1001 Obj=1002 Ptr=0x123451c0 "the target data" true Ptr=0x0 Ptr=0x123452c0 61 )",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x123451c0);
   ByteString(SimpleText"the target data");
   ByteBooleantrue;
   Pointer(0x0);
   Pointer(0x123452c0);
   ULong(0x3d);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x123452c0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x123452c0);)");
}

TEST_P(VendorRecords, CA_CloneAsTarget) {
    auto* const pKev = TextAt(0x12345140, "the kev and more");
    const CK_ULONG ulKevLen = 7;
    auto* const pClone = TextAt(0x123451c0, "the clone and more");
    const CK_ULONG ulCloneLen = 9;
    const CK_ULONG ulObjectType = 1001;
    const CK_OBJECT_HANDLE hObject = 1002;
    auto* const phClone = At<CK_OBJECT_HANDLE>(0x12345300);
    Answer([=] { *phClone = 2001; });

    Call("CA_CloneAsTarget", hSession, pKev, ulKevLen, pClone, ulCloneLen, ulObjectType, hObject, CK_TRUE,
         phClone);
    Starts(
        R"(Sesn=81 Ptr=0x12345140 PIN="********" Ptr=0x123451c0 "the clone" Type=1001 Obj=1002 true Ptr=0x12345300 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"********");
   Pointer(0x123451c0);
   ByteString(SimpleText"the clone");
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   ByteBooleantrue;
   Pointer(0x12345300);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x12345300 Obj=2001 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345300);
   ObjectHandle(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_CloneAsTarget", hSession, nullptr, ulKevLen, nullptr, ulCloneLen, ulObjectType, hObject,
         CK_FALSE, nullptr);
    Starts(R"(Sesn=81 Ptr=0x0 PIN="<null>" Ptr=0x0 Type=1001 Obj=1002 false Ptr=0x0 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ByteString(SimpleText"<null>");
   Pointer(0x0);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   ByteBooleanfalse;
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_CloneObjectToAllSessions) {
    const CK_OBJECT_HANDLE hObject = 1001;

    Call("CA_CloneObjectToAllSessions", hSession, hObject);
    Starts("Sesn=81 Obj=1001 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_CloneAllObjectsToSession) {
    Call("CA_CloneAllObjectsToSession", hSession, slotID);
    Starts("Sesn=81 Slot=7 ",
           R"(
   SessionHandle(0x51);
   SlotID(0x7);)");
    Ends(kEveryResult);
}
