// These properties hold for reading any bytes as a log:
// - each line is a part of a record or of an unreadable stretch, or is empty;
// - the plain way of reading finds everything that the thorough one finds;
// - the calls are the same in whatever pieces the log comes, and wherever it is cut for two threads;
// - arguments and results of every call can be asked for.
#pragma once

#include <string_view>

// Prints the first property that does not hold, and ends the process.
void RequireLogProperties(std::string_view log);
