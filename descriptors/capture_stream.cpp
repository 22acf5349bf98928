// The log that whole records go to.

#include <cstdio>
#include <utility>

#include "descriptors/abstract_descriptor.h"
#include "front/error_log.h"
#include "util/undestroyed.h"

namespace {

Undestroyed<AppendFile> captureStream;

// Memory of the last record, kept for the next one. A record that another record interrupts on the same
// thread finds it taken and brings its own.
Undestroyed<TextBuffer> spare;

// What one unusually large record needed is given back rather than held for days.
constexpr std::size_t kLargestSpare = std::size_t{1} << 20;

}  // namespace

AppendFile& AbstractDescriptor::fpCaptureStream = captureStream.object;
std::atomic<int> AbstractDescriptor::isStreamOpen{0};

void AbstractDescriptor::Capture() const {
    if (isStreamOpen.load(std::memory_order_relaxed) == 0) return;
    RecordText record(std::move(spare.object));
    PrintDescription(record, 0, nullptr);
    fpCaptureStream.Append(record.Text());
    if (record.Capacity() <= kLargestSpare) spare.object = std::move(record);
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
    const char* const name = reinterpret_cast<const char*>(path);
    if (fpCaptureStream.Open(name)) {
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
    // Kept although it forgets living descriptors: survivors are reported only when no log was open.
    uInstanceCount = 0;
}

void AbstractDescriptor::ReleaseCapture() {
    CloseCaptureStream();
    spare.object = TextBuffer();
}
