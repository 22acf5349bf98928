#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_ManualKCV) {
    Call("CA_ManualKCV", hSession);
    Starts(R"(

10:15:30 <id>:STRTManualKCV {Sesn=81 })",
           R"(
Command(ManualKCV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINIManualKCV <rv>12345clks {})",
         R"(
Command(ManualKCV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetLKCV) {
    auto* const pDomain = TextAt(0x12345140, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetLKCV", hSession, pDomain, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetLKCV {Sesn=81 Ptr=0x12345140 10 PIN="********" })",
           R"(
Command(SetLKCV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetLKCV <rv>12345clks {})",
         R"(
Command(SetLKCV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_SetLKCV", hSession, nullptr, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetLKCV {Sesn=81 Ptr=0x0 10 PIN="<null>" })",
           R"(
Command(SetLKCV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINISetLKCV <rv>12345clks {})",
         R"(
Command(SetLKCV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetKCV) {
    auto* const pDomain = TextAt(0x12345140, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetKCV", hSession, pDomain, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetKCV {Sesn=81 Ptr=0x12345140 10 PIN="********" })",
           R"(
Command(SetKCV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetKCV <rv>12345clks {})",
         R"(
Command(SetKCV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_SetKCV", hSession, nullptr, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetKCV {Sesn=81 Ptr=0x0 10 PIN="<null>" })",
           R"(
Command(SetKCV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINISetKCV <rv>12345clks {})",
         R"(
Command(SetKCV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetRDK) {
    auto* const pDomain = TextAt(0x12345140, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetRDK", hSession, pDomain, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetRDK {Sesn=81 Ptr=0x12345140 10 PIN="********" })",
           R"(
Command(SetRDK, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ULong(0xa);
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetRDK <rv>12345clks {})",
         R"(
Command(SetRDK, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_SetRDK", hSession, nullptr, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetRDK {Sesn=81 Ptr=0x0 10 PIN="<null>" })",
           R"(
Command(SetRDK, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ULong(0xa);
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINISetRDK <rv>12345clks {})",
         R"(
Command(SetRDK, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_SetCloningDomain) {
    auto* const pDomain = TextAt(0x12345100, "the domain and more");
    const CK_ULONG ulDomainLen = 10;

    Call("CA_SetCloningDomain", pDomain, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetCloningDomain {PIN="********" })",
           R"(
Command(SetCloningDomain, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteString(SimpleText"********");
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINISetCloningDomain <rv>12345clks {})",
         R"(
Command(SetCloningDomain, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_SetCloningDomain", nullptr, ulDomainLen);
    Starts(R"(

10:15:30 <id>:STRTSetCloningDomain {PIN="<null>" })",
           R"(
Command(SetCloningDomain, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ByteString(SimpleText"<null>");
})");
    Ends(kSuccess, R"(
10:15:30 <id>:FINISetCloningDomain <rv>12345clks {})",
         R"(
Command(SetCloningDomain, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_ClonePrivateKey) {
    const CK_SESSION_HANDLE hTargetSession = 1001;
    const CK_SESSION_HANDLE hSourceSession = 1002;
    const CK_OBJECT_HANDLE hObject = 1003;
    auto* const phClone = At<CK_OBJECT_HANDLE>(0x123451c0);
    Answer([=] { *phClone = 2001; });

    Call("CA_ClonePrivateKey", hTargetSession, hSourceSession, hObject, phClone);
    Starts(R"(

10:15:30 <id>:STRTClonePrivateKey {1001 1002 Obj=1003 Ptr=0x123451c0 })",
           R"(
Command(ClonePrivateKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x123451c0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIClonePrivateKey <rv>12345clks {1001 1002 Obj=1003 Ptr=0x123451c0 Obj=2001 })",
         R"(
Command(ClonePrivateKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x123451c0);
   ObjectHandle(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIClonePrivateKey <rv>12345clks {})",
         R"(
Command(ClonePrivateKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_ClonePrivateKey", hTargetSession, hSourceSession, hObject, nullptr);
    Starts(R"(

10:15:30 <id>:STRTClonePrivateKey {1001 1002 Obj=1003 Ptr=0x0 })",
           R"(
Command(ClonePrivateKey, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIClonePrivateKey <rv>12345clks {1001 1002 Obj=1003 Ptr=0x0 })",
         R"(
Command(ClonePrivateKey, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   ULong(0x3ea);
   ObjectHandle(0x3eb);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_CloneObject) {
    const CK_SESSION_HANDLE hTargetSession = 1001;
    const CK_SESSION_HANDLE hSourceSession = 1002;
    const CK_ULONG ulObjectType = 1003;
    const CK_OBJECT_HANDLE hObject = 1004;
    auto* const phClone = At<CK_OBJECT_HANDLE>(0x12345200);
    Answer([=] { *phClone = 2001; });

    Call("CA_CloneObject", hTargetSession, hSourceSession, ulObjectType, hObject, phClone);
    Starts(R"(

10:15:30 <id>:STRTCloneObject {1001 1002 Type=1003 Obj=1004 Ptr=0x12345200 })",
           R"(
Command(CloneObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ObjectHandle(0x3ec);
   Pointer(0x12345200);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneObject <rv>12345clks {1001 1002 Type=1003 1004 Ptr=0x12345200 2001 })",
         R"(
Command(CloneObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x12345200);
   ULong(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINICloneObject <rv>12345clks {})",
         R"(
Command(CloneObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_CloneObject", hTargetSession, hSourceSession, ulObjectType, hObject, nullptr);
    Starts(R"(

10:15:30 <id>:STRTCloneObject {1001 1002 Type=1003 Obj=1004 Ptr=0x0 })",
           R"(
Command(CloneObject, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ObjectHandle(0x3ec);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneObject <rv>12345clks {1001 1002 Type=1003 1004 Ptr=0x0 })",
         R"(
Command(CloneObject, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x0);
})");
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
    Starts(R"(

10:15:30 <id>:STRTGenerateCloningKEV {Sesn=81 Ptr=0x12345140 Ptr=0x12345180 61 })",
           R"(
Command(GenerateCloningKEV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   Pointer(0x12345180);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGenerateCloningKEV <rv>12345clks {Sesn=81 305418560 305418624 12 PIN="********" })",
         R"(
Command(GenerateCloningKEV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x12345140);
   ULong(0x12345180);
   ULong(0xc);
   ByteString(SimpleText"********");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINIGenerateCloningKEV <rv>12345clks {})",
         R"(
Command(GenerateCloningKEV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_GenerateCloningKEV", hSession, nullptr, nullptr);
    Starts(R"(

10:15:30 <id>:STRTGenerateCloningKEV {Sesn=81 Ptr=0x0 Ptr=0x0 })",
           R"(
Command(GenerateCloningKEV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINIGenerateCloningKEV <rv>12345clks {Sesn=81 0 0 PIN="<null>" })",
         R"(
Command(GenerateCloningKEV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x0);
   ULong(0x0);
   ByteString(SimpleText"<null>");
})");

    Call("CA_GenerateCloningKEV", hSession, nullptr, pulKevLen);
    Starts(R"(

10:15:30 <id>:STRTGenerateCloningKEV {Sesn=81 Ptr=0x0 Ptr=0x12345180 61 })",
           R"(
Command(GenerateCloningKEV, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345180);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINIGenerateCloningKEV <rv>12345clks {Sesn=81 0 305418624 12 PIN="<null>" })",
         R"(
Command(GenerateCloningKEV, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   ULong(0x0);
   ULong(0x12345180);
   ULong(0xc);
   ByteString(SimpleText"<null>");
})");
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
    Starts(R"(

10:15:30 <id>:STRTCloneAsTargetInit {Sesn=81 Ptr=0x12345140 "the source data" Ptr=0x123451c0 PIN="********" true Ptr=0x12345280 Ptr=0x123452c0 61 })",
           R"(
Command(CloneAsTargetInit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the source data");
   Pointer(0x123451c0);
   ByteString(SimpleText"********");
   ByteBooleantrue;
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneAsTargetInit <rv>12345clks {Sesn=81 Ptr=0x12345280 Ptr=0x123452c0 "returned target data" })",
         R"(
Command(CloneAsTargetInit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ByteString(SimpleText"returned target data");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINICloneAsTargetInit <rv>12345clks {})",
         R"(
Command(CloneAsTargetInit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_CloneAsTargetInit", hSession, nullptr, ulSourceDataLen, nullptr, ulKevLen, CK_FALSE, nullptr,
         nullptr);
    Starts(R"(

10:15:30 <id>:STRTCloneAsTargetInit {Sesn=81 Ptr=0x0 Ptr=0x0 PIN="<null>" false Ptr=0x0 Ptr=0x0 })",
           R"(
Command(CloneAsTargetInit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
   ByteString(SimpleText"<null>");
   ByteBooleanfalse;
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneAsTargetInit <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(CloneAsTargetInit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_CloneAsTargetInit", hSession, pSourceData, ulSourceDataLen, pKev, ulKevLen, CK_TRUE, nullptr,
         pulTargetDataLen);
    Starts(R"(

10:15:30 <id>:STRTCloneAsTargetInit {Sesn=81 Ptr=0x12345140 "the source data" Ptr=0x123451c0 PIN="********" true Ptr=0x0 Ptr=0x123452c0 61 })",
           R"(
Command(CloneAsTargetInit, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"the source data");
   Pointer(0x123451c0);
   ByteString(SimpleText"********");
   ByteBooleantrue;
   Pointer(0x0);
   Pointer(0x123452c0);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINICloneAsTargetInit <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x123452c0 })",
         R"(
Command(CloneAsTargetInit, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x123452c0);
})");
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
    Starts(R"(

10:15:30 <id>:STRTCloneAsSource {Sesn=81 Type=1001 Obj=1002 Ptr=0x123451c0 "the target data" true Ptr=0x12345280 Ptr=0x123452c0 61 })",
           R"(
Command(CloneAsSource, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x123451c0);
   ByteString(SimpleText"the target data");
   ByteBooleantrue;
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ULong(0x3d);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneAsSource <rv>12345clks {Sesn=81 Ptr=0x12345280 Ptr=0x123452c0 "returned clone" })",
         R"(
Command(CloneAsSource, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345280);
   Pointer(0x123452c0);
   ByteString(SimpleText"returned clone");
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINICloneAsSource <rv>12345clks {})",
         R"(
Command(CloneAsSource, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_CloneAsSource", hSession, ulObjectType, hObject, nullptr, ulTargetDataLen, CK_FALSE, nullptr,
         nullptr);
    Starts(R"(

10:15:30 <id>:STRTCloneAsSource {Sesn=81 Type=1001 Obj=1002 Ptr=0x0 false Ptr=0x0 Ptr=0x0 })",
           R"(
Command(CloneAsSource, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x0);
   ByteBooleanfalse;
   Pointer(0x0);
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneAsSource <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x0 })",
         R"(
Command(CloneAsSource, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);
})");

    Call("CA_CloneAsSource", hSession, ulObjectType, hObject, pTargetData, ulTargetDataLen, CK_TRUE, nullptr,
         pulCloneLen);
    Starts(R"(

10:15:30 <id>:STRTCloneAsSource {Sesn=81 Type=1001 Obj=1002 Ptr=0x123451c0 "the target data" true Ptr=0x0 Ptr=0x123452c0 61 })",
           R"(
Command(CloneAsSource, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   Pointer(0x123451c0);
   ByteString(SimpleText"the target data");
   ByteBooleantrue;
   Pointer(0x0);
   Pointer(0x123452c0);
   ULong(0x3d);
})");
    Ends(kTooSmall, R"(
10:15:30 <id>:FINICloneAsSource <rv>12345clks {Sesn=81 Ptr=0x0 Ptr=0x123452c0 })",
         R"(
Command(CloneAsSource, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x123452c0);
})");
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
    Starts(R"(

10:15:30 <id>:STRTCloneAsTarget {Sesn=81 Ptr=0x12345140 PIN="********" Ptr=0x123451c0 "the clone" Type=1001 Obj=1002 true Ptr=0x12345300 })",
           R"(
Command(CloneAsTarget, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x12345140);
   ByteString(SimpleText"********");
   Pointer(0x123451c0);
   ByteString(SimpleText"the clone");
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   ByteBooleantrue;
   Pointer(0x12345300);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneAsTarget <rv>12345clks {Sesn=81 Ptr=0x12345300 Obj=2001 })",
         R"(
Command(CloneAsTarget, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x12345300);
   ObjectHandle(0x7d1);
})");
    Ends(kOtherErrors, R"(
10:15:30 <id>:FINICloneAsTarget <rv>12345clks {})",
         R"(
Command(CloneAsTarget, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");

    Call("CA_CloneAsTarget", hSession, nullptr, ulKevLen, nullptr, ulCloneLen, ulObjectType, hObject,
         CK_FALSE, nullptr);
    Starts(R"(

10:15:30 <id>:STRTCloneAsTarget {Sesn=81 Ptr=0x0 PIN="<null>" Ptr=0x0 Type=1001 Obj=1002 false Ptr=0x0 })",
           R"(
Command(CloneAsTarget, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   Pointer(0x0);
   ByteString(SimpleText"<null>");
   Pointer(0x0);
   ULong(0x3e9);
   ObjectHandle(0x3ea);
   ByteBooleanfalse;
   Pointer(0x0);
})");
    Ends(kSuccessOrTooSmall, R"(
10:15:30 <id>:FINICloneAsTarget <rv>12345clks {Sesn=81 Ptr=0x0 })",
         R"(
Command(CloneAsTarget, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
   SessionHandle(0x51);
   Pointer(0x0);
})");
}

TEST_P(VendorRecords, CA_CloneObjectToAllSessions) {
    const CK_OBJECT_HANDLE hObject = 1001;

    Call("CA_CloneObjectToAllSessions", hSession, hObject);
    Starts(R"(

10:15:30 <id>:STRTCloneObjectToAllSessions {Sesn=81 Obj=1001 })",
           R"(
Command(CloneObjectToAllSessions, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   ObjectHandle(0x3e9);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloneObjectToAllSessions <rv>12345clks {})",
         R"(
Command(CloneObjectToAllSessions, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}

TEST_P(VendorRecords, CA_CloneAllObjectsToSession) {
    Call("CA_CloneAllObjectsToSession", hSession, slotID);
    Starts(R"(

10:15:30 <id>:STRTCloneAllObjectsToSession {Sesn=81 Slot=7 })",
           R"(
Command(CloneAllObjectsToSession, None, Start) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026

{
   SessionHandle(0x51);
   SlotID(0x7);
})");
    Ends(kEveryResult, R"(
10:15:30 <id>:FINICloneAllObjectsToSession <rv>12345clks {})",
         R"(
Command(CloneAllObjectsToSession, None, End, <rv>) PID:  <pid>  Time:  Sun Nov 15 10:15:30 2026
 // 250 clock cycles
{
})");
}
