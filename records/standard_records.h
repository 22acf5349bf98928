// The record builders of the standard functions: XxxStart describes a call of C_Xxx before it is forwarded,
// XxxEnd after it has returned. Each makes one record and captures it, if the logging level asks for it.
//
// They change nothing of the call. std::bad_alloc may leave them; then nothing was written. They need the
// record lock.
#pragma once

#include <p11-kit/pkcs11.h>

#define UNWRAP(...) __VA_ARGS__
#define C_EVERY_ROW(Name, Class, Parameters, Arguments) \
    void Name##Start Parameters;                        \
    void Name##End(CK_RV rv, UNWRAP Parameters);
#include "functions/functions.def"
#undef UNWRAP

// Builders of functions that a target may have and that this library does not export.
void TerminateStart();
void TerminateEnd(CK_RV rv);
void PerformSelfTestStart(CK_SESSION_HANDLE hSession, CK_ULONG testType);
void PerformSelfTestEnd(CK_RV rv, CK_SESSION_HANDLE hSession, CK_ULONG testType);
