// This target library exports C_GetFunctionList and no other standard function; all of them stand in its
// list. A test that has loaded the target may set what C_GetFunctionList hands out and answers.

#include "tests/front/target_answers.h"

#define VISIBLE extern "C" __attribute__((visibility("default")))
#define UNWRAP(...) __VA_ARGS__

namespace {

#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    CK_RV Listed##Name Parameters { return AnswerOf("C_" #Name, UNWRAP Arguments); }
#include "functions/functions.def"

constinit CK_FUNCTION_LIST theList = [] {
    CK_FUNCTION_LIST list{};
#define C_EVERY_ROW(Name, ...) list.C_##Name = Listed##Name;
#include "functions/functions.def"
    return list;
}();

}  // namespace

VISIBLE CK_FUNCTION_LIST* listToHandOut;
VISIBLE CK_RV resultOfListing;
CK_FUNCTION_LIST* listToHandOut = &theList;
CK_RV resultOfListing = CKR_OK;

#pragma GCC visibility push(default)
extern "C" CK_RV C_GetFunctionList(CK_FUNCTION_LIST_PTR_PTR ppFunctionList) {
    const bool isAddress = reinterpret_cast<CK_RV>(ppFunctionList) >> 47 == 0;
    if (!isAddress) return AnswerOf("C_GetFunctionList", ppFunctionList);
    *ppFunctionList = listToHandOut;
    return resultOfListing;
}
