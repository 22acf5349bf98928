// The record builders of the standard functions: XxxStart describes a call of C_Xxx before it is forwarded,
// XxxEnd after it has returned. Each makes one record and captures it, if the logging level asks for it.
//
// They change nothing of the call. std::bad_alloc may leave them; then nothing was written. They need the
// record lock.
#pragma once

#include <p11-kit/pkcs11.h>

#define CKSCRIBE_PARAMETERS(...) __VA_OPT__(, ) __VA_ARGS__
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    void Name##Start Parameters;                                     \
    void Name##End(CK_RV rv CKSCRIBE_PARAMETERS Parameters);
#define C_UNEXPORTED_ROW(Name, Type, Level, Parameters) \
    void Name##Start Parameters;                        \
    void Name##End(CK_RV rv CKSCRIBE_PARAMETERS Parameters);
#include "functions/functions.def"
#undef CKSCRIBE_PARAMETERS
