// These are the record builders of the vendor's functions. XxxCmdStart writes the record before a call of
// CA_Xxx is forwarded, and XxxCmdEnd writes the one after the call has returned.
//
// Builders do not look at the logging level: their caller has decided that the call is logged. They take the
// arguments as they came: pointers may be null or wild. An end record reads nothing through a pointer unless
// the call succeeded or its buffer was too small. No builder reads a PIN or a secret of an authorisation
// list.
//
// The caller holds the record lock. A builder that throws std::bad_alloc has written nothing.
#pragma once

#include <p11-kit/pkcs11.h>

#include "descriptors/vendor_structures.h"

#define CKSCRIBE_PARAMETERS(...) __VA_OPT__(, ) __VA_ARGS__
#define CA_ROW(Name, Type, Class, Level, Parameters) \
    void Name##CmdStart Parameters;                  \
    void Name##CmdEnd(CK_RV rv CKSCRIBE_PARAMETERS Parameters);
#define CA_BARE_ROW(Name, ...) \
    void Name##CmdStart();     \
    void Name##CmdEnd(CK_RV rv);
#include "functions/functions.def"
#undef CKSCRIBE_PARAMETERS
