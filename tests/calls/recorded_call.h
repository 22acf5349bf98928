// One call and its records, stated as the whole text of the log.
//
//     TEST_F(RecordedCall, C_CloseSession) {
//         Call(api.C_CloseSession, 0x51);
//         NewLog(R"(
//
//     10:15:30 <id>:STRTCloseSession {Sesn=81 }
//     10:15:30 <id>:FINICloseSession <rv>12345clks {})");
//         OldLog(R"(...)");
//     }
//
// NewLog and OldLog make the call once for each of Results(): the target gets the arguments of Call and
// nothing else, returns that result, the application gets it, and the log is exactly the text. In the text
// "<rv>" stands for the result as its format shows it: CKR_OK, ***CKR_PIN_INCORRECT***, ***CKR_UNKNOWN
// 0x80000999*** in the new format, and the same without asterisks in the old one. "<id>" and "<pid>" are
// LibraryTest::WithIds'.
//
// NewLog comes first: records of the old format leave a stamp in the library from which those of the new
// format would then count.
//
// Functions of the vendor are typed by whoever calls them:
//
//     Call(Exported<CK_RV(CK_SLOT_ID, CK_ULONG_PTR)>("CA_GetTSV"), 0x7, &tsv);
//
// The one test that has the function's own name is its case (every_function_has_a_case_test.cpp looks for
// it); tests of particular arguments have names of other kinds.
#pragma once

#include <type_traits>
#include <utility>
#include <vector>

#include "tests/calls/library_test.h"

struct NamedResult {
    CK_RV value;
    std::string text;  // as a record names it, without asterisks
};

class RecordedCall : public LibraryTest {
protected:
    RecordedCall() { Load(); }

    template <class... Parameters>
    void Call(CK_RV (*function)(Parameters...), std::type_identity_t<Parameters>... arguments) {
        words = {(TargetWord)arguments...};
        call = [=] { return function(arguments...); };
    }

    // Before every call: sets what the call or its answer changes back to what it was.
    void Before(std::function<void()> step) { before = std::move(step); }

    // What the target does in every call.
    void Answer(std::function<void()> step) { script.answer = std::move(step); }

    // The results to go through; success, a named and an unnamed error unless the test says otherwise.
    void Results(std::vector<NamedResult> wanted) { results = std::move(wanted); }

    // The call never gets to the target; the result is the library's own.
    void NotForwarded() { isForwarded = false; }

    void NewLog(const std::string& text);
    void OldLog(const std::string& text);

private:
    void ExpectLog(const NamedResult& result, const std::string& text);
    void ExpectCallInTarget() const;

    std::vector<TargetWord> words;
    std::function<CK_RV()> call;
    std::function<void()> before = [] {};
    std::vector<NamedResult> results = {
        {CKR_OK, "CKR_OK"}, {CKR_PIN_INCORRECT, "CKR_PIN_INCORRECT"}, {0x80000999, "CKR_UNKNOWN 0x80000999"}};
    bool isForwarded = true;
};
