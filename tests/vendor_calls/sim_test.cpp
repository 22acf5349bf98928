#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_ExtractMaskedObject) {
    const CK_OBJECT_HANDLE hObject = 1001;
    auto* const pMaskedObject = At<CK_BYTE>(0x12345180);
    auto* const pusMaskedObjectLen = At<CK_ULONG>(0x123451c0);
    Before([=] { *pusMaskedObjectLen = 61; });
    Answer([=] {
        Put(pMaskedObject, "returned masked object and more");
        *pusMaskedObjectLen = 22;
    });

    Call("CA_ExtractMaskedObject", hSession, hObject, pMaskedObject, pusMaskedObjectLen);
    Starts("Sesn=81 Obj=1001 Ptr=0x12345180 Ptr=0x123451c0 61 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   UShort(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Obj=1001 Ptr=0x12345180 Ptr=0x123451c0 22 "returned masked object" )",
         R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x12345180);
   Pointer(0x123451c0);
   UShort(0x16);
   ByteString(SimpleText"returned masked object");)");
    Ends(kOtherErrors);

    Call("CA_ExtractMaskedObject", hSession, hObject, nullptr, nullptr);
    Starts("Sesn=81 Obj=1001 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Obj=1001 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_ExtractMaskedObject", hSession, hObject, nullptr, pusMaskedObjectLen);
    Starts("Sesn=81 Obj=1001 Ptr=0x0 Ptr=0x123451c0 61 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   UShort(0x3d);)");
    Ends(kTooSmall, "Sesn=81 Obj=1001 Ptr=0x0 Ptr=0x123451c0 22 ",
         R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x0);
   Pointer(0x123451c0);
   UShort(0x16);)");
}

TEST_P(VendorRecords, CA_InsertMaskedObject) {
    auto* const phObject = At<CK_OBJECT_HANDLE>(0x12345140);
    auto* const pMaskedObject = TextAt(0x12345180, "the masked object and more");
    const CK_ULONG ulMaskedObjectLen = 17;
    Answer([=] { *phObject = 2001; });

    Call("CA_InsertMaskedObject", hSession, phObject, pMaskedObject, ulMaskedObjectLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 Ptr=0x12345180 17 "the masked object" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x11);
   ByteString(SimpleText"the masked object");)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x12345140 Obj=2001 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ObjectHandle(0x7d1);)");
    Ends(kOtherErrors);

    Call("CA_InsertMaskedObject", hSession, nullptr, nullptr, ulMaskedObjectLen);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 17 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   ULong(0x11);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_MultisignValue) {
    auto* const pMaskedKey = TextAt(0x12345140, "the masked key and more");
    const CK_ULONG ulMaskedKeyLen = 14;
    auto* const ppInputs = At<CK_BYTE*>(0x123451c0);
    PutAll(ppInputs,
           {TextAt(0x12345800, "first input and more"), TextAt(0x12345840, "the second input and more")});
    const CK_ULONG ulInputCount = 2;
    auto* const pulInputLens = At<CK_ULONG>(0x12345240);
    PutAll(pulInputLens, {11, 16});
    auto* const pSignature = At<CK_BYTE>(0x12345280);
    auto* const pulSignatureLen = At<CK_ULONG>(0x123452c0);
    Before([=] { *pulSignatureLen = 61; });
    Answer([=] {
        Put(pSignature, "returned signature and more");
        *pulSignatureLen = 18;
    });

    Call("CA_MultisignValue", hSession, pMaskedKey, ulMaskedKeyLen, ppInputs, ulInputCount, pulInputLens,
         pSignature, pulSignatureLen);
    Starts(R"(Sesn=81 "the masked key" Ptr=0x123451c0 inputCnt=2 "first input" "the second input" )",
           R"(
   SessionHandle(0x51);
   ByteString(SimpleText"the masked key");
   Pointer(0x123451c0);
   ULong(0x2);Value(SimpleText"first input");Value(SimpleText"the second input");)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345280 18 "returned signature" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345280);
   ULong(0x12);
   ByteString(SimpleText"returned signature");)");
    Ends(kOtherErrors);

    Call("CA_MultisignValue", hSession, nullptr, ulMaskedKeyLen, nullptr, ulInputCount, nullptr, nullptr,
         nullptr);
    Starts("Sesn=81 Ptr=0x0 inputCnt=2 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x2);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");

    Call("CA_MultisignValue", hSession, pMaskedKey, ulMaskedKeyLen, ppInputs, ulInputCount, pulInputLens,
         nullptr, pulSignatureLen);
    Starts(R"(Sesn=81 "the masked key" Ptr=0x123451c0 inputCnt=2 "first input" "the second input" )",
           R"(
   SessionHandle(0x51);
   ByteString(SimpleText"the masked key");
   Pointer(0x123451c0);
   ULong(0x2);Value(SimpleText"first input");Value(SimpleText"the second input");)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 18 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x12);)");
}

TEST_P(VendorRecords, CA_SIMExtract) {
    const CK_ULONG ulHandleCount = 2;
    auto* const phObjects = At<CK_OBJECT_HANDLE>(0x12345180);
    PutAll(phObjects, {2001, 2002, 2003});
    const CK_ULONG ulAuthForm = 1;
    const CK_ULONG ulN = 3;
    const CK_ULONG ulM = 1004;
    auto* const pulSecretLens = At<CK_ULONG>(0x12345280);
    PutAll(pulSecretLens, {12, 17, 5});
    auto* const ppSecrets = At<CK_BYTE*>(0x123452c0);
    PutAll(ppSecrets, {TextAt(0x12345800, "first secret"), TextAt(0x12345840, "the second secret"),
                       TextAt(0x12345880, "third")});
    auto* const pulBlobLen = At<CK_ULONG>(0x12345340);
    auto* const pBlob = At<CK_BYTE>(0x12345380);
    Before([=] { *pulBlobLen = 61; });
    Answer([=] {
        Put(pBlob, "returned blob and more");
        *pulBlobLen = 13;
    });

    Call("CA_SIMExtract", hSession, ulHandleCount, phObjects, ulAuthForm, ulN, ulM, pulSecretLens, ppSecrets,
         CK_TRUE, pulBlobLen, pBlob);
    Starts(
        R"(Sesn=81 Ptr=0x12345180 ObjHndLst={Obj=2001 Obj=2002 } authForm=1 N=3 M=1004 PIN="********" PIN="********" PIN="********" delete=true Ptr=0x12345340 Ptr=0x12345380 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345180);
   ObjectHandleList
   {
      ObjectHandle(0x7d1);
      ObjectHandle(0x7d2);
   };
   ULong(0x1);
   ULong(0x3);
   ULong(0x3ec);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteBooleantrue;
   Pointer(0x12345340);
   Pointer(0x12345380);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345340 Ptr=0x12345380 "returned blob" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345340);
   Pointer(0x12345380);
   ByteString(SimpleText"returned blob");)");
    Ends(kOtherErrors);

    Call("CA_SIMExtract", hSession, ulHandleCount, nullptr, ulAuthForm, ulN, ulM, nullptr, nullptr, CK_FALSE,
         nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 authForm=1 N=3 M=1004 delete=false Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x1);
   ULong(0x3);
   ULong(0x3ec);
   ByteBooleanfalse;
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_SIMExtract", hSession, ulHandleCount, phObjects, ulAuthForm, ulN, ulM, pulSecretLens, ppSecrets,
         CK_TRUE, pulBlobLen, nullptr);
    Starts(
        R"(Sesn=81 Ptr=0x12345180 ObjHndLst={Obj=2001 Obj=2002 } authForm=1 N=3 M=1004 PIN="********" PIN="********" PIN="********" delete=true Ptr=0x12345340 Ptr=0x0 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345180);
   ObjectHandleList
   {
      ObjectHandle(0x7d1);
      ObjectHandle(0x7d2);
   };
   ULong(0x1);
   ULong(0x3);
   ULong(0x3ec);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteBooleantrue;
   Pointer(0x12345340);
   Pointer(0x0);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x12345340 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345340);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_SIMInsert) {
    const CK_ULONG ulAuthForm = 1;
    const CK_ULONG ulSecretCount = 3;
    auto* const pulSecretLens = At<CK_ULONG>(0x123451c0);
    PutAll(pulSecretLens, {12, 17, 5});
    auto* const ppSecrets = At<CK_BYTE*>(0x12345200);
    PutAll(ppSecrets, {TextAt(0x12345800, "first secret"), TextAt(0x12345840, "the second secret"),
                       TextAt(0x12345880, "third")});
    const CK_ULONG ulBlobLen = 8;
    auto* const pBlob = TextAt(0x12345280, "the blob and more");
    auto* const pulHandleCount = At<CK_ULONG>(0x123452c0);
    auto* const phObjects = At<CK_OBJECT_HANDLE>(0x12345300);
    Answer([=] {
        *pulHandleCount = 2;
        PutAll(phObjects, {2001, 2002, 2003});
    });

    Call("CA_SIMInsert", hSession, ulAuthForm, ulSecretCount, pulSecretLens, ppSecrets, ulBlobLen, pBlob,
         pulHandleCount, phObjects);
    Starts(
        R"(Sesn=81 authForm=1 secretCnt=3 PIN="********" PIN="********" PIN="********" Ptr=0x12345280 "the blob" Ptr=0x123452c0 Ptr=0x12345300 )",
        R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   Pointer(0x12345280);
   ByteString(SimpleText"the blob");
   Pointer(0x123452c0);
   Pointer(0x12345300);)");
    Ends(kSuccessOrTooSmall,
         "Sesn=81 Ptr=0x123452c0 hdlCount=2 Ptr=0x12345300 ObjHndLst={Obj=2001 Obj=2002 } ",
         R"(
   SessionHandle(0x51);
   Pointer(0x123452c0);
   ULong(0x2);
   Pointer(0x12345300);
   ObjectHandleList
   {
      ObjectHandle(0x7d1);
      ObjectHandle(0x7d2);
   };)");
    Ends(kOtherErrors);

    Call("CA_SIMInsert", hSession, ulAuthForm, ulSecretCount, nullptr, nullptr, ulBlobLen, nullptr, nullptr,
         nullptr);
    Starts("Sesn=81 authForm=1 secretCnt=3 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_SIMInsert", hSession, ulAuthForm, ulSecretCount, pulSecretLens, ppSecrets, ulBlobLen, pBlob,
         pulHandleCount, nullptr);
    Starts(
        R"(Sesn=81 authForm=1 secretCnt=3 PIN="********" PIN="********" PIN="********" Ptr=0x12345280 "the blob" Ptr=0x123452c0 Ptr=0x0 )",
        R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   Pointer(0x12345280);
   ByteString(SimpleText"the blob");
   Pointer(0x123452c0);
   Pointer(0x0);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x123452c0 hdlCount=2 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x123452c0);
   ULong(0x2);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_SIMMultiSign) {
    const CK_ULONG ulAuthForm = 1;
    const CK_ULONG ulSecretCount = 3;
    auto* const pulSecretLens = At<CK_ULONG>(0x123451c0);
    PutAll(pulSecretLens, {12, 17, 5});
    auto* const ppSecrets = At<CK_BYTE*>(0x12345200);
    PutAll(ppSecrets, {TextAt(0x12345800, "first secret"), TextAt(0x12345840, "the second secret"),
                       TextAt(0x12345880, "third")});
    const CK_ULONG ulBlobLen = 8;
    auto* const pBlob = TextAt(0x12345280, "the blob and more");
    const CK_ULONG ulInputCount = 2;
    auto* const pulInputLens = At<CK_ULONG>(0x12345300);
    PutAll(pulInputLens, {11, 16});
    auto* const ppInputs = At<CK_BYTE*>(0x12345340);
    PutAll(ppInputs,
           {TextAt(0x123458c0, "first input and more"), TextAt(0x12345900, "the second input and more")});
    auto* const pulSignatureLens = At<CK_ULONG>(0x12345380);
    auto* const ppSignatures = At<CK_BYTE*>(0x123453c0);
    PutAll(ppSignatures, {At<CK_BYTE>(0x12345940), At<CK_BYTE>(0x12345980)});
    Before([=] { PutAll(pulSignatureLens, {41, 42}); });
    Answer([=] {
        Put(ppSignatures[0], "first signature and more");
        Put(ppSignatures[1], "the second signature and more");
        PutAll(pulSignatureLens, {15, 20});
    });

    Call("CA_SIMMultiSign", hSession, ulAuthForm, ulSecretCount, pulSecretLens, ppSecrets, ulBlobLen, pBlob,
         ulInputCount, pulInputLens, ppInputs, pulSignatureLens, ppSignatures);
    Starts(
        R"(Sesn=81 authForm=1 secretCnt=3 PIN="********" PIN="********" PIN="********" Ptr=0x12345280 "the blob" inputCnt=2 in="first input" in="the second input" Ptr=0x12345380 Ptr=0x123453c0 )",
        R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   Pointer(0x12345280);
   ByteString(SimpleText"the blob");
   ULong(0x2);
   ByteString(SimpleText"first input");
   ByteString(SimpleText"the second input");
   Pointer(0x12345380);
   Pointer(0x123453c0);)");
    Ends(kSuccessOrTooSmall,
         R"(Sesn=81 Ptr=0x12345380 Ptr=0x123453c0 sig="first signature" sig="the second signature" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345380);
   Pointer(0x123453c0);
   ByteString(SimpleText"first signature");
   ByteString(SimpleText"the second signature");)");
    Ends(kOtherErrors);

    Call("CA_SIMMultiSign", hSession, ulAuthForm, ulSecretCount, nullptr, nullptr, ulBlobLen, nullptr,
         ulInputCount, nullptr, nullptr, nullptr, nullptr);
    Starts("Sesn=81 authForm=1 secretCnt=3 Ptr=0x0 inputCnt=2 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x1);
   ULong(0x3);
   Pointer(0x0);
   ULong(0x2);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_Extract) {
    auto* const pMechanism = At<CK_MECHANISM>(0x12345140);
    auto* const goingIn = TextAt(0x12345800, "vector going in");
    auto* const comingOut = TextAt(0x12345840, "vector coming out");
    Before([=] { *pMechanism = {CKM_AES_CBC, goingIn, 15}; });
    Answer([=] { *pMechanism = {CKM_AES_CBC_PAD, comingOut, 17}; });

    Call("CA_Extract", hSession, pMechanism);
    Starts(R"(81 Ptr=0x12345140 Mech=(CKM_AES_CBC,"vector going in") )",
           R"(
   ULong(0x51);
   Pointer(0x12345140);
   MechanismCKM_AES_CBC,Value(SimpleText"vector going in"));)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345140 Mech=(CKM_AES_CBC_PAD,"vector coming out") )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   MechanismCKM_AES_CBC_PAD,Value(SimpleText"vector coming out"));)");
    Ends(kOtherErrors);

    Call("CA_Extract", hSession, nullptr);
    Starts("81 Ptr=0x0 ",
           R"(
   ULong(0x51);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
}

TEST_P(VendorRecords, CA_Insert) {
    auto* const pMechanism = At<CK_MECHANISM>(0x12345140);
    auto* const goingIn = TextAt(0x12345800, "vector going in");
    auto* const comingOut = TextAt(0x12345840, "vector coming out");
    Before([=] { *pMechanism = {CKM_AES_CBC, goingIn, 15}; });
    Answer([=] { *pMechanism = {CKM_AES_CBC_PAD, comingOut, 17}; });

    Call("CA_Insert", hSession, pMechanism);
    Starts(R"(81 Ptr=0x12345140 Mech=(CKM_AES_CBC,"vector going in") )",
           R"(
   ULong(0x51);
   Pointer(0x12345140);
   MechanismCKM_AES_CBC,Value(SimpleText"vector going in"));)");
    Ends(kEveryResult);

    Call("CA_Insert", hSession, nullptr);
    Starts("81 Ptr=0x0 ",
           R"(
   ULong(0x51);
   Pointer(0x0);)");
    Ends(kSuccess);
}
