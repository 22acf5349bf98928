// Start and stop of everything that prints records.
#pragma once

#include "host/record_lock.h"

class DescriptorLibrary {
public:
    static void Initialize() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    static void Terminate() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    static void CaptureStream(const unsigned char* path) CKSCRIBE_NEEDS(ckscribe::theRecordLock);
};

// Reads format, switch, level and log file from the configuration and, when logging is enabled, opens the
// log. A log that is open is closed first.
void InitializeDescriptorLibrary() CKSCRIBE_NEEDS(ckscribe::theRecordLock);

// Closes the log.
void TerminateDescriptorLibrary() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
