// Start and stop of everything that prints records.
#pragma once

class DescriptorLibrary {
public:
    static void Initialize();
    static void Terminate();
    static void CaptureStream(const unsigned char* path);
};

// Reads format, switch, level and log file from the configuration and, when logging is enabled, opens the
// log. A log that is open is closed first. Needs the record lock.
void InitializeDescriptorLibrary();

// Closes the log. Needs the record lock.
void TerminateDescriptorLibrary();
