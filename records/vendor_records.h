// The record builders of the vendor's functions: for each CA_Xxx the start record, written before the call is
// forwarded, and the end record, written after it.
//
// They ask for no logging level: whoever calls them has decided that the call is logged. The arguments of the
// call are taken as they came; pointers may be null or wild. An end record reads nothing behind a pointer
// unless the call succeeded or its buffer was too small. No PIN and no secret of an authorisation list is
// read at all.
//
// Needs the record lock. Throws std::bad_alloc, and then has written nothing.
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
