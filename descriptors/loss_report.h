// A LossReport reports once to a person that a file of the library can no longer be written.
#pragma once

#include "host/append_file.h"

namespace ckscribe {

// Each file has its own LossReport. It needs the record lock.
class LossReport {
public:
    // Call this function after each append. The first time that it finds the file lost, it adds a line to the
    // error file. `kind` says there what the file is, "capture file" for example. If the line cannot be
    // written, it is tried again each time the file has been looked at again. Once the file has been well
    // again, the next loss is reported again.
    void After(const AppendFile& file, const char* kind) {
        if (file.WhyLost() == 0) {
            isReported = false;
        } else if (!isReported && file.Inspections() != inspectionsAtAttempt) {
            inspectionsAtAttempt = file.Inspections();
            isReported = Report(file, kind);
        }
    }

    // Call this function when the file is opened: a loss from then on is a new one.
    void Forget() { isReported = false; }

private:
    // Returns whether there is nothing left to write.
    static bool Report(const AppendFile& file, const char* kind);

    bool isReported = false;
    unsigned long inspectionsAtAttempt = 0;
};

}  // namespace ckscribe
