// Reports the library's own troubles to a person.
#pragma once

// Appends one time-stamped line with `text` to the file that the key "Error" names. Does nothing if the name
// is empty or the file cannot be opened. The text is written as it is. A text of more
// than 1275 characters may be cut. Needs the record lock.
void ReportErrorInLog(const char* text);
