#include "descriptors/descriptor_library.h"

#include "config/logging_configuration.h"
#include "descriptors/abstract_descriptor.h"
#include "descriptors/log_settings.h"

std::atomic<int> bUseNewLogFormat{0};
std::atomic<unsigned> uLoggingLevel{0};

void DescriptorLibrary::Initialize() { AbstractDescriptor::InitializeClass(); }

void DescriptorLibrary::Terminate() { AbstractDescriptor::TerminateClass(); }

void DescriptorLibrary::CaptureStream(const unsigned char* path) {
    AbstractDescriptor::OpenCaptureStream(path);
}

void InitializeDescriptorLibrary() {
    CkLogConfig settings;
    DescriptorLibrary::Initialize();
    bUseNewLogFormat.store(settings.IsNewCkLogFormat(), std::memory_order_relaxed);
    const bool isEnabled = settings.IsLoggingEnabledMordavek() != 0;
    uLoggingLevel.store(static_cast<unsigned>(settings.LoggingLevel()), std::memory_order_relaxed);
    if (!isEnabled) return;
    DescriptorLibrary::CaptureStream(reinterpret_cast<const unsigned char*>(settings.LogFileName()));
}

void TerminateDescriptorLibrary() { DescriptorLibrary::Terminate(); }
