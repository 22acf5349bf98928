// A LossReport reports once to a person that a file of the library can no longer be written.
#pragma once

#include "host/append_file.h"

namespace ckscribe {

// Each file has its own LossReport. It needs the record lock.
class LossReport {
public:
    // Call this function after each append. The first time that it finds the file lost, it adds a line to the
    // error file. `kind` says there what the file is, "capture file" for example. Once the file has been well
    // again, the next loss is reported again.
    void After(const AppendFile& file, const char* kind) {
        if (file.WhyLost() == 0) {
            isReported = false;
        } else if (!isReported) {
            isReported = true;
            Report(file, kind);
        }
    }

private:
    static void Report(const AppendFile& file, const char* kind);

    bool isReported = false;
};

}  // namespace ckscribe
