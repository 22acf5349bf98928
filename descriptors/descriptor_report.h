// A DescriptorReport holds what a run that reads or writes descriptors met: counters and error flags. Whoever
// processes the descriptors sets them. The report prints a summary of them.
//
// A report is plain data: it belongs to its run and has no lock.

#pragma once

#include <cstdint>
#include <cstdio>

class DescriptorReport {
public:
    std::uint32_t objectCount = 0;
    std::uint32_t skippedObjects = 0;
    std::uint32_t secondSkippedObjects = 0;

    // Each flag is set if it is not 0.
    std::uint16_t operationAborted = 0;
    std::uint16_t fileError = 0;
    std::uint16_t cryptokiError = 0;
    std::uint16_t noTokenFound = 0;
    std::uint16_t sessionNotOpened = 0;
    std::uint16_t loginFailed = 0;
    std::uint16_t memoryError = 0;
    std::uint16_t handleNumbersMismatch = 0;
    std::uint16_t tokenNotInitialised = 0;
    std::uint16_t parsingError = 0;

    // Returns 1 if any flag is set, otherwise 0.
    int errorOccurred() const;

    // Prints the summary to `stream`. Adds no line feed at its end and does not flush.
    void write(std::FILE* stream) const;

private:
    void WriteCounters(std::FILE* stream) const;
    void WriteFlags(std::FILE* stream) const;
};
