// A VendorRecords test states one function of the vendor, and its records by their children in both formats.
//
//     TEST_P(VendorRecords, CA_GetTSV) {
//         auto* const pulTsv = At<CK_ULONG>(0x12345140);
//         Answer([=] { *pulTsv = 2001; });
//
//         Call("CA_GetTSV", slotID, pulTsv);
//         Starts("Slot=7 Ptr=0x12345140 ", R"(
//        SlotID(0x7);
//        Pointer(0x12345140);)");
//         Ends(kSuccessOrTooSmall, "Slot=7 Ptr=0x12345140 2001 ", R"(...)");
//         Ends(kOtherErrors);
//     }
//
// A text is everything between the braces of a record. Without texts, a record has no children. The fixture
// adds the rest of the record: its head and the braces. Tests of whole records, heads included, are in
// tests/calls.
//
// The two events of each call must have the children of the two records.
//
// Each test runs once for each format. Ends makes the call once for each of the results. The target gets the
// words of Call, does what Answer says and returns the result. The application gets the result, and the log
// is exactly the start record of Starts and this end record.
//
// A function's case is the one test that has the function's name. It must go through success, a buffer that
// is too small, and another error. every_vendor_function_has_a_case_test.cpp demands a case for each
// function.
#pragma once

#include <array>
#include <functional>
#include <initializer_list>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "descriptors/vendor_structures.h"
#include "tests/calls/call_data.h"
#include "tests/calls/library_test.h"

enum class LogFormat { kNew, kOld };

// Returns the format's part of the names of tests that run in each format.
inline std::string FormatName(const testing::TestParamInfo<LogFormat>& format) {
    return format.param == LogFormat::kNew ? "New" : "Old";
}

inline void PrintTo(LogFormat format, std::ostream* out) {
    *out << (format == LogFormat::kNew ? "the new format" : "the old format");
}

// A Result is a result of a call, with the name that a record gives it, without asterisks.
struct Result {
    CK_RV value;
    const char* name;
};

using Results = std::vector<Result>;
inline const Results kSuccess = {{CKR_OK, "CKR_OK"}};
inline const Results kTooSmall = {{CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}};
inline const Results kSuccessOrTooSmall = {{CKR_OK, "CKR_OK"},
                                           {CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"}};
inline const Results kOtherErrors = {{CKR_PIN_INCORRECT, "CKR_PIN_INCORRECT"},
                                     {0x80000999, "CKR_UNKNOWN 0x80000999"}};
inline const Results kEveryResult = {{CKR_OK, "CKR_OK"},
                                     {CKR_BUFFER_TOO_SMALL, "CKR_BUFFER_TOO_SMALL"},
                                     {CKR_PIN_INCORRECT, "CKR_PIN_INCORRECT"},
                                     {0x80000999, "CKR_UNKNOWN 0x80000999"}};

class VendorCallTest : public LibraryTest {
protected:
    explicit VendorCallTest(LogFormat format);

    static constexpr CK_SLOT_ID slotID = 7;
    static constexpr CK_SESSION_HANDLE hSession = 81;

    // Returns memory at an address that the records show, from 0x12345000 to 0x12345fff. It is zero at first.
    template <class Object>
    Object* At(std::uintptr_t address) {
        return &memory.At<Object>(address);
    }
    CK_BYTE* TextAt(std::uintptr_t address, std::string_view text);

    // Sets a step that runs before every call. It sets what the answer changes back to what goes in.
    void Before(std::function<void()> step) { before = std::move(step); }
    // Sets what the target does in every call.
    void Answer(std::function<void()> step) { script.answer = std::move(step); }

    template <class... Arguments>
    void Call(const std::string& name, Arguments... arguments) {
        function = name;
        words = {WordOf(arguments)...};
    }
    // Makes the call once, successfully, for its events.
    template <class... Arguments>
    void MakeCallWithoutLog(const std::string& name, Arguments... arguments) {
        Set("Enabled", "0");
        Call(name, arguments...);
        Restart();
        MakeCall();
    }

    // States the children of the start record in each format.
    void Starts(const std::string& inNewFormat = "", const std::string& inOldFormat = "");
    // Makes the call for each of `results`. States the children of the end record in each format.
    void Ends(const Results& results, const std::string& inNewFormat = "",
              const std::string& inOldFormat = "");

    // Expects that the case stated what happens after each kind of result.
    void TearDown() override;

private:
    template <class Argument>
    static TargetWord WordOf(Argument argument) {
        if constexpr (std::is_null_pointer_v<Argument>) {
            return 0;
        } else {
            return (TargetWord)argument;
        }
    }

    std::string CaseName() const;
    std::string StartRecordWith(const std::string& children) const;
    std::string EndRecordWith(const Result& result, const std::string& children) const;
    CK_RV MakeCall();
    void ExpectRecords(const Result& result, const std::string& endChildren);
    void ExpectCallInTarget() const;
    // Expects that both events are there, and that they have the children of the records.
    void ExpectEvents(const Result& result, const std::string& endChildren) const;

    const LogFormat format;
    MemoryAtFixedAddress memory;
    std::function<void()> before = [] {};
    std::string function;
    std::vector<TargetWord> words;
    std::string startChildren;
    std::set<CK_RV> seenResults;
};

class VendorRecords : public VendorCallTest, public testing::WithParamInterface<LogFormat> {
protected:
    VendorRecords() : VendorCallTest(GetParam()) {}
};

// Writes the characters and a terminator.
void Put(CK_BYTE* place, std::string_view text);

template <class Element>
void PutAll(Element* place, std::initializer_list<std::type_identity_t<Element>> elements) {
    std::copy(elements.begin(), elements.end(), place);
}
