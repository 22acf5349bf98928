// Where this library reports its own trouble.
#pragma once

// Appends one time-stamped line with `text` to the file that the key "Error" names; with an empty name or a
// file that cannot be opened, nothing. The text is written as it is. Needs the record lock.
void ReportErrorInLog(const char* text);
