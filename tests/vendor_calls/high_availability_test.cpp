#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_HAInit) {
    const CK_OBJECT_HANDLE hLoginKey = 1001;

    Call("CA_HAInit", hSession, hLoginKey);
    Starts("Sesn=81 Obj=1001 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);)");
    Ends(kEveryResult);
}

TEST_P(VendorRecords, CA_HAGetMasterPublic) {
    auto* const pCertificate = At<CK_BYTE>(0x12345140);
    auto* const pulCertificateLen = At<CK_ULONG>(0x12345180);
    Before([=] { *pulCertificateLen = 61; });
    Answer([=] {
        Put(pCertificate, "returned certificate and more");
        *pulCertificateLen = 20;
    });

    Call("CA_HAGetMasterPublic", slotID, pCertificate, pulCertificateLen);
    Starts("Slot=7 Ptr=0x12345140 Ptr=0x12345180 61 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Slot=7 Ptr=0x12345140 Ptr=0x12345180 20 "returned certificate" )",
         R"(
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x14);
   ByteString(SimpleText"returned certificate");)");
    Ends(kOtherErrors);

    Call("CA_HAGetMasterPublic", slotID, nullptr, nullptr);
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

    Call("CA_HAGetMasterPublic", slotID, nullptr, pulCertificateLen);
    Starts("Slot=7 Ptr=0x0 Ptr=0x12345180 61 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);)");
    Ends(kTooSmall, "Slot=7 Ptr=0x0 Ptr=0x12345180 20 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x14);)");
}

TEST_P(VendorRecords, CA_HAGetLoginChallenge) {
    const CK_USER_TYPE userType = 1001;
    auto* const pCertificate = TextAt(0x12345180, "the certificate and more");
    const CK_ULONG ulCertificateLen = 15;
    auto* const pChallenge = At<CK_BYTE>(0x12345200);
    auto* const pulChallengeLen = At<CK_ULONG>(0x12345240);
    Before([=] { *pulChallengeLen = 61; });
    Answer([=] {
        Put(pChallenge, "returned challenge and more");
        *pulChallengeLen = 18;
    });

    Call("CA_HAGetLoginChallenge", hSession, userType, pCertificate, ulCertificateLen, pChallenge,
         pulChallengeLen);
    Starts(R"(Sesn=81 User=1001 Ptr=0x12345180 15 "the certificate" Ptr=0x12345200 Ptr=0x12345240 61 )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x12345180);
   ULong(0xf);
   ByteString(SimpleText"the certificate");
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x3d);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 User=1001 Ptr=0x12345200 18 "returned challenge" )",
         R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x12345200);
   ULong(0x12);
   ByteString(SimpleText"returned challenge");)");
    Ends(kOtherErrors);

    Call("CA_HAGetLoginChallenge", hSession, userType, nullptr, ulCertificateLen, nullptr, nullptr);
    Starts("Sesn=81 User=1001 Ptr=0x0 15 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x0);
   ULong(0xf);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 User=1001 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x0);)");

    Call("CA_HAGetLoginChallenge", hSession, userType, pCertificate, ulCertificateLen, nullptr,
         pulChallengeLen);
    Starts(R"(Sesn=81 User=1001 Ptr=0x12345180 15 "the certificate" Ptr=0x0 Ptr=0x12345240 61 )",
           R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x12345180);
   ULong(0xf);
   ByteString(SimpleText"the certificate");
   Pointer(0x0);
   Pointer(0x12345240);
   ULong(0x3d);)");
    Ends(kTooSmall, "Sesn=81 User=1001 Ptr=0x0 18 ",
         R"(
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x0);
   ULong(0x12);)");
}

TEST_P(VendorRecords, CA_HAAnswerLoginChallenge) {
    const CK_OBJECT_HANDLE hLoginKey = 1001;
    auto* const pChallenge = TextAt(0x12345180, "the challenge and more");
    const CK_ULONG ulChallengeLen = 13;
    auto* const pAnswer = At<CK_BYTE>(0x12345200);
    auto* const pulAnswerLen = At<CK_ULONG>(0x12345240);
    Before([=] { *pulAnswerLen = 61; });
    Answer([=] {
        Put(pAnswer, "returned answer and more");
        *pulAnswerLen = 15;
    });

    Call("CA_HAAnswerLoginChallenge", hSession, hLoginKey, pChallenge, ulChallengeLen, pAnswer, pulAnswerLen);
    Starts(R"(Sesn=81 Obj=1001 Ptr=0x12345180 13 "the challenge" Ptr=0x12345200 Ptr=0x12345240 )",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(SimpleText"the challenge");
   Pointer(0x12345200);
   Pointer(0x12345240);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345200 Ptr=0x12345240 "returned answer" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ByteString(SimpleText"returned answer");)");
    Ends(kOtherErrors);

    Call("CA_HAAnswerLoginChallenge", hSession, hLoginKey, nullptr, ulChallengeLen, nullptr, nullptr);
    Starts("Sesn=81 Obj=1001 Ptr=0x0 13 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x0);
   ULong(0xd);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_HAAnswerLoginChallenge", hSession, hLoginKey, pChallenge, ulChallengeLen, nullptr, pulAnswerLen);
    Starts(R"(Sesn=81 Obj=1001 Ptr=0x12345180 13 "the challenge" Ptr=0x0 Ptr=0x12345240 )",
           R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(SimpleText"the challenge");
   Pointer(0x0);
   Pointer(0x12345240);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x12345240 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345240);)");
}

TEST_P(VendorRecords, CA_HALogin) {
    auto* const pAnswer = TextAt(0x12345140, "the answer and more");
    const CK_ULONG ulAnswerLen = 10;
    auto* const pMofNChallenge = At<CK_BYTE>(0x123451c0);
    auto* const pulMofNChallengeLen = At<CK_ULONG>(0x12345200);
    Before([=] { *pulMofNChallengeLen = 61; });
    Answer([=] {
        Put(pMofNChallenge, "returned mof nchallenge and more");
        *pulMofNChallengeLen = 23;
    });

    Call("CA_HALogin", hSession, pAnswer, ulAnswerLen, pMofNChallenge, pulMofNChallengeLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 10 "the answer" Ptr=0x123451c0 Ptr=0x12345200 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"the answer");
   Pointer(0x123451c0);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x123451c0 Ptr=0x12345200 "returned mof nchallenge" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ByteString(SimpleText"returned mof nchallenge");)");
    Ends(kOtherErrors);

    Call("CA_HALogin", hSession, nullptr, ulAnswerLen, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 10 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_HALogin", hSession, pAnswer, ulAnswerLen, nullptr, pulMofNChallengeLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 10 "the answer" Ptr=0x0 Ptr=0x12345200 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"the answer");
   Pointer(0x0);
   Pointer(0x12345200);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x12345200 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345200);)");
}

TEST_P(VendorRecords, CA_HAAnswerMofNChallenge) {
    auto* const pMofNChallenge = TextAt(0x12345140, "the mof nchallenge and more");
    const CK_ULONG ulMofNChallengeLen = 18;
    auto* const pMofNAnswer = At<CK_BYTE>(0x123451c0);
    auto* const pulMofNAnswerLen = At<CK_ULONG>(0x12345200);
    Before([=] { *pulMofNAnswerLen = 61; });
    Answer([=] {
        Put(pMofNAnswer, "returned mof nanswer and more");
        *pulMofNAnswerLen = 20;
    });

    Call("CA_HAAnswerMofNChallenge", hSession, pMofNChallenge, ulMofNChallengeLen, pMofNAnswer,
         pulMofNAnswerLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 18 "the mof nchallenge" Ptr=0x123451c0 Ptr=0x12345200 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x12);
   ByteString(SimpleText"the mof nchallenge");
   Pointer(0x123451c0);
   Pointer(0x12345200);)");
    Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x123451c0 20 "returned mof nanswer" )",
         R"(
   SessionHandle(0x51);
   Pointer(0x123451c0);
   ULong(0x14);
   ByteString(SimpleText"returned mof nanswer");)");
    Ends(kOtherErrors);

    Call("CA_HAAnswerMofNChallenge", hSession, nullptr, ulMofNChallengeLen, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 18 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x12);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);)");

    Call("CA_HAAnswerMofNChallenge", hSession, pMofNChallenge, ulMofNChallengeLen, nullptr, pulMofNAnswerLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 18 "the mof nchallenge" Ptr=0x0 Ptr=0x12345200 )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x12);
   ByteString(SimpleText"the mof nchallenge");
   Pointer(0x0);
   Pointer(0x12345200);)");
    Ends(kTooSmall, "Sesn=81 Ptr=0x0 20 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x14);)");
}

TEST_P(VendorRecords, CA_HAActivateMofN) {
    auto* const pMofNAnswer = TextAt(0x12345140, "the mof nanswer and more");
    const CK_ULONG ulMofNAnswerLen = 15;

    Call("CA_HAActivateMofN", hSession, pMofNAnswer, ulMofNAnswerLen);
    Starts(R"(Sesn=81 Ptr=0x12345140 15 "the mof nanswer" )",
           R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xf);
   ByteString(SimpleText"the mof nanswer");)");
    Ends(kEveryResult);

    Call("CA_HAActivateMofN", hSession, nullptr, ulMofNAnswerLen);
    Starts("Sesn=81 Ptr=0x0 15 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xf);)");
    Ends(kSuccess);
}

TEST_P(VendorRecords, CA_GetHAState) {
    auto* const pState = At<CK_HA_STATUS>(0x12345140);
    Answer([=] {
        *pState = {"Serial of the group",
                   {{"Serial of the first", 2001}, {"Serial of the second", 2002}, {"Beyond the list", 2003}},
                   2};
    });

    Call("CA_GetHAState", slotID, pState);
    Starts("Slot=7 Ptr=0x12345140 ",
           R"(
   SlotID(0x7);
   Pointer(0x12345140);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Slot=7 Ptr=0x12345140 HAStatus{Serial of the group"<null>" HAMember{Serial of the first"<null>" 2001 } HAMember{Serial of the second"<null>" 2002 } 2 } )",
        R"(
   SlotID(0x7);
   Pointer(0x12345140);
   HAStatus
   {
      ByteString(SimpleText"<null>");
      HAMember
      {
         ByteString(SimpleText"<null>");
         UShort(0x7d1);
      };
      HAMember
      {
         ByteString(SimpleText"<null>");
         UShort(0x7d2);
      };
      UShort(0x2);
   };)");
    Ends(kOtherErrors);

    Call("CA_GetHAState", slotID, nullptr);
    Starts("Slot=7 Ptr=0x0 ",
           R"(
   SlotID(0x7);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x0 ",
         R"(
   SlotID(0x7);
   Pointer(0x0);)");
}
