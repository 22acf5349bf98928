// Calls that can be told from each other in a log: each is a C_Sign of a text that names its caller and its
// number, and the target gives the text back as the signature, so that both records of the call hold it.
#pragma once

#include <atomic>
#include <cstddef>
#include <map>
#include <string>

#include "tests/faults/application.h"

// The target of marked calls: C_Sign gives the data back. Every other function does nothing.
CK_RV GiveDataBack(const char* function, const TargetWord* arguments, std::size_t count);

// One caller of an application, on one thread. Neither allocates nor locks, so that its thread may be
// cancelled at any instruction.
class MarkedCaller {
public:
    static constexpr std::size_t kLongestText = 64 * 1024;

    // Every caller whose records go to one log has a number of its own.
    MarkedCaller(Library& library, unsigned caller) : library(library), caller(caller) {}

    // The next call, with a text of `length` characters or as many as the mark needs. The target's result, or
    // CKR_GENERAL_ERROR when it is CKR_OK but the signature is another text.
    CK_RV Call(std::size_t length = 0);

    // How many calls were begun. Any thread may ask.
    unsigned long Calls() const { return calls; }

private:
    Library& library;
    unsigned caller;
    std::atomic<unsigned long> calls{0};
    char text[kLongestText];
    char signature[kLongestText];
};

// What a log shows of one caller. Its records have numbers: 2n for the start of its call n, 2n + 1 for the
// end.
struct CallerRecords {
    int process = 0;
    unsigned long next = 0;     // the number behind the latest record's
    unsigned long missing = 0;  // numbers below `next` that no record has
};

class MarkedLog {
public:
    // Reads on in a log. Expects that it holds whole records alone, that texts are whole, that no record of a
    // caller is repeated or stands before an earlier one, and that all of a caller's are of one process.
    void Read(const std::string& text);

    // By the caller's number.
    std::map<unsigned, CallerRecords> callers;
    unsigned long otherRecords = 0;  // of calls that are not marked
    bool hasNewFormat = false;
    bool hasOldFormat = false;
    std::size_t shortestChildren = ~std::size_t{0};
    std::size_t longestChildren = 0;

private:
    void Count(unsigned caller, unsigned long number, int process);
};
