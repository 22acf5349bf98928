// A VendorCall makes a call of a function of the vendor. It forwards the arguments as machine words; only the
// builders of records see them typed.
#pragma once

#include <type_traits>
#include <utility>

#include "descriptors/log_settings.h"
#include "front/func_entries.h"
#include "front/logged_call.h"
#include "front/vendor_words.h"

namespace ckscribe {

using VendorMethod = CK_RV (CryptokiBridge::*)(VENDOR_PARAMETERS);

template <std::size_t... i>
CK_RV ForwardedWords(VendorMethod method, const VendorWords& words, std::index_sequence<i...>) {
    return (bridge.*method)(words[i]...);
}
inline CK_RV ForwardedWords(VendorMethod method, const VendorWords& words) {
    return ForwardedWords(method, words, std::make_index_sequence<kVendorWords>());
}

// Only the lowest byte of a CK_BBOOL's word is defined. The others are cleared.
template <class Parameter>
constexpr VendorWord WithoutJunk(VendorWord word) {
    if constexpr (std::is_same_v<Parameter, CK_BBOOL>) return static_cast<CK_BBOOL>(word);
    return word;
}

template <class Parameter>
Parameter Typed(VendorWord word) {
    if constexpr (std::is_pointer_v<Parameter>) {
        return reinterpret_cast<Parameter>(word);
    } else {
        return static_cast<Parameter>(word);
    }
}

// `StartBuilder` is the type of the function's start builder, which knows its parameters.
template <class StartBuilder>
struct VendorCall;

template <class... Parameters>
struct VendorCall<void(Parameters...)> {
    static_assert(sizeof...(Parameters) <= kVendorWords);

    // Makes the call and returns the target's result. The mask is asked once: a call has both records or
    // none.
    static CK_RV Logged(const char* function, const FuncEntry& entry, VendorMethod method,
                        VendorWords words) {
        StartLibrary();
        RemoveJunk(words, Indices());
        if (!IsLogged(entry)) return ForwardedWords(method, words);
        CallEvent timed;
        CallEvent* const event = AreEventsOpen() ? &timed : nullptr;
        if (event != nullptr) BeginCallEvent(*event, function);
        MakeRecord(event, [&] { Start(entry, words, Indices()); });
        const auto forward = [&] { return ForwardedWords(method, words); };
        const CK_RV rv = event != nullptr ? TimedCall(*event, forward) : forward();
        MakeRecord(event, [&] { End(entry, rv, words, Indices()); });
        return rv;
    }

private:
    using Indices = std::index_sequence_for<Parameters...>;

    static bool IsLogged(const FuncEntry& entry) {
        return configuration.DoWeLogThis(entry.classBit) &&
               LevelInForce() >= static_cast<unsigned>(entry.minLevel);
    }

    template <std::size_t... i>
    static void RemoveJunk(VendorWords& words, std::index_sequence<i...>) {
        ((words[i] = WithoutJunk<Parameters>(words[i])), ...);
    }

    template <std::size_t... i>
    static void Start(const FuncEntry& entry, const VendorWords& words, std::index_sequence<i...>) {
        reinterpret_cast<void (*)(Parameters...)>(entry.start)(Typed<Parameters>(words[i])...);
    }

    template <std::size_t... i>
    static void End(const FuncEntry& entry, CK_RV rv, const VendorWords& words, std::index_sequence<i...>) {
        reinterpret_cast<void (*)(CK_RV, Parameters...)>(entry.end)(rv, Typed<Parameters>(words[i])...);
    }
};

}  // namespace ckscribe
