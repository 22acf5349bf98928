// This target library has every function; a version script leaves some out. TARGET_COUNTERS gives it the two
// counters, too.

#include "front/vendor_words.h"
#include "tests/front/target_answers.h"

#define VISIBLE extern "C" __attribute__((visibility("default")))
#define UNWRAP(...) __VA_ARGS__

#pragma GCC visibility push(default)
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    VISIBLE CK_RV C_##Name Parameters { return AnswerOf("C_" #Name, UNWRAP Arguments); }
#ifdef TARGET_COUNTERS
#define COUNTER_ROW(Name, Parameters, Arguments) \
    VISIBLE CK_RV Name Parameters { return AnswerOf(#Name, UNWRAP Arguments); }
#endif
#define CA_EVERY_ROW(Name) \
    VISIBLE CK_RV CA_##Name(VENDOR_PARAMETERS) { return AnswerOf("CA_" #Name, VENDOR_ARGUMENTS); }
#include "functions/functions.def"
