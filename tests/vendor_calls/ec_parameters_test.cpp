#include "tests/vendor_calls/vendor_records.h"

TEST_P(VendorRecords, CA_EncodeECPrimeParams) {
    auto* const pECParams = At<CK_BYTE>(0x12345100);
    auto* const pulECParamsLen = At<CK_ULONG>(0x12345140);
    auto* const pPrime = TextAt(0x12345180, "the prime and more");
    const CK_ULONG ulPrimeLen = 9;
    auto* const pA = TextAt(0x12345200, "the a and more");
    const CK_ULONG ulALen = 5;
    auto* const pB = TextAt(0x12345280, "the b and more");
    const CK_ULONG ulBLen = 5;
    auto* const pSeed = TextAt(0x12345300, "the seed and more");
    const CK_ULONG ulSeedLen = 8;
    auto* const pX = TextAt(0x12345380, "the x and more");
    const CK_ULONG ulXLen = 5;
    auto* const pY = TextAt(0x12345400, "the y and more");
    const CK_ULONG ulYLen = 5;
    auto* const pOrder = TextAt(0x12345480, "the order and more");
    const CK_ULONG ulOrderLen = 9;
    auto* const pCofactor = TextAt(0x12345500, "the cofactor and more");
    const CK_ULONG ulCofactorLen = 12;
    Before([=] { *pulECParamsLen = 61; });
    Answer([=] {
        Put(pECParams, "returned ecparams and more");
        *pulECParamsLen = 17;
    });

    Call("CA_EncodeECPrimeParams", pECParams, pulECParamsLen, pPrime, ulPrimeLen, pA, ulALen, pB, ulBLen,
         pSeed, ulSeedLen, pX, ulXLen, pY, ulYLen, pOrder, ulOrderLen, pCofactor, ulCofactorLen);
    Starts(
        R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=61 Ptr=0x12345180 prime len=9 prime="the prime" Ptr=0x12345200 a len=5 a="the a" Ptr=0x12345280 b len=5 b="the b" Ptr=0x12345300 seed len=8 seed="the seed" Ptr=0x12345380 x len=5 x="the x" Ptr=0x12345400 y len=5 y="the y" Ptr=0x12345480 order len=9 order="the order" Ptr=0x12345500 cofactor len=12 cofactor="the cofactor" )",
        R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x3d);
   Pointer(0x12345180);
   ULong(0x9);
   ByteString(SimpleText"the prime");
   Pointer(0x12345200);
   ULong(0x5);
   ByteString(SimpleText"the a");
   Pointer(0x12345280);
   ULong(0x5);
   ByteString(SimpleText"the b");
   Pointer(0x12345300);
   ULong(0x8);
   ByteString(SimpleText"the seed");
   Pointer(0x12345380);
   ULong(0x5);
   ByteString(SimpleText"the x");
   Pointer(0x12345400);
   ULong(0x5);
   ByteString(SimpleText"the y");
   Pointer(0x12345480);
   ULong(0x9);
   ByteString(SimpleText"the order");
   Pointer(0x12345500);
   ULong(0xc);
   ByteString(SimpleText"the cofactor");)");
    Ends(kSuccessOrTooSmall,
         R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=17 EC Params="returned ecparams" )",
         R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x11);
   ByteString(SimpleText"returned ecparams");)");
    Ends(kOtherErrors);

    Call("CA_EncodeECPrimeParams", nullptr, nullptr, nullptr, ulPrimeLen, nullptr, ulALen, nullptr, ulBLen,
         nullptr, ulSeedLen, nullptr, ulXLen, nullptr, ulYLen, nullptr, ulOrderLen, nullptr, ulCofactorLen);
    Starts(
        "Ptr=0x0 Ptr=0x0 Ptr=0x0 prime len=9 Ptr=0x0 a len=5 Ptr=0x0 b len=5 Ptr=0x0 seed len=8 Ptr=0x0 x "
        "len=5 Ptr=0x0 y len=5 Ptr=0x0 order len=9 Ptr=0x0 cofactor len=12 ",
        R"(
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);
   ULong(0x9);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x8);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x9);
   Pointer(0x0);
   ULong(0xc);)");
    Ends(kSuccessOrTooSmall, "Ptr=0x0 Ptr=0x0 ",
         R"(
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_EncodeECPrimeParams", nullptr, pulECParamsLen, pPrime, ulPrimeLen, pA, ulALen, pB, ulBLen, pSeed,
         ulSeedLen, pX, ulXLen, pY, ulYLen, pOrder, ulOrderLen, pCofactor, ulCofactorLen);
    Starts(
        R"(Ptr=0x0 Ptr=0x12345140 EC Params len=61 Ptr=0x12345180 prime len=9 prime="the prime" Ptr=0x12345200 a len=5 a="the a" Ptr=0x12345280 b len=5 b="the b" Ptr=0x12345300 seed len=8 seed="the seed" Ptr=0x12345380 x len=5 x="the x" Ptr=0x12345400 y len=5 y="the y" Ptr=0x12345480 order len=9 order="the order" Ptr=0x12345500 cofactor len=12 cofactor="the cofactor" )",
        R"(
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x3d);
   Pointer(0x12345180);
   ULong(0x9);
   ByteString(SimpleText"the prime");
   Pointer(0x12345200);
   ULong(0x5);
   ByteString(SimpleText"the a");
   Pointer(0x12345280);
   ULong(0x5);
   ByteString(SimpleText"the b");
   Pointer(0x12345300);
   ULong(0x8);
   ByteString(SimpleText"the seed");
   Pointer(0x12345380);
   ULong(0x5);
   ByteString(SimpleText"the x");
   Pointer(0x12345400);
   ULong(0x5);
   ByteString(SimpleText"the y");
   Pointer(0x12345480);
   ULong(0x9);
   ByteString(SimpleText"the order");
   Pointer(0x12345500);
   ULong(0xc);
   ByteString(SimpleText"the cofactor");)");
    Ends(kTooSmall, "Ptr=0x0 Ptr=0x12345140 EC Params len=17 ",
         R"(
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x11);)");
}

TEST_P(VendorRecords, CA_EncodeECChar2Params) {
    auto* const pECParams = At<CK_BYTE>(0x12345100);
    auto* const pulECParamsLen = At<CK_ULONG>(0x12345140);
    const CK_ULONG ulM = 1001;
    const CK_ULONG ulK1 = 1002;
    const CK_ULONG ulK2 = 1003;
    const CK_ULONG ulK3 = 1004;
    auto* const pA = TextAt(0x12345280, "the a and more");
    const CK_ULONG ulALen = 5;
    auto* const pB = TextAt(0x12345300, "the b and more");
    const CK_ULONG ulBLen = 5;
    auto* const pSeed = TextAt(0x12345380, "the seed and more");
    const CK_ULONG ulSeedLen = 8;
    auto* const pX = TextAt(0x12345400, "the x and more");
    const CK_ULONG ulXLen = 5;
    auto* const pY = TextAt(0x12345480, "the y and more");
    const CK_ULONG ulYLen = 5;
    auto* const pOrder = TextAt(0x12345500, "the order and more");
    const CK_ULONG ulOrderLen = 9;
    auto* const pCofactor = TextAt(0x12345580, "the cofactor and more");
    const CK_ULONG ulCofactorLen = 12;
    Before([=] { *pulECParamsLen = 61; });
    Answer([=] {
        Put(pECParams, "returned ecparams and more");
        *pulECParamsLen = 17;
    });

    Call("CA_EncodeECChar2Params", pECParams, pulECParamsLen, ulM, ulK1, ulK2, ulK3, pA, ulALen, pB, ulBLen,
         pSeed, ulSeedLen, pX, ulXLen, pY, ulYLen, pOrder, ulOrderLen, pCofactor, ulCofactorLen);
    Starts(
        R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=61 m len=1001 k1 len=1002 k2 len=1003 k3 len=1004 Ptr=0x12345280 a len=5 a="the a" Ptr=0x12345300 b len=5 b="the b" Ptr=0x12345380 seed len=8 seed="the seed" Ptr=0x12345400 x len=5 x="the x" Ptr=0x12345480 y len=5 y="the y" Ptr=0x12345500 order len=9 order="the order" Ptr=0x12345580 cofactor len=12 cofactor="the cofactor" )",
        R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x3d);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x12345280);
   ULong(0x5);
   ByteString(SimpleText"the a");
   Pointer(0x12345300);
   ULong(0x5);
   ByteString(SimpleText"the b");
   Pointer(0x12345380);
   ULong(0x8);
   ByteString(SimpleText"the seed");
   Pointer(0x12345400);
   ULong(0x5);
   ByteString(SimpleText"the x");
   Pointer(0x12345480);
   ULong(0x5);
   ByteString(SimpleText"the y");
   Pointer(0x12345500);
   ULong(0x9);
   ByteString(SimpleText"the order");
   Pointer(0x12345580);
   ULong(0xc);
   ByteString(SimpleText"the cofactor");)");
    Ends(kSuccessOrTooSmall,
         R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=17 EC Params="returned ecparams" )",
         R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x11);
   ByteString(SimpleText"returned ecparams");)");
    Ends(kOtherErrors);

    Call("CA_EncodeECChar2Params", nullptr, nullptr, ulM, ulK1, ulK2, ulK3, nullptr, ulALen, nullptr, ulBLen,
         nullptr, ulSeedLen, nullptr, ulXLen, nullptr, ulYLen, nullptr, ulOrderLen, nullptr, ulCofactorLen);
    Starts(
        "Ptr=0x0 Ptr=0x0 m len=1001 k1 len=1002 k2 len=1003 k3 len=1004 Ptr=0x0 a len=5 Ptr=0x0 b len=5 "
        "Ptr=0x0 seed len=8 Ptr=0x0 x len=5 Ptr=0x0 y len=5 Ptr=0x0 order len=9 Ptr=0x0 cofactor len=12 ",
        R"(
   Pointer(0x0);
   Pointer(0x0);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x8);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x5);
   Pointer(0x0);
   ULong(0x9);
   Pointer(0x0);
   ULong(0xc);)");
    Ends(kSuccessOrTooSmall, "Ptr=0x0 Ptr=0x0 ",
         R"(
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_EncodeECChar2Params", nullptr, pulECParamsLen, ulM, ulK1, ulK2, ulK3, pA, ulALen, pB, ulBLen,
         pSeed, ulSeedLen, pX, ulXLen, pY, ulYLen, pOrder, ulOrderLen, pCofactor, ulCofactorLen);
    Starts(
        R"(Ptr=0x0 Ptr=0x12345140 EC Params len=61 m len=1001 k1 len=1002 k2 len=1003 k3 len=1004 Ptr=0x12345280 a len=5 a="the a" Ptr=0x12345300 b len=5 b="the b" Ptr=0x12345380 seed len=8 seed="the seed" Ptr=0x12345400 x len=5 x="the x" Ptr=0x12345480 y len=5 y="the y" Ptr=0x12345500 order len=9 order="the order" Ptr=0x12345580 cofactor len=12 cofactor="the cofactor" )",
        R"(
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x3d);
   ULong(0x3e9);
   ULong(0x3ea);
   ULong(0x3eb);
   ULong(0x3ec);
   Pointer(0x12345280);
   ULong(0x5);
   ByteString(SimpleText"the a");
   Pointer(0x12345300);
   ULong(0x5);
   ByteString(SimpleText"the b");
   Pointer(0x12345380);
   ULong(0x8);
   ByteString(SimpleText"the seed");
   Pointer(0x12345400);
   ULong(0x5);
   ByteString(SimpleText"the x");
   Pointer(0x12345480);
   ULong(0x5);
   ByteString(SimpleText"the y");
   Pointer(0x12345500);
   ULong(0x9);
   ByteString(SimpleText"the order");
   Pointer(0x12345580);
   ULong(0xc);
   ByteString(SimpleText"the cofactor");)");
    Ends(kTooSmall, "Ptr=0x0 Ptr=0x12345140 EC Params len=17 ",
         R"(
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x11);)");
}

TEST_P(VendorRecords, CA_EncodeECParamsFromFile) {
    auto* const pECParams = At<CK_BYTE>(0x12345100);
    auto* const pulECParamsLen = At<CK_ULONG>(0x12345140);
    auto* const pFileName = TextAt(0x12345180, "the file name");
    Before([=] { *pulECParamsLen = 61; });
    Answer([=] {
        Put(pECParams, "returned ecparams and more");
        *pulECParamsLen = 17;
    });

    Call("CA_EncodeECParamsFromFile", pECParams, pulECParamsLen, pFileName);
    Starts(
        R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=61 params file=(13,"the file name") "the file name" )",
        R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x3d);
   ByteString(13,"the file name");Value(SimpleText"the file name");)");
    Ends(kSuccessOrTooSmall,
         R"(Ptr=0x12345100 Ptr=0x12345140 EC Params len=17 EC Params="returned ecparams" )",
         R"(
   Pointer(0x12345100);
   Pointer(0x12345140);
   ULong(0x11);
   ByteString(SimpleText"returned ecparams");)");
    Ends(kOtherErrors);

    Call("CA_EncodeECParamsFromFile", nullptr, nullptr, nullptr);
    Starts("Ptr=0x0 Ptr=0x0 ",
           R"(
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccessOrTooSmall, "Ptr=0x0 Ptr=0x0 ",
         R"(
   Pointer(0x0);
   Pointer(0x0);)");

    Call("CA_EncodeECParamsFromFile", nullptr, pulECParamsLen, pFileName);
    Starts(R"(Ptr=0x0 Ptr=0x12345140 EC Params len=61 params file=(13,"the file name") "the file name" )",
           R"(
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x3d);
   ByteString(13,"the file name");Value(SimpleText"the file name");)");
    Ends(kTooSmall, "Ptr=0x0 Ptr=0x12345140 EC Params len=17 ",
         R"(
   Pointer(0x0);
   Pointer(0x12345140);
   ULong(0x11);)");
}
