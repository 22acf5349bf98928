#include "descriptors/descriptor_report.h"

int DescriptorReport::errorOccurred() const {
    return operationAborted || fileError || cryptokiError || noTokenFound || sessionNotOpened ||
           loginFailed || memoryError || handleNumbersMismatch || tokenNotInitialised || parsingError;
}

void DescriptorReport::write(std::FILE* stream) const {
    std::fputs("Descriptor Report", stream);
    if (operationAborted) {
        std::fputs("Operation aborted", stream);
    } else {
        WriteCounters(stream);
    }
    WriteFlags(stream);
    if (!errorOccurred()) std::fputs("\n\tNo error.", stream);
}

void DescriptorReport::WriteCounters(std::FILE* stream) const {
    // COMPAT: the sum wraps at 32 bits and does not include the second count. Readers of the summary know
    // that counters can stay unprinted although one of them is not 0.
    if (objectCount + 2 * skippedObjects == 0) return;
    std::fprintf(stream, "\n\tObject count: %u", objectCount);
    // COMPAT: both counts of skipped objects bear the same text, which readers of the summary know.
    std::fprintf(stream, "\n\tSkipped objects during processing: %u", skippedObjects);
    std::fprintf(stream, "\n\tSkipped objects during processing: %u", secondSkippedObjects);
}

void DescriptorReport::WriteFlags(std::FILE* stream) const {
    if (fileError) std::fputs("\n\tFile error occurred.", stream);
    if (cryptokiError) std::fputs("\n\tCryptoki error occurred.", stream);
    if (noTokenFound) std::fputs("\n\tCan not find a token in any slot.", stream);
    if (sessionNotOpened) std::fputs("\n\tCan not open session on token.", stream);
    if (loginFailed) std::fputs("\n\tCan not log to token.", stream);
    if (memoryError) std::fputs("\n\tMemory error occurred.", stream);
    if (handleNumbersMismatch) std::fputs("\n\tHandle numbers mismatch.", stream);
    if (tokenNotInitialised) std::fputs("\n\tToken could not initialize.", stream);
    if (parsingError) std::fputs("\n\tParsing error.", stream);
}
