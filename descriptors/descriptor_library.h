// These functions start and stop everything that prints records.
#pragma once

#include "host/record_lock.h"

class DescriptorLibrary {
public:
    static void Initialize() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    static void Terminate() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
    static void CaptureStream(const unsigned char* path) CKSCRIBE_NEEDS(ckscribe::theRecordLock);
};

// Reads format, switch, level and log file from the configuration. Closes a log that is open. Opens the log
// if logging is enabled.
void InitializeDescriptorLibrary() CKSCRIBE_NEEDS(ckscribe::theRecordLock);

// Closes the log.
void TerminateDescriptorLibrary() CKSCRIBE_NEEDS(ckscribe::theRecordLock);
