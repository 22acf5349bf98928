// How many functions a mask and a level log.
#pragma once

namespace ckscribe {

// Of all that the library exports.
int ExportedFunctionCount();

// Of those, the ones whose class is in the mask and whose level is at most `level`, 1 to 4.
int LoggedFunctionCount(unsigned mask, int level);

}  // namespace ckscribe
