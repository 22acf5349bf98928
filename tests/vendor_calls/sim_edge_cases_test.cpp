// The records of the SIM functions show secrets, inputs and signatures up to the first that is missing.
#include "tests/vendor_calls/vendor_records.h"

namespace {

// An Authorisation says what the start record of a call with one form of authorisation shows.
struct Authorisation {
    const char* inNewFormat;
    const char* inOldFormat;
};

class SimRecords : public VendorRecords {
protected:
    SimRecords() {
        PutAll(secrets, {TextAt(0x12345800, "first secret"), TextAt(0x12345840, "the second secret"),
                         TextAt(0x12345880, "third")});
        PutAll(secretLens, {12, 17, 5});
        PutAll(inputs, {TextAt(0x12345900, "first input"), TextAt(0x12345940, "the second input"),
                        TextAt(0x12345980, "third")});
        PutAll(inputLens, {11, 16, 5});
    }

    static constexpr CK_ULONG ulSecretCount = 3;
    CK_BYTE** const secrets = At<CK_BYTE*>(0x12345100);
    CK_ULONG* const secretLens = At<CK_ULONG>(0x12345140);
    CK_BYTE** const inputs = At<CK_BYTE*>(0x12345180);
    CK_ULONG* const inputLens = At<CK_ULONG>(0x123451c0);

    void Extraction(CK_ULONG ulAuthForm, const Authorisation& shown) {
        SCOPED_TRACE(ulAuthForm);
        const CK_ULONG ulM = 2;
        Call("CA_SIMExtract", hSession, 0, nullptr, ulAuthForm, ulSecretCount, ulM, secretLens, secrets,
             CK_TRUE, nullptr, nullptr);
        Starts(ReplaceAll("Sesn=81 Ptr=0x0 <authorisation> delete=true Ptr=0x0 Ptr=0x0 ", "<authorisation>",
                          shown.inNewFormat),
               ReplaceAll(R"(
   SessionHandle(0x51);
   Pointer(0x0);
<authorisation>
   ByteBooleantrue;
   Pointer(0x0);
   Pointer(0x0);)",
                          "<authorisation>", shown.inOldFormat));
        Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
             R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
    }

    void Insertion(CK_ULONG ulAuthForm, const Authorisation& shown) {
        SCOPED_TRACE(ulAuthForm);
        Call("CA_SIMInsert", hSession, ulAuthForm, ulSecretCount, secretLens, secrets, 0, nullptr, nullptr,
             nullptr);
        Starts(ReplaceAll("Sesn=81 <authorisation> Ptr=0x0 Ptr=0x0 Ptr=0x0 ", "<authorisation>",
                          shown.inNewFormat),
               ReplaceAll(R"(
   SessionHandle(0x51);
<authorisation>
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x0);)",
                          "<authorisation>", shown.inOldFormat));
        Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
             R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
    }

    void Signing(CK_ULONG ulAuthForm, const Authorisation& shown) {
        SCOPED_TRACE(ulAuthForm);
        Call("CA_SIMMultiSign", hSession, ulAuthForm, ulSecretCount, secretLens, secrets, 0, nullptr, 0,
             nullptr, nullptr, nullptr, nullptr);
        Starts(ReplaceAll("Sesn=81 <authorisation> Ptr=0x0 inputCnt=0 Ptr=0x0 Ptr=0x0 ", "<authorisation>",
                          shown.inNewFormat),
               ReplaceAll(R"(
   SessionHandle(0x51);
<authorisation>
   Pointer(0x0);
   ULong(0x0);
   Pointer(0x0);
   Pointer(0x0);)",
                          "<authorisation>", shown.inOldFormat));
        Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
             R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
    }
};

}  // namespace

TEST_P(SimRecords, FormOfAnExtraction_DecidesWhetherSharesAndSecretsAreShown) {
    const Authorisation forms[] = {
        {R"(authForm=0)", R"(   ULong(0x0);)"},
        {R"(authForm=1 N=3 M=2 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x1);
   ULong(0x3);
   ULong(0x2);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=2 N=3 M=2)",
         R"(   ULong(0x2);
   ULong(0x3);
   ULong(0x2);)"},
        {R"(authForm=3 N=3 M=2)",
         R"(   ULong(0x3);
   ULong(0x3);
   ULong(0x2);)"},
        {R"(authForm=4)", R"(   ULong(0x4);)"},
        {R"(authForm=5 N=3 M=2 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x5);
   ULong(0x3);
   ULong(0x2);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=6 N=3 M=2)",
         R"(   ULong(0x6);
   ULong(0x3);
   ULong(0x2);)"},
    };
    for (CK_ULONG ulAuthForm = 0; ulAuthForm < std::size(forms); ++ulAuthForm)
        Extraction(ulAuthForm, forms[ulAuthForm]);
}

TEST_P(SimRecords, FormOfAnInsertion_DecidesWhetherSecretsAreShown) {
    const Authorisation forms[] = {
        {R"(authForm=0)", R"(   ULong(0x0);)"},
        {R"(authForm=1 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x1);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=2 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x2);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=3)", R"(   ULong(0x3);)"},
        {R"(authForm=4)", R"(   ULong(0x4);)"},
        {R"(authForm=5 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x5);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=6 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x6);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
    };
    for (CK_ULONG ulAuthForm = 0; ulAuthForm < std::size(forms); ++ulAuthForm)
        Insertion(ulAuthForm, forms[ulAuthForm]);
}

TEST_P(SimRecords, FormOfASignature_DecidesWhetherSecretsAreShown) {
    const Authorisation forms[] = {
        {R"(authForm=0)", R"(   ULong(0x0);)"},
        {R"(authForm=1 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x1);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=2 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x2);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=3)", R"(   ULong(0x3);)"},
        {R"(authForm=4)", R"(   ULong(0x4);)"},
        {R"(authForm=5 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x5);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
        {R"(authForm=6 secretCnt=3 PIN="********" PIN="********" PIN="********")",
         R"(   ULong(0x6);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"},
    };
    for (CK_ULONG ulAuthForm = 0; ulAuthForm < std::size(forms); ++ulAuthForm)
        Signing(ulAuthForm, forms[ulAuthForm]);
}

TEST_P(SimRecords, LaterSecretHasNoLength_RecordShowsTheSecretsInFront) {
    secretLens[1] = 0;
    Extraction(1, {R"(authForm=1 N=3 M=2 PIN="********")",
                   R"(   ULong(0x1);
   ULong(0x3);
   ULong(0x2);
   ByteString(SimpleText"********");)"});
    Insertion(2, {R"(authForm=2 secretCnt=3 PIN="********")",
                  R"(   ULong(0x2);
   ULong(0x3);
   ByteString(SimpleText"********");)"});
    Signing(6, {R"(authForm=6 secretCnt=3 PIN="********")",
                R"(   ULong(0x6);
   ULong(0x3);
   ByteString(SimpleText"********");)"});
}

TEST_P(SimRecords, LaterSecretHasNoAddress_RecordShowsTheSecretsInFront) {
    secrets[2] = nullptr;
    Extraction(1, {R"(authForm=1 N=3 M=2 PIN="********" PIN="********")",
                   R"(   ULong(0x1);
   ULong(0x3);
   ULong(0x2);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"});
    Insertion(2, {R"(authForm=2 secretCnt=3 PIN="********" PIN="********")",
                  R"(   ULong(0x2);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"});
    Signing(6, {R"(authForm=6 secretCnt=3 PIN="********" PIN="********")",
                R"(   ULong(0x6);
   ULong(0x3);
   ByteString(SimpleText"********");
   ByteString(SimpleText"********");)"});
}

TEST_P(SimRecords, FirstSecretHasNoLength_RecordShowsNoSecret) {
    secretLens[0] = 0;
    Extraction(1, {R"(authForm=1 N=3 M=2)",
                   R"(   ULong(0x1);
   ULong(0x3);
   ULong(0x2);)"});
    Insertion(2, {R"(authForm=2 secretCnt=3)",
                  R"(   ULong(0x2);
   ULong(0x3);)"});
    Signing(6, {R"(authForm=6 secretCnt=3)",
                R"(   ULong(0x6);
   ULong(0x3);)"});
}

TEST_P(SimRecords, FirstSecretHasNoAddress_RecordShowsNoSecret) {
    secrets[0] = nullptr;
    Extraction(1, {R"(authForm=1 N=3 M=2)",
                   R"(   ULong(0x1);
   ULong(0x3);
   ULong(0x2);)"});
    Insertion(2, {R"(authForm=2 secretCnt=3)",
                  R"(   ULong(0x2);
   ULong(0x3);)"});
    Signing(6, {R"(authForm=6 secretCnt=3)",
                R"(   ULong(0x6);
   ULong(0x3);)"});
}

TEST_P(SimRecords, InputsAreComplete_RecordShowsEachOfThem) {
    Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 3, inputLens, inputs, nullptr,
         nullptr);
    Starts(
        R"(Sesn=81 authForm=0 Ptr=0x0 inputCnt=3 in="first input" in="the second input" in="third" Ptr=0x0 Ptr=0x0 )",
        R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x3);
   ByteString(SimpleText"first input");
   ByteString(SimpleText"the second input");
   ByteString(SimpleText"third");
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(SimRecords, CountIsBelowTheInputs_RecordShowsOnlyThatMany) {
    Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 2, inputLens, inputs, nullptr,
         nullptr);
    Starts(R"(Sesn=81 authForm=0 Ptr=0x0 inputCnt=2 in="first input" in="the second input" Ptr=0x0 Ptr=0x0 )",
           R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x2);
   ByteString(SimpleText"first input");
   ByteString(SimpleText"the second input");
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(SimRecords, LaterInputHasNoLength_RecordShowsTheInputsInFront) {
    inputLens[1] = 0;
    Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 3, inputLens, inputs, nullptr,
         nullptr);
    Starts(R"(Sesn=81 authForm=0 Ptr=0x0 inputCnt=3 in="first input" Ptr=0x0 Ptr=0x0 )",
           R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x3);
   ByteString(SimpleText"first input");
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(SimRecords, LaterInputHasNoAddress_RecordShowsTheInputsInFront) {
    inputs[2] = nullptr;
    Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 3, inputLens, inputs, nullptr,
         nullptr);
    Starts(R"(Sesn=81 authForm=0 Ptr=0x0 inputCnt=3 in="first input" in="the second input" Ptr=0x0 Ptr=0x0 )",
           R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x3);
   ByteString(SimpleText"first input");
   ByteString(SimpleText"the second input");
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(SimRecords, FirstInputHasNoLength_RecordShowsNoInput) {
    inputLens[0] = 0;
    Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 3, inputLens, inputs, nullptr,
         nullptr);
    Starts("Sesn=81 authForm=0 Ptr=0x0 inputCnt=3 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x3);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

TEST_P(SimRecords, FirstInputHasNoAddress_RecordShowsNoInput) {
    inputs[0] = nullptr;
    Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 3, inputLens, inputs, nullptr,
         nullptr);
    Starts("Sesn=81 authForm=0 Ptr=0x0 inputCnt=3 Ptr=0x0 Ptr=0x0 ",
           R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x3);
   Pointer(0x0);
   Pointer(0x0);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x0 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x0);)");
}

// The target returns three signatures, of which the second is empty.
TEST_P(SimRecords, SignatureHasNoLengthOrAddress_RecordShowsTheSignaturesInFront) {
    auto* const signatureLens = At<CK_ULONG>(0x12345200);
    auto* const signatures = At<CK_BYTE*>(0x12345240);
    struct Second {
        CK_BYTE* address;
        CK_ULONG length;
    };
    for (const Second second : {Second{At<CK_BYTE>(0x12345a40), 0}, Second{nullptr, 16}}) {
        PutAll(signatures, {At<CK_BYTE>(0x12345a00), second.address, At<CK_BYTE>(0x12345a80)});
        Before([=] { PutAll(signatureLens, {41, 42, 43}); });
        Answer([=] {
            Put(signatures[0], "first signature");
            Put(signatures[2], "third signature");
            PutAll(signatureLens, {15, second.length, 15});
        });

        Call("CA_SIMMultiSign", hSession, 0, 0, nullptr, nullptr, 0, nullptr, 3, inputLens, inputs,
             signatureLens, signatures);
        Starts(
            R"(Sesn=81 authForm=0 Ptr=0x0 inputCnt=3 in="first input" in="the second input" in="third" Ptr=0x12345200 Ptr=0x12345240 )",
            R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   ULong(0x3);
   ByteString(SimpleText"first input");
   ByteString(SimpleText"the second input");
   ByteString(SimpleText"third");
   Pointer(0x12345200);
   Pointer(0x12345240);)");
        Ends(kSuccessOrTooSmall, R"(Sesn=81 Ptr=0x12345200 Ptr=0x12345240 sig="first signature" )",
             R"(
   SessionHandle(0x51);
   Pointer(0x12345200);
   Pointer(0x12345240);
   ByteString(SimpleText"first signature");)");
        Ends(kOtherErrors);
    }
}

TEST_P(SimRecords, InputOfAMultisignedValueHasNoLengthOrAddress_RecordShowsTheInputsInFront) {
    auto* const shownInputs = At<CK_BYTE*>(0x12345300);
    auto* const shownLens = At<CK_ULONG>(0x12345340);
    PutAll(shownInputs,
           {TextAt(0x12345b00, "an input"), TextAt(0x12345b40, "another"), TextAt(0x12345b80, "a third")});
    const std::string newRecord = R"(Sesn=81 Ptr=0x12345300 inputCnt=3 "an input" )";
    const std::string oldRecord = R"(
   SessionHandle(0x51);
   Pointer(0x12345300);
   ULong(0x3);Value(SimpleText"an input");)";
    const auto expectOneInput = [&] {
        Call("CA_MultisignValue", hSession, nullptr, 0, shownInputs, 3, shownLens, nullptr, nullptr);
        Starts(newRecord, oldRecord);
        Ends(kSuccessOrTooSmall, "Sesn=81 Ptr=0x0 ",
             R"(
   SessionHandle(0x51);
   Pointer(0x0);)");
        Ends(kOtherErrors);
    };
    PutAll(shownLens, {8, 0, 7});
    expectOneInput();
    PutAll(shownLens, {8, 7, 6});
    shownInputs[1] = nullptr;
    expectOneInput();
}

TEST_P(SimRecords, HandlesWithoutTheirCount_RecordDoesNotShowThem) {
    auto* const phObjects = At<CK_OBJECT_HANDLE>(0x12345200);
    Answer([=] { PutAll(phObjects, {2001, 2002}); });

    Call("CA_SIMInsert", hSession, 0, 0, nullptr, nullptr, 0, nullptr, nullptr, phObjects);
    Starts("Sesn=81 authForm=0 Ptr=0x0 Ptr=0x0 Ptr=0x12345200 ",
           R"(
   SessionHandle(0x51);
   ULong(0x0);
   Pointer(0x0);
   Pointer(0x0);
   Pointer(0x12345200);)");
    Ends(kSuccess, "Sesn=81 Ptr=0x0 Ptr=0x12345200 ",
         R"(
   SessionHandle(0x51);
   Pointer(0x0);
   Pointer(0x12345200);)");
}

INSTANTIATE_TEST_SUITE_P(Log, SimRecords, testing::Values(LogFormat::kNew, LogFormat::kOld), FormatName);
