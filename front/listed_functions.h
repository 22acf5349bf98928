// TargetsFunctions() takes the target's own functions from the list that the target hands out. PKCS#11 lets a
// library export C_GetFunctionList and leave its other functions to that list.
#pragma once

#include <p11-kit/pkcs11.h>

namespace ckscribe {

// Returns the target's own functions. Null stands for a function that the list lacks.
//
// A target that stays loaded still has the list that this library has overwritten. Where an entry point of
// this library stands, the result has what stood there before, and null if the entry point stood there from
// the beginning. The caller holds the start lock or the record lock.
CK_FUNCTION_LIST TargetsFunctions(const CK_FUNCTION_LIST& list);

}  // namespace ckscribe
