// Defines the exported functions of the standard.

#pragma GCC visibility push(default)
#include <p11-kit/pkcs11.h>
#pragma GCC visibility pop

#include "front/function_lists.h"
#include "front/logged_call.h"
#include "functions/function_classes.h"
#include "records/standard_records.h"

#define UNWRAP(...) __VA_ARGS__
#define LOGGED(Name, Class, Arguments)                                                                \
    ckscribe::LoggedCall(                                                                             \
        "C_" #Name, Class, [=] { Name##Start Arguments; }, [=] { return bridge.C_##Name Arguments; }, \
        [=](CK_RV rv) { Name##End(rv, UNWRAP Arguments); })

#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    extern "C" CK_RV C_##Name Parameters { return LOGGED(Name, Class, Arguments); }
// The list is the target's memory: the target stays until the list has been overwritten.
#define C_LIST_ROW(Name, Type, Class, Level, Parameters, Arguments)                                      \
    extern "C" CK_RV C_##Name Parameters {                                                               \
        ckscribe::CallsInTarget::Line& line = bridge.KeepTarget();                                       \
        const CK_RV rv = ckscribe::WithOwnEntryPoints(LOGGED(Name, Class, Arguments), UNWRAP Arguments); \
        ckscribe::CallsInTarget::Leave(line);                                                            \
        return rv;                                                                                       \
    }
#include "functions/functions.def"
