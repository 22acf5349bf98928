#include "tests/calls/every_function.h"

#include <algorithm>
#include <utility>

namespace {

// On x86-64 every function takes words like these, whatever its prototype. It ignores words that it has no
// parameter for.
template <std::size_t>
using WordAt = TargetWord;

template <std::size_t... i>
CK_RV Call(void* function, const CallWords& words, std::index_sequence<i...>) {
    return reinterpret_cast<CK_RV (*)(WordAt<i>...)>(function)(words[i]...);
}

bool IsIn(const Names& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

CK_RV EveryFunction::CallWith(const std::string& function, const CallWords& words) {
    return Call(ExportedAddress(function.c_str()), words,
                std::make_index_sequence<std::tuple_size_v<CallWords>>());
}

CK_RV EveryFunction::CallWith(const std::string& function, TargetWord word) {
    CallWords words;
    words.fill(word);
    return CallWith(function, words);
}

Names EveryFunction::LoggedOf(const Names& functions) {
    Names logged;
    for (const std::string& function : functions) {
        const std::size_t before = LogSize();
        CallWith(function, 0);
        if (LogSize() != before) logged.push_back(function);
    }
    return logged;
}

Names EveryFunction::Logged() {
    Restart();
    Names logged = LoggedOf(kStandardFunctions);
    for (std::string& function : LoggedOf(kVendorFunctions)) logged.push_back(std::move(function));
    return Sorted(logged);
}

Names Without(const Names& names, const Names& others) {
    Names rest;
    std::copy_if(names.begin(), names.end(), std::back_inserter(rest),
                 [&](const std::string& name) { return !IsIn(others, name); });
    return rest;
}

Names Sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
}
