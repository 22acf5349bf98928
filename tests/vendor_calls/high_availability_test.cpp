#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_HAInit) {
    const CK_OBJECT_HANDLE hLoginKey = 1001;

    Call("CA_HAInit", hSession, hLoginKey);
    Starts(R"(

10:15:30 <id>:STRTHAInit {Sesn=81 Obj=1001 })",
           R"(
Command(HAInit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIHAInit <rv>12345clks {})",
         R"(
Command(HAInit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
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
    Starts(R"(

10:15:30 <id>:STRTHAGetMasterPublic {Slot=7 Ptr=0x12345140 Ptr=0x12345180 61 })",
           R"(
Command(HAGetMasterPublic, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAGetMasterPublic <rv>12345clks {Slot=7 Ptr=0x12345140 Ptr=0x12345180 20 "returned certificate" })",
         R"(
Command(HAGetMasterPublic, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x14);
   ByteString(SimpleText"returned certificate");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIHAGetMasterPublic <rv>12345clks {})",
         R"(
Command(HAGetMasterPublic, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_HAGetMasterPublic", slotID, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTHAGetMasterPublic {Slot=7 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(HAGetMasterPublic, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAGetMasterPublic <rv>12345clks {Slot=7 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(HAGetMasterPublic, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_HAGetMasterPublic", slotID, nullptr, pulCertificateLen);
    Starts(R"(

10:15:30 <id>:STRTHAGetMasterPublic {Slot=7 Ptr=0x0 Ptr=0x12345180 61 })",
           R"(
Command(HAGetMasterPublic, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIHAGetMasterPublic <rv>12345clks {Slot=7 Ptr=0x0 Ptr=0x12345180 20 })",
         R"(
Command(HAGetMasterPublic, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x14);
})");
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
    Starts(R"(

10:15:30 <id>:STRTHAGetLoginChallenge {Sesn=81 User=1001 Ptr=0x12345180 15 "the certificate" Ptr=0x12345200 Ptr=0x12345240 61 })",
           R"(
Command(HAGetLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x12345180);
   ULong(0xf);
   ByteString(SimpleText"the certificate");
   Pointer(0x12345200);
   Pointer(0x12345240);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAGetLoginChallenge <rv>12345clks {Sesn=81 User=1001 Ptr=0x12345200 18 "returned challenge" })",
         R"(
Command(HAGetLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x12345200);
   ULong(0x12);
   ByteString(SimpleText"returned challenge");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIHAGetLoginChallenge <rv>12345clks {})",
         R"(
Command(HAGetLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_HAGetLoginChallenge", hSession, userType, nullptr, ulCertificateLen, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTHAGetLoginChallenge {Sesn=81 User=1001 Ptr=0x0 15 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(HAGetLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x0);
   ULong(0xf);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAGetLoginChallenge <rv>12345clks {Sesn=81 User=1001 Ptr=0x0 })",
         R"(
Command(HAGetLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x0);
})");

    Call("CA_HAGetLoginChallenge", hSession, userType, pCertificate, ulCertificateLen, nullptr,
         pulChallengeLen);
    Starts(R"(

10:15:30 <id>:STRTHAGetLoginChallenge {Sesn=81 User=1001 Ptr=0x12345180 15 "the certificate" Ptr=0x0 Ptr=0x12345240 61 })",
           R"(
Command(HAGetLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x12345180);
   ULong(0xf);
   ByteString(SimpleText"the certificate");
   Pointer(0x0);
   Pointer(0x12345240);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIHAGetLoginChallenge <rv>12345clks {Sesn=81 User=1001 Ptr=0x0 18 })",
         R"(
Command(HAGetLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   UserType(0x3e9);
   Pointer(0x0);
   ULong(0x12);
})");
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
    Starts(R"(

10:15:30 <id>:STRTHAAnswerLoginChallenge {Sesn=81 Obj=1001 Ptr=0x12345180 13 "the challenge" Ptr=0x12345200 Ptr=0x12345240 })",
           R"(
Command(HAAnswerLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(SimpleText"the challenge");
   Pointer(0x12345200);
   Pointer(0x12345240);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAAnswerLoginChallenge <rv>12345clks {Sesn=81 Ptr=0x12345200 Ptr=0x12345240 "returned answer" })",
         R"(
Command(HAAnswerLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ByteString(SimpleText"returned answer");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIHAAnswerLoginChallenge <rv>12345clks {})",
         R"(
Command(HAAnswerLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_HAAnswerLoginChallenge", hSession, hLoginKey, nullptr, ulChallengeLen, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTHAAnswerLoginChallenge {Sesn=81 Obj=1001 Ptr=0x0 13 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(HAAnswerLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x0);
   ULong(0xd);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAAnswerLoginChallenge <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(HAAnswerLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_HAAnswerLoginChallenge", hSession, hLoginKey, pChallenge, ulChallengeLen, nullptr, pulAnswerLen);
    Starts(R"(

10:15:30 <id>:STRTHAAnswerLoginChallenge {Sesn=81 Obj=1001 Ptr=0x12345180 13 "the challenge" Ptr=0x0 Ptr=0x12345240 })",
           R"(
Command(HAAnswerLoginChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
   Pointer(0x12345180);
   ULong(0xd);
   ByteString(SimpleText"the challenge");
   Pointer(0x0);
   Pointer(0x12345240);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIHAAnswerLoginChallenge <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x12345240 })",
         R"(
Command(HAAnswerLoginChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345240);
})");
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
    Starts(R"(

10:15:30 <id>:STRTHALogin {Sesn=81 Ptr=0x12345140 10 "the answer" Ptr=0x123451c0 Ptr=0x12345200 })",
           R"(
Command(HALogin, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"the answer");
   Pointer(0x123451c0);
   Pointer(0x12345200);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHALogin <rv>12345clks {Sesn=81 Ptr=0x123451c0 Ptr=0x12345200 "returned mof nchallenge" })",
         R"(
Command(HALogin, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x123451c0);
   Pointer(0x12345200);
   ByteString(SimpleText"returned mof nchallenge");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIHALogin <rv>12345clks {})",
         R"(
Command(HALogin, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_HALogin", hSession, nullptr, ulAnswerLen, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTHALogin {Sesn=81 Ptr=0x0 10 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(HALogin, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHALogin <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(HALogin, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_HALogin", hSession, pAnswer, ulAnswerLen, nullptr, pulMofNChallengeLen);
    Starts(R"(

10:15:30 <id>:STRTHALogin {Sesn=81 Ptr=0x12345140 10 "the answer" Ptr=0x0 Ptr=0x12345200 })",
           R"(
Command(HALogin, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"the answer");
   Pointer(0x0);
   Pointer(0x12345200);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIHALogin <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x12345200 })",
         R"(
Command(HALogin, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345200);
})");
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
    Starts(R"(

10:15:30 <id>:STRTHAAnswerMofNChallenge {Sesn=81 Ptr=0x12345140 18 "the mof nchallenge" Ptr=0x123451c0 Ptr=0x12345200 })",
           R"(
Command(HAAnswerMofNChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x12);
   ByteString(SimpleText"the mof nchallenge");
   Pointer(0x123451c0);
   Pointer(0x12345200);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAAnswerMofNChallenge <rv>12345clks {Sesn=81 Ptr=0x123451c0 20 "returned mof nanswer" })",
         R"(
Command(HAAnswerMofNChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x123451c0);
   ULong(0x14);
   ByteString(SimpleText"returned mof nanswer");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIHAAnswerMofNChallenge <rv>12345clks {})",
         R"(
Command(HAAnswerMofNChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_HAAnswerMofNChallenge", hSession, nullptr, ulMofNChallengeLen, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTHAAnswerMofNChallenge {Sesn=81 Ptr=0x0 18 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(HAAnswerMofNChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x12);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIHAAnswerMofNChallenge <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(HAAnswerMofNChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");

    Call("CA_HAAnswerMofNChallenge", hSession, pMofNChallenge, ulMofNChallengeLen, nullptr, pulMofNAnswerLen);
    Starts(R"(

10:15:30 <id>:STRTHAAnswerMofNChallenge {Sesn=81 Ptr=0x12345140 18 "the mof nchallenge" Ptr=0x0 Ptr=0x12345200 })",
           R"(
Command(HAAnswerMofNChallenge, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0x12);
   ByteString(SimpleText"the mof nchallenge");
   Pointer(0x0);
   Pointer(0x12345200);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIHAAnswerMofNChallenge <rv>12345clks {Sesn=81 Ptr=0x0 20 })",
         R"(
Command(HAAnswerMofNChallenge, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0x14);
})");
}

TEST_P(VendorRecords, CA_HAActivateMofN) {
    auto* const pMofNAnswer = TextAt(0x12345140, "the mof nanswer and more");
    const CK_ULONG ulMofNAnswerLen = 15;

    Call("CA_HAActivateMofN", hSession, pMofNAnswer, ulMofNAnswerLen);
    Starts(R"(

10:15:30 <id>:STRTHAActivateMofN {Sesn=81 Ptr=0x12345140 15 "the mof nanswer" })",
           R"(
Command(HAActivateMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xf);
   ByteString(SimpleText"the mof nanswer");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIHAActivateMofN <rv>12345clks {})",
         R"(
Command(HAActivateMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_HAActivateMofN", hSession, nullptr, ulMofNAnswerLen);
    Starts(R"(

10:15:30 <id>:STRTHAActivateMofN {Sesn=81 Ptr=0x0 15 })",
           R"(
Command(HAActivateMofN, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xf);
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINIHAActivateMofN <rv>12345clks {})",
         R"(
Command(HAActivateMofN, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_GetHAState) {
    auto* const pState = At<CK_HA_STATUS>(0x12345140);
    Answer([=] {
        *pState = {"Serial of the group",
                   {{"Serial of the first", 2001}, {"Serial of the second", 2002}, {"Beyond the list", 2003}},
                   2};
    });

    Call("CA_GetHAState", slotID, pState);
    Starts(R"(

10:15:30 <id>:STRTGetHAState {Slot=7 Ptr=0x12345140 })",
           R"(
Command(GetHAState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x12345140);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetHAState <rv>12345clks {Slot=7 Ptr=0x12345140 HAStatus{Serial of the group"<null>" HAMember{Serial of the first"<null>" 2001 } HAMember{Serial of the second"<null>" 2002 } 2 } })",
         R"(
Command(GetHAState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
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
   };
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGetHAState <rv>12345clks {})",
         R"(
Command(GetHAState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GetHAState", slotID, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGetHAState {Slot=7 Ptr=0x0 })",
           R"(
Command(GetHAState, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SlotID(0x7);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGetHAState <rv>12345clks {Slot=7 Ptr=0x0 })",
         R"(
Command(GetHAState, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SlotID(0x7);
   Pointer(0x0);
})");
}
