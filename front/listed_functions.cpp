#include "front/listed_functions.h"

#include "front/overwritten_lists.h"
#include "host/own_image.h"

namespace ckscribe {

namespace {

template <class Function>
bool IsOurs(Function function) {
    return IsInOwnImage(reinterpret_cast<const void*>(function));
}

template <class Function>
Function FirstOfTarget(Function listed, Function original) {
    if (!IsOurs(listed)) return listed;
    return IsOurs(original) ? nullptr : original;
}

}  // namespace

CK_FUNCTION_LIST TargetsFunctions(const CK_FUNCTION_LIST& list) {
    const CK_FUNCTION_LIST* const overwritten = overwrittenLists.Original(&list);
    const CK_FUNCTION_LIST original = overwritten != nullptr ? *overwritten : CK_FUNCTION_LIST{};
    CK_FUNCTION_LIST functions{};
#define C_EVERY_ROW(Name, ...) functions.C_##Name = FirstOfTarget(list.C_##Name, original.C_##Name);
#include "functions/functions.def"
    return functions;
}

}  // namespace ckscribe
