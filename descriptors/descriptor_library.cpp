#include "descriptors/descriptor_library.h"

#include <cstdio>

#include "config/logging_configuration.h"
#include "descriptors/abstract_descriptor.h"
#include "descriptors/data_setting.h"
#include "descriptors/error_log.h"
#include "descriptors/events_file.h"
#include "descriptors/log_settings.h"

std::atomic<int> bUseNewLogFormat{0};
std::atomic<unsigned> uLoggingLevel{0};
std::atomic<int> ckscribe::newFileMode{-1};
std::atomic<ckscribe::DataSetting> ckscribe::dataSetting{ckscribe::DataSetting::kShownInLog};

namespace {

void ReadFileMode(const CkLogConfig& settings) {
    const ckscribe::FileModeSetting mode = settings.FileMode();
    ckscribe::newFileMode.store(mode.permissions ? static_cast<int>(*mode.permissions) : -1,
                                std::memory_order_relaxed);
    if (!mode.isRejected) return;
    char text[sizeof mode.value + 100];
    std::snprintf(text, sizeof text,
                  "FileMode is not an octal number up to 0777: \"%s\". New files get 0666 less the umask.",
                  mode.value);
    ReportErrorInLog(text);
}

}  // namespace

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
    ReadFileMode(settings);
    ckscribe::dataSetting.store(settings.HideData(), std::memory_order_relaxed);
    ckscribe::OpenEvents(settings.EventsFileName());
    if (!isEnabled) return;
    DescriptorLibrary::CaptureStream(reinterpret_cast<const unsigned char*>(settings.LogFileName()));
}

void TerminateDescriptorLibrary() {
    ckscribe::CloseEvents();
    DescriptorLibrary::Terminate();
}
