#pragma once

// The target libraries of the bridge's tests answer with a number. The number depends on the function that
// was called and on every argument that the function got.

#include <p11-kit/pkcs11.h>

#include <type_traits>

inline constexpr CK_RV kMix = 0x100000001B3;

template <class Argument>
CK_RV AsWord(Argument argument) {
    if constexpr (std::is_pointer_v<Argument>) {
        return reinterpret_cast<CK_RV>(argument);
    } else {
        return static_cast<CK_RV>(argument);
    }
}

// Returns a number that depends on the name, and on the value and place of every argument.
template <class... Arguments>
CK_RV AnswerOf(const char* name, Arguments... arguments) {
    CK_RV answer = 0xCBF29CE484222325;
    for (; *name != '\0'; ++name) answer = (answer ^ static_cast<unsigned char>(*name)) * kMix;
    ((answer = (answer ^ AsWord(arguments)) * kMix), ...);
    return answer;
}
