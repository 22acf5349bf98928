#include "descriptors/loss_report.h"

#include <locale.h>
#include <string.h>

#include <cstdio>

#include "descriptors/error_log.h"

namespace ckscribe {

namespace {

// This class gives the system's text for an errno, always in English. The host's language would need files to
// be read.
class SystemsWords {
public:
    explicit SystemsWords(int error)
        : english(newlocale(LC_ALL_MASK, "C", nullptr)),
          text(english != nullptr ? strerror_l(error, english) : "no reason known") {}
    ~SystemsWords() {
        if (english != nullptr) freelocale(english);
    }
    SystemsWords(const SystemsWords&) = delete;
    SystemsWords& operator=(const SystemsWords&) = delete;

    const char* Text() const { return text; }

private:
    const locale_t english;
    const char* const text;
};

}  // namespace

bool LossReport::Report(const AppendFile& file, const char* kind) {
    const SystemsWords reason(file.WhyLost());
    char text[AppendFile::kLongestPath + 200];
    std::snprintf(text, sizeof text, "Lost %s %s and could not open it again: %s.", kind, file.Path(),
                  reason.Text());
    return ReportErrorInLog(text);
}

}  // namespace ckscribe
