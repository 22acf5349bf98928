// This file is another PKCS#11 library that an application has in its global scope. No call may reach its
// functions.
#include "tests/calls/interposing_library.h"

namespace {

template <class... Arguments>
CK_RV Refuse(Arguments...) {
    return kInterposed;
}

}  // namespace

extern "C" {
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    CK_RV C_##Name Parameters { return Refuse Arguments; }
#define CA_EVERY_ROW(Name) \
    CK_RV CA_##Name() { return kInterposed; }
#include "functions/functions.def"

void CkLogSpecialInitialize() {}
void CkLogSpecialFinalize() {}
}
