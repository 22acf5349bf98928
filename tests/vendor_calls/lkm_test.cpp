#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_LKMInitiatorChallenge) {
    const CK_OBJECT_HANDLE hKey = 1001;
    const CK_ULONG ulOption = 1002;
    const CK_MECHANISM_TYPE hashMechanism = 1003;
    auto* const pPeerKey = TextAt(0x12345200, "the peer key and more");
    const CK_ULONG ulPeerKeyLen = 12;
    auto* const pSharedData = TextAt(0x12345280, "the shared data and more");
    const CK_ULONG ulSharedDataLen = 15;
    auto* const pChallenge = At<CK_BYTE>(0x12345300);
    auto* const pulChallengeLen = At<CK_ULONG>(0x12345340);
    Before([=] { *pulChallengeLen = 61; });
    Answer([=] {
        Put(pChallenge, "returned challenge and more");
        *pulChallengeLen = 18;
    });

    Call("CA_LKMInitiatorChallenge", hSession, hKey, ulOption, hashMechanism, pPeerKey, ulPeerKeyLen,
         pSharedData, ulSharedDataLen, pChallenge, pulChallengeLen);
    Starts(
        R"(Sesn=81 1001 1002 hashMech=1003 Ptr=0x12345200 "the peer key" Ptr=0x12345280 "the shared data" Ptr=0x12345300 Ptr=0x12345340 )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the peer key");
   Pointer(0x12345280);
   ByteString(SimpleText"the shared data");
   Pointer(0x12345300);
   Pointer(0x12345340);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Sesn=81 Obj=1001 1002 hashMech=1003 Ptr=0x12345200 "the peer key" Ptr=0x12345280 "the shared data" Ptr=0x12345300 Ptr=0x12345340 "returned challenge" )",
        R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the peer key");
   Pointer(0x12345280);
   ByteString(SimpleText"the shared data");
   Pointer(0x12345300);
   Pointer(0x12345340);
   ByteString(SimpleText"returned challenge");)");
    Ends(kOtherErrors);

    Call("CA_LKMInitiatorChallenge", hSession, hKey, ulOption, hashMechanism, nullptr, ulPeerKeyLen, nullptr,
         ulSharedDataLen, nullptr, nullptr);
    Starts("Sesn=81 1001 1002 hashMech=1003 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Obj=1001 1002 hashMech=1003 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_LKMInitiatorChallenge", hSession, hKey, ulOption, hashMechanism, pPeerKey, ulPeerKeyLen,
         pSharedData, ulSharedDataLen, nullptr, pulChallengeLen);
    Starts(
        R"(Sesn=81 1001 1002 hashMech=1003 Ptr=0x12345200 "the peer key" Ptr=0x12345280 "the shared data" Ptr=0x0 Ptr=0x12345340 )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the peer key");
   Pointer(0x12345280);
   ByteString(SimpleText"the shared data");
   Pointer(0x0);
   Pointer(0x12345340);)");
    Ends(
        kTooSmall,
        R"(Sesn=81 Obj=1001 1002 hashMech=1003 Ptr=0x12345200 "the peer key" Ptr=0x12345280 "the shared data" Ptr=0x0 Ptr=0x12345340 )",
        R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the peer key");
   Pointer(0x12345280);
   ByteString(SimpleText"the shared data");
   Pointer(0x0);
   Pointer(0x12345340);)");
}

TEST_P(VendorRecords, CA_LKMReceiverResponse) {
    const CK_OBJECT_HANDLE hKey = 1001;
    const CK_ULONG ulOption = 1002;
    const CK_MECHANISM_TYPE hashMechanism = 1003;
    auto* const pChallenge = TextAt(0x12345200, "the challenge and more");
    const CK_ULONG ulChallengeLen = 13;
    auto* const pSharedData = TextAt(0x12345280, "the shared data and more");
    const CK_ULONG ulSharedDataLen = 15;
    auto* const pResponse = At<CK_BYTE>(0x12345300);
    auto* const pulResponseLen = At<CK_ULONG>(0x12345340);
    Before([=] { *pulResponseLen = 61; });
    Answer([=] {
        Put(pResponse, "returned response and more");
        *pulResponseLen = 17;
    });

    Call("CA_LKMReceiverResponse", hSession, hKey, ulOption, hashMechanism, pChallenge, ulChallengeLen,
         pSharedData, ulSharedDataLen, pResponse, pulResponseLen);
    Starts(
        R"(Sesn=81 1001 1002 hashMech=1003 Ptr=0x12345200 "the challenge" Ptr=0x12345280 15 Ptr=0x12345300 Ptr=0x12345340 )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the challenge");
   Pointer(0x12345280);
   ULong(0xf);
   Pointer(0x12345300);
   Pointer(0x12345340);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Sesn=81 Obj=1001 1002 hashMech=1003 Ptr=0x12345200 "the challenge" Ptr=0x12345280 "the shared data" "returned response" )",
        R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the challenge");
   Pointer(0x12345280);
   ByteString(SimpleText"the shared data");
   ByteString(SimpleText"returned response");)");
    Ends(kOtherErrors);

    Call("CA_LKMReceiverResponse", hSession, hKey, ulOption, hashMechanism, nullptr, ulChallengeLen, nullptr,
         ulSharedDataLen, nullptr, nullptr);
    Starts("Sesn=81 1001 1002 hashMech=1003 Ptr=0x0 Ptr=0x0 15 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x0);
   Pointer(0x0);
   ULong(0xf);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Obj=1001 1002 hashMech=1003 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_LKMReceiverResponse", hSession, hKey, ulOption, hashMechanism, pChallenge, ulChallengeLen,
         pSharedData, ulSharedDataLen, nullptr, pulResponseLen);
    Starts(
        R"(Sesn=81 1001 1002 hashMech=1003 Ptr=0x12345200 "the challenge" Ptr=0x12345280 15 Ptr=0x0 Ptr=0x12345340 )",
        R"(
   SessionHandle(0x51);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the challenge");
   Pointer(0x12345280);
   ULong(0xf);
   Pointer(0x0);
   Pointer(0x12345340);)");
    Ends(
        kTooSmall,
        R"(Sesn=81 Obj=1001 1002 hashMech=1003 Ptr=0x12345200 "the challenge" Ptr=0x12345280 "the shared data" )",
        R"(
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   Pointer(0x12345200);
   ByteString(SimpleText"the challenge");
   Pointer(0x12345280);
   ByteString(SimpleText"the shared data");)");
}

TEST_P(VendorRecords, CA_LKMInitiatorComplete) {
    auto* const pResponse = TextAt(0x12345140, "the response and more");
    const CK_ULONG ulResponseLen = 12;
    auto* const pFirstTemplate = At<CK_ATTRIBUTE>(0x123451c0);
    PutAll(pFirstTemplate, {{CKA_LABEL, TextAt(0x12345800, "first label"), 11},
                            {CKA_ID, TextAt(0x12345840, "ID of the first"), 15}});
    const CK_ULONG ulFirstCount = 2;
    auto* const pSecondTemplate = At<CK_ATTRIBUTE>(0x12345240);
    PutAll(pSecondTemplate, {{CKA_LABEL, TextAt(0x12345880, "second label"), 12},
                             {CKA_ID, TextAt(0x123458c0, "ID of the second"), 16}});
    const CK_ULONG ulSecondCount = 1;
    auto* const pConfirmation = At<CK_BYTE>(0x123452c0);
    auto* const pulConfirmationLen = At<CK_ULONG>(0x12345300);
    auto* const phFirstKey = At<CK_OBJECT_HANDLE>(0x12345340);
    auto* const phSecondKey = At<CK_OBJECT_HANDLE>(0x12345380);
    Before([=] { *pulConfirmationLen = 61; });
    Answer([=] {
        Put(pConfirmation, "returned confirmation and more");
        *pulConfirmationLen = 21;
        *phFirstKey = 2001;
        *phSecondKey = 2002;
    });

    Call("CA_LKMInitiatorComplete", hSession, pResponse, ulResponseLen, pFirstTemplate, ulFirstCount,
         pSecondTemplate, ulSecondCount, pConfirmation, pulConfirmationLen, phFirstKey, phSecondKey);
    Starts(
        R"(Sesn=81 Ptr=0x12345140 "the response" Ptr=0x123451c0 AttrList={CKA_LABEL="first label" CKA_ID="ID of the first" } Ptr=0x12345240 AttrList={CKA_LABEL="second label" } Ptr=0x123452c0 Ptr=0x12345300 Ptr=0x12345340 Ptr=0x12345380 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the response");
   Pointer(0x123451c0);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"first label"));
      Attribute(CKA_ID,Value(SimpleText"ID of the first"));
   };
   Pointer(0x12345240);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"second label"));
   };
   Pointer(0x123452c0);
   Pointer(0x12345300);
   Pointer(0x12345340);
   Pointer(0x12345380);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Sesn=81 Ptr=0x12345140 "the response" Ptr=0x123451c0 AttrList={CKA_LABEL="first label" CKA_ID="ID of the first" } Ptr=0x12345240 AttrList={CKA_LABEL="second label" } Ptr=0x123452c0 "returned confirmation" Ptr=0x12345340 Obj=2001 Ptr=0x12345380 Obj=2002 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the response");
   Pointer(0x123451c0);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"first label"));
      Attribute(CKA_ID,Value(SimpleText"ID of the first"));
   };
   Pointer(0x12345240);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"second label"));
   };
   Pointer(0x123452c0);
   ByteString(SimpleText"returned confirmation");
   Pointer(0x12345340);
   ObjectHandle(0x7d1);
   Pointer(0x12345380);
   ObjectHandle(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_LKMInitiatorComplete", hSession, nullptr, ulResponseLen, nullptr, ulFirstCount, nullptr,
         ulSecondCount, nullptr, nullptr, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_LKMInitiatorComplete", hSession, pResponse, ulResponseLen, pFirstTemplate, ulFirstCount,
         pSecondTemplate, ulSecondCount, nullptr, pulConfirmationLen, phFirstKey, phSecondKey);
    Starts(
        R"(Sesn=81 Ptr=0x12345140 "the response" Ptr=0x123451c0 AttrList={CKA_LABEL="first label" CKA_ID="ID of the first" } Ptr=0x12345240 AttrList={CKA_LABEL="second label" } Ptr=0x0 Ptr=0x12345300 Ptr=0x12345340 Ptr=0x12345380 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the response");
   Pointer(0x123451c0);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"first label"));
      Attribute(CKA_ID,Value(SimpleText"ID of the first"));
   };
   Pointer(0x12345240);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"second label"));
   };
   Pointer(0x0);
   Pointer(0x12345300);
   Pointer(0x12345340);
   Pointer(0x12345380);)");
    Ends(
        kTooSmall,
        R"(Sesn=81 Ptr=0x12345140 "the response" Ptr=0x123451c0 AttrList={CKA_LABEL="first label" CKA_ID="ID of the first" } Ptr=0x12345240 AttrList={CKA_LABEL="second label" } Ptr=0x0 Ptr=0x12345340 Obj=2001 Ptr=0x12345380 Obj=2002 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the response");
   Pointer(0x123451c0);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"first label"));
      Attribute(CKA_ID,Value(SimpleText"ID of the first"));
   };
   Pointer(0x12345240);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"second label"));
   };
   Pointer(0x0);
   Pointer(0x12345340);
   ObjectHandle(0x7d1);
   Pointer(0x12345380);
   ObjectHandle(0x7d2);)");
}

TEST_P(VendorRecords, CA_LKMReceiverComplete) {
    auto* const pConfirmation = TextAt(0x12345140, "the confirmation and more");
    const CK_ULONG ulConfirmationLen = 16;
    auto* const pFirstTemplate = At<CK_ATTRIBUTE>(0x123451c0);
    PutAll(pFirstTemplate, {{CKA_LABEL, TextAt(0x12345800, "first label"), 11},
                            {CKA_ID, TextAt(0x12345840, "ID of the first"), 15}});
    const CK_ULONG ulFirstCount = 2;
    auto* const pSecondTemplate = At<CK_ATTRIBUTE>(0x12345240);
    PutAll(pSecondTemplate, {{CKA_LABEL, TextAt(0x12345880, "second label"), 12},
                             {CKA_ID, TextAt(0x123458c0, "ID of the second"), 16}});
    const CK_ULONG ulSecondCount = 1;
    auto* const phFirstKey = At<CK_OBJECT_HANDLE>(0x123452c0);
    auto* const phSecondKey = At<CK_OBJECT_HANDLE>(0x12345300);
    Answer([=] {
        *phFirstKey = 2001;
        *phSecondKey = 2002;
    });

    Call("CA_LKMReceiverComplete", hSession, pConfirmation, ulConfirmationLen, pFirstTemplate, ulFirstCount,
         pSecondTemplate, ulSecondCount, phFirstKey, phSecondKey);
    Starts(
        R"(Sesn=81 Ptr=0x12345140 "the confirmation" Ptr=0x123451c0 AttrList={CKA_LABEL="first label" CKA_ID="ID of the first" } Ptr=0x12345240 AttrList={CKA_LABEL="second label" } Ptr=0x123452c0 Ptr=0x12345300 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the confirmation");
   Pointer(0x123451c0);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"first label"));
      Attribute(CKA_ID,Value(SimpleText"ID of the first"));
   };
   Pointer(0x12345240);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"second label"));
   };
   Pointer(0x123452c0);
   Pointer(0x12345300);)");
    Ends(
        kSuccessOrTooSmall,
        R"(Sesn=81 Ptr=0x12345140 "the confirmation" Ptr=0x123451c0 AttrList={CKA_LABEL="first label" CKA_ID="ID of the first" } Ptr=0x12345240 AttrList={CKA_LABEL="second label" } Obj=2001 Ptr=0x12345300 Obj=2002 )",
        R"(
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the confirmation");
   Pointer(0x123451c0);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"first label"));
      Attribute(CKA_ID,Value(SimpleText"ID of the first"));
   };
   Pointer(0x12345240);
   AttributeList
   {
      Attribute(CKA_LABEL,Value(SimpleText"second label"));
   };
   ObjectHandle(0x7d1);
   Pointer(0x12345300);
   ObjectHandle(0x7d2);)");
    Ends(kOtherErrors);

    Call("CA_LKMReceiverComplete", hSession, nullptr, ulConfirmationLen, nullptr, ulFirstCount, nullptr,
         ulSecondCount, nullptr, nullptr);
    Starts("Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 Ptr=0x0 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)");
}
