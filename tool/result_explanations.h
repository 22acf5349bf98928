// Explains results of PKCS#11 in two sentences for each name: the meaning and the usual cause.
//
// The texts are constant. Each is a whole sentence that ends with a full stop. Any thread may call this at
// any time.
#pragma once

#include <string_view>

namespace ckscribe {

struct ResultExplanation {
    std::string_view name;     // "CKR_PIN_INCORRECT"
    std::string_view meaning;  // what the token says with it
    std::string_view cause;    // its usual cause, and where to look
};

// Returns the explanation of a result's name, or null for a name without one.
const ResultExplanation* ExplanationOf(std::string_view name);

}  // namespace ckscribe
