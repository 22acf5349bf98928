// ReportErrorInLog() reports trouble inside the library to a person.
#pragma once

// Appends one time-stamped line with `text` to the file that the key "Error" names. Does nothing if the name
// is empty or the file cannot be opened. Writes the text as it is, but may cut a text of more than 1275
// characters. Returns false if the line is wanted but could not be written whole. Needs the record lock.
bool ReportErrorInLog(const char* text);
