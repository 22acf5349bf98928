// Takes a log apart into its records, of either format or of both.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct LogRecord {
    bool isStart = false;
    std::string function;  // with its specifier: "Encrypt_Init"; without one: "Logout"
    std::string result;    // of an end record: the name, or "CKR_UNKNOWN 0x..."
    int process = 0;
    std::string thread;    // of the new format; empty in the old one
    std::string children;  // the text between the outermost braces

    // The number of the first child, which most functions have for their session.
    unsigned long FirstNumber() const;
};

struct ParsedLog {
    std::vector<LogRecord> records;
    std::string
        remainder;  // from the first place on that is no whole record; empty for a log without a fault
};

ParsedLog ParseLog(std::string_view text);
