// SCRIPTED_TARGET_LISTS says how the two function lists are kept: "const" puts them into read-only memory.
#include "tests/calls/scripted_target.h"

#ifndef SCRIPTED_TARGET_LISTS
#define SCRIPTED_TARGET_LISTS
#endif

#define WORDS                                                                                                \
    TargetWord w0, TargetWord w1, TargetWord w2, TargetWord w3, TargetWord w4, TargetWord w5, TargetWord w6, \
        TargetWord w7, TargetWord w8, TargetWord w9, TargetWord w10, TargetWord w11, TargetWord w12,         \
        TargetWord w13, TargetWord w14, TargetWord w15, TargetWord w16, TargetWord w17, TargetWord w18,      \
        TargetWord w19, TargetWord w20, TargetWord w21, TargetWord w22, TargetWord w23, TargetWord w24,      \
        TargetWord w25, TargetWord w26, TargetWord w27, TargetWord w28, TargetWord w29, TargetWord w30,      \
        TargetWord w31
#define ALL_WORDS                                                                                            \
    w0, w1, w2, w3, w4, w5, w6, w7, w8, w9, w10, w11, w12, w13, w14, w15, w16, w17, w18, w19, w20, w21, w22, \
        w23, w24, w25, w26, w27, w28, w29, w30, w31

namespace {

template <class... Arguments>
CK_RV Answer(const char* function, Arguments... arguments) {
    const TargetWord words[] = {(TargetWord)arguments...};
    return AnswerCall(function, words, sizeof...(arguments));
}

struct VendorList {
    CK_VERSION version;
#define CA_EVERY_ROW(Name) CK_RV (*CA_##Name)(WORDS);
#include "functions/functions.def"
};

extern SCRIPTED_TARGET_LISTS CK_FUNCTION_LIST functionList;
extern SCRIPTED_TARGET_LISTS VendorList vendorFunctionList;

__attribute__((constructor)) void TellLoading() { TargetIsLoaded(); }
__attribute__((destructor)) void TellUnloading() { TargetIsUnloaded(); }

}  // namespace

extern "C" {
#define UNWRAP(...) __VA_ARGS__
#define C_EVERY_ROW(Name, Type, Class, Level, Parameters, Arguments) \
    CK_RV C_##Name Parameters { return Answer("C_" #Name, UNWRAP Arguments); }
#define C_LIST_ROW(Name, Type, Class, Level, Parameters, Arguments)                                    \
    CK_RV C_##Name Parameters {                                                                        \
        if (ppFunctionList != nullptr) *ppFunctionList = const_cast<CK_FUNCTION_LIST*>(&functionList); \
        return Answer("C_" #Name, UNWRAP Arguments);                                                   \
    }
#define CA_LIST_ROW(Name, ...)                                                        \
    CK_RV CA_##Name(WORDS) {                                                          \
        if (w0 != 0) *reinterpret_cast<const VendorList**>(w0) = &vendorFunctionList; \
        return Answer("CA_" #Name, ALL_WORDS);                                        \
    }
#define CA_ROW(Name, ...) \
    CK_RV CA_##Name(WORDS) { return Answer("CA_" #Name, ALL_WORDS); }
#define CA_BARE_ROW(Name, ...) \
    CK_RV CA_##Name(WORDS) { return Answer("CA_" #Name, ALL_WORDS); }
#include "functions/functions.def"
}

namespace {

constinit SCRIPTED_TARGET_LISTS CK_FUNCTION_LIST functionList = [] {
    CK_FUNCTION_LIST list{};
    list.version = kTargetListVersion;
#define C_EVERY_ROW(Name, ...) list.C_##Name = C_##Name;
#include "functions/functions.def"
    return list;
}();

constinit SCRIPTED_TARGET_LISTS VendorList vendorFunctionList = [] {
    VendorList list{};
    list.version = kTargetVendorListVersion;
#define CA_EVERY_ROW(Name) list.CA_##Name = CA_##Name;
#include "functions/functions.def"
    return list;
}();

}  // namespace
