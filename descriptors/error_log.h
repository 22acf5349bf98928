// ReportErrorInLog() reports trouble inside the library to a person.
#pragma once

// Appends one time-stamped line with `text` to the file that the key "Error" names. Does nothing if the name
// is empty or the file cannot be opened. Writes the text as it is, but may cut a text of more than 1275
// characters. Needs the record lock.
void ReportErrorInLog(const char* text);
