// The functions in the list that a target hands out. PKCS#11 lets a library export C_GetFunctionList and
// leave its other functions to that list.
#pragma once

#include <p11-kit/pkcs11.h>

namespace ckscribe {

// Returns the target's own functions. Null stands for a function that the list lacks.
//
// A target that stays loaded still has the list that this library has overwritten. In the place of an entry
// point of this library the result has what stood there before, and null if it stood there from the
// beginning. The caller holds the start lock or the record lock.
CK_FUNCTION_LIST TargetsFunctions(const CK_FUNCTION_LIST& list);

}  // namespace ckscribe
