// Counts the functions that a mask and a level log.
#pragma once

namespace ckscribe {

// Returns the count of all functions that the library exports.
int ExportedFunctionCount();

// Returns the count of the functions whose class is in the mask and whose level is at most `level`, 1 to 4.
int LoggedFunctionCount(unsigned mask, int level);

}  // namespace ckscribe
