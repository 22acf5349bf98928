// Makes calls that differ from each other in a log. Each takes a text that names its caller and its number.
// The target gives the text back, so both records of the call hold it. The functions are C_Sign and the
// vendor's CA_HAAnswerMofNChallenge, which takes and gives the same.
#pragma once

#include <atomic>
#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"

// The target of marked calls, which give the text back. Every other function does nothing.
CK_RV GiveDataBack(const char* function, const TargetWord* arguments, std::size_t count);

// The functions of a caller: one of them, or the one and the other in turn, that of the standard first.
enum class Marked { kStandard, kVendor, kInTurn };

// Their names in records.
extern const std::set<std::string> kMarkedFunctions;

// Returns the name that records of the new format give to this thread.
std::string IdOfThisThread();

// One caller of an application, on one thread at a time. It neither allocates nor locks, so its thread may
// be cancelled at any instruction.
class MarkedCaller {
public:
    static constexpr std::size_t kLongestText = 64 * 1024;

    // Every caller whose records go to one log has a number of its own.
    MarkedCaller(Library& library, unsigned caller, Marked functions = Marked::kInTurn);

    // Makes the next call, with a text of `length` characters or as many as the mark needs. Returns the
    // target's result, or CKR_GENERAL_ERROR when that is CKR_OK but another text came back.
    CK_RV Call(std::size_t length = 0);

    // Returns how many calls were begun. Any thread may ask.
    unsigned long Calls() const { return calls; }

private:
    using Function = CK_RV(CK_SESSION_HANDLE, CK_BYTE_PTR, CK_ULONG, CK_BYTE_PTR, CK_ULONG_PTR);

    // The functions of the even and of the odd calls.
    Function* functions[2];
    unsigned caller;
    std::atomic<unsigned long> calls{0};
    char text[kLongestText];
    char returned[kLongestText];
};

// Follows one caller in a log. Its records have numbers: 2n for the start of its call n, 2n + 1 for the
// end.
struct CallerRecords {
    int process = 0;
    unsigned long next = 0;         // the number behind the latest record's
    unsigned long missing = 0;      // numbers below `next` that no record has
    std::set<std::string> threads;  // of the records that tell theirs, which those of the old format do not
    std::set<std::string> functions;

    std::string latestThread;
    std::string latestFunction;
};

class MarkedLog {
public:
    // Reads on in a log. Expects that it holds only whole records, that texts are whole, that no record of a
    // caller is repeated or stands before an earlier one, that all of a caller's are of one process, and that
    // the end of a call is of the same function and thread as its start.
    void Read(const std::string& text);

    // The index is the caller's number.
    std::map<unsigned, CallerRecords> callers;
    unsigned long otherRecords = 0;  // of calls that are not marked
    bool hasNewFormat = false;
    bool hasOldFormat = false;
    std::size_t shortestChildren = ~std::size_t{0};
    std::size_t longestChildren = 0;

private:
    void Count(unsigned caller, unsigned long number, const LogRecord& record);
};
