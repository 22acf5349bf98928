// Makes the system's dynamic loader load libckscribe.so where the command asks for its module.
#pragma once

#include <string>

#include "tool/run/module_choice.h"

namespace ckscribe {

struct Redirection {
    // `variable` is an environment variable for the command, and `value` is its value. If `variable` is
    // empty, the command's calls cannot be logged.
    std::string variable;
    std::string value;
};

// `library` is libckscribe.so. Throws RunFailure when the system cannot do what the choice asks for.
Redirection RedirectionFor(const ModuleChoice& choice, const std::string& library);

}  // namespace ckscribe
