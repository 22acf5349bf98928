// A RecordedCall states one call and its records as the whole text of the log.
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
// NewLog and OldLog make the call once for each of Results(). The target gets exactly the arguments of Call
// and returns the result. The application gets the result, and the log is exactly the text. In the text,
// "<rv>" stands for the result as its format shows it: CKR_OK, ***CKR_PIN_INCORRECT***, ***CKR_UNKNOWN
// 0x80000999*** in the new format, and the same without asterisks in the old one. LibraryTest::WithIds
// replaces "<id>" and "<pid>".
//
// NewLog comes first. Records of the old format leave a stamp in the library, from which records of the new
// format would count.
//
// A call of a vendor's function states the function's type:
//
//     Call(Exported<CK_RV(CK_SLOT_ID, CK_ULONG_PTR)>("CA_GetTSV"), 0x7, &tsv);
//
// A function's case is the one test that has the function's name. every_function_has_a_case_test.cpp demands
// it.
#pragma once

#include <optional>
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

    // Runs `step` before every call. It undoes what the call or its answer changes.
    void Before(std::function<void()> step) { before = std::move(step); }

    // The target runs `step` in every call.
    void Answer(std::function<void()> step) { script.answer = std::move(step); }

    // The target returns these results, one after the other. Without this call they are success, a named
    // error and an unnamed error.
    void Results(std::vector<NamedResult> wanted) { results = std::move(wanted); }

    // States that the call does not reach the target: the library answers it.
    void NotForwarded() { isForwarded = false; }

    void NewLog(const std::string& text);
    void OldLog(const std::string& text);

    // These state the two events of the call. `top` is what stands between the name of the function and "in".
    // `in` and `out` are the elements of "in" and "out". `endTop` replaces `top` for an end event that has
    // more before "in" than the start event. The fixture adds the rest of both lines. Line breaks and the
    // blanks behind them count for nothing.
    //
    // Events states what holds of events that show data and of events that do not.
    //
    // OutAfterFailure states the elements of "out" after a failure, for events that do not show data. Without
    // it they are those of a success. A test calls it before the functions that check events.
    void OutAfterFailure(const std::string& out) { outAfterFailure = out; }
    void Events(const std::string& top, const std::string& in, const std::string& out,
                const std::string& endTop = "");
    void EventsWithoutData(const std::string& top, const std::string& in, const std::string& out,
                           const std::string& endTop = "");
    void EventsWithData(const std::string& top, const std::string& in, const std::string& out,
                        const std::string& endTop = "");

private:
    void ExpectEvents(const std::string& top, const std::string& endTop, const std::string& in,
                      const std::string& out, const std::string& failedOut);
    void ExpectLog(const NamedResult& result, const std::string& text);
    void ExpectCallInTarget() const;

    std::vector<TargetWord> words;
    std::optional<std::string> outAfterFailure;
    unsigned callsWithEvents = 0;
    std::function<CK_RV()> call;
    std::function<void()> before = [] {};
    std::vector<NamedResult> results = {
        {CKR_OK, "CKR_OK"}, {CKR_PIN_INCORRECT, "CKR_PIN_INCORRECT"}, {0x80000999, "CKR_UNKNOWN 0x80000999"}};
    bool isForwarded = true;
};
