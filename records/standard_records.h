// These are the record builders of the standard functions. XxxStart writes the record before a call of C_Xxx
// is forwarded, and XxxEnd writes the one after the call has returned. A builder writes only if
// "LoggingLevel" is at least the LEVEL of the function's row.
//
// Builders change nothing of the call. They take the arguments as they came: pointers may be null or wild. A
// builder that throws std::bad_alloc has written nothing. The caller holds the record lock.
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
