// Records go to the log as a whole; this file opens, writes and closes it.

#include <cstdio>

#include "descriptors/abstract_descriptor.h"
#include "descriptors/call_event.h"
#include "descriptors/error_log.h"
#include "descriptors/events_file.h"
#include "descriptors/loss_report.h"
#include "util/cache_line.h"
#include "util/undestroyed.h"

using namespace ckscribe;

namespace {

alignas(kCacheLine) Undestroyed<AppendFile> captureStream;

LossReport lossReport;

}  // namespace

AppendFile& AbstractDescriptor::fpCaptureStream = captureStream.object;
alignas(kCacheLine) std::atomic<int> AbstractDescriptor::isStreamOpen{0};

void AbstractDescriptor::Capture() const {
    if (isStreamOpen.load(std::memory_order_relaxed) != 0) {
        RecordText record;
        PrintDescription(record, 0, nullptr);
        fpCaptureStream.Append(record.Text());
        lossReport.After(fpCaptureStream, "capture file");
    }
    if (AreEventsOpen() && currentCallEvent != nullptr) {
        CaptureEvent(*currentCallEvent);
        ckscribe::ReportLossOfEvents();
    }
}

void AbstractDescriptor::InitializeClass() {
    uInstanceCount = 0;
    CloseCaptureStream();
}

void AbstractDescriptor::TerminateClass() {
    CloseCaptureStream();
    if (uInstanceCount == 0) return;
    char text[100];
    std::snprintf(text, sizeof text, "Abstract Descriptor has %u instance(s) surviving the class.",
                  uInstanceCount);
    ReportErrorInLog(text);
}

void AbstractDescriptor::OpenCaptureStream(const unsigned char* path) {
    CloseCaptureStream();
    lossReport.Forget();
    const char* const name = reinterpret_cast<const char*>(path);
    if (fpCaptureStream.Open(name, PermissionsOfNewFiles())) {
        isStreamOpen.store(1, std::memory_order_relaxed);
        return;
    }
    char text[600];
    std::snprintf(text, sizeof text, "Could not open capture file %s.", name);
    ReportErrorInLog(text);
}

void AbstractDescriptor::CloseCaptureStream() {
    if (isStreamOpen.load(std::memory_order_relaxed) == 0) return;
    fpCaptureStream.Close();
    isStreamOpen.store(0, std::memory_order_relaxed);
    // COMPAT: closing a log forgets the descriptors that still live. Readers of the error file know survivors
    // to be reported only if no log was open.
    uInstanceCount = 0;
}
