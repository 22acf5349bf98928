// The scripted target is a target library that does as the test says.
//
// scripted_target.cpp exports every function of functions/functions.def. Each of them hands its name and its
// arguments to AnswerCall, which the test program defines and exports (see call_script.h), and returns what
// AnswerCall returns. The script therefore lives in the program, and outlasts the target's unloading.
#pragma once

#include <p11-kit/pkcs11.h>

#include <cstddef>

using TargetWord = CK_ULONG;

// Functions of the vendor take this many words whatever their prototype. No caller hands on so many: the
// words behind the last argument are whatever lies on the stack.
inline constexpr std::size_t kTargetWords = 32;

// The lists that the target hands out have these versions.
inline constexpr CK_VERSION kTargetListVersion = {2, 11};
inline constexpr CK_VERSION kTargetVendorListVersion = {7, 3};

extern "C" {
// `arguments` is valid during the call. Any thread may call it.
__attribute__((visibility("default"))) CK_RV AnswerCall(const char* function, const TargetWord* arguments,
                                                        std::size_t count);

__attribute__((visibility("default"))) void TargetIsLoaded();
__attribute__((visibility("default"))) void TargetIsUnloaded();
}
