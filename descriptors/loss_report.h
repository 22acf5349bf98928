// Tells a person once that a file of the library cannot be written any more.
#pragma once

#include "host/append_file.h"

namespace ckscribe {

// One for each file. Needs the record lock.
class LossReport {
public:
    // To be called after each append. The first time that it finds the file lost, it adds a line to the error
    // file; `kind` says there what the file is, "capture file" for example. The next loss after the file has
    // been found well again is reported again.
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
