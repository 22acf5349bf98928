// Finds the parts of a call that two runs can be compared by.
//
// Handles, addresses, times, parameters of mechanisms (initialisation vectors) and the bytes of outputs
// differ from run to run. Logs of different formats lack different facts. A fact that one of two logs lacks
// does not count.
//
// These functions are pure: any thread may call them at any time.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "reader/call.h"
#include "reader/value.h"

namespace ckscribe {

// A Comparable is a question or an answer. Two are alike if their shapes are the same and their facts do not
// contradict each other.
struct Comparable {
    // `shape` names the function or the result, and says which values there are.
    std::string shape;
    // Comparables of the same shape have equally many facts, with a separator behind each. An empty fact is
    // one that the log lacks.
    std::string facts;
};

Comparable ComparableQuestion(const Call& call);
Comparable ComparableAnswer(const Call& call);

// Compares facts that belong to the same shape.
bool AreFactsAlike(std::string_view one, std::string_view other);

// Returns the inputs that are compared: all but handles and addresses.
std::vector<Value> ComparedInputs(const Call& call);
// Returns the outputs that are compared: lists.
std::vector<Value> ComparedOutputs(const Call& call);

}  // namespace ckscribe
