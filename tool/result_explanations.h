// What PKCS#11 means by a result, and what it usually comes from: two sentences for each name.
//
// Constant texts in plain English, each a whole sentence that ends with a full stop. Any thread may call this
// at any time.
#pragma once

#include <string_view>

namespace ckscribe {

struct ResultExplanation {
    std::string_view name;     // "CKR_PIN_INCORRECT"
    std::string_view meaning;  // what the token says by it
    std::string_view cause;    // what it usually comes from, and where to look
};

// The explanation of a result's name; null for a name without one.
const ResultExplanation* ExplanationOf(std::string_view name);

}  // namespace ckscribe
