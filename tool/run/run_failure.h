// A RunFailure is a failure of `ckscribe run` itself. `run` says why and ends with kRunFailed before its
// command begins.
#pragma once

#include <stdexcept>

namespace ckscribe {

// what() says what is wrong, where, and what to do.
struct RunFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace ckscribe
