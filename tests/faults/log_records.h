// Takes a log apart into its records, of either format or of both, or an events file into the same.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct LogRecord {
    bool isStart = false;
    // With its specifier: "Encrypt_Init"; without one: "Logout". Of an event: "EncryptInit".
    std::string function;
    std::string result;  // of an end record: the name, or "CKR_UNKNOWN 0x..."
    int process = 0;
    std::string thread;  // of the new format and of events; empty in the old one
    // The text between the outermost braces; of an event the elements of "in" or "out" in such a form.
    std::string children;

    // Returns the number of the first child, which is the session for most functions.
    unsigned long FirstNumber() const;
};

struct ParsedLog {
    std::vector<LogRecord> records;
    std::string
        remainder;  // from the first place on that is no whole record; empty for a log without a fault
};

ParsedLog ParseLog(std::string_view text);
