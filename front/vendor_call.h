// A call of a function of the vendor: words in, words out, typed for the builders alone.
#pragma once

#include <type_traits>
#include <utility>

#include "descriptors/log_settings.h"
#include "front/func_entries.h"
#include "front/logged_call.h"
#include "front/vendor_words.h"

// A boolean is the lowest byte of its word; what stands above it is nobody's.
template <class Parameter>
constexpr Word WithoutJunk(Word word) {
    if constexpr (std::is_same_v<Parameter, CK_BBOOL>) return static_cast<CK_BBOOL>(word);
    return word;
}

template <class Parameter>
Parameter Typed(Word word) {
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
    using Method = CK_RV (CryptokiBridge::*)(VENDOR_PARAMETERS);

    // Whether the call is logged is decided once: it has both records or none.
    static CK_RV Logged(const FuncEntry& entry, Method method, VendorWords words) {
        StartLibrary();
        RemoveJunk(words, Indices());
        if (!IsLogged(entry)) return Forward(method, words, AllWords());
        MakeRecord([&] { Start(entry, words, Indices()); });
        const CK_RV rv = Forward(method, words, AllWords());
        MakeRecord([&] { End(entry, rv, words, Indices()); });
        return rv;
    }

private:
    using Indices = std::index_sequence_for<Parameters...>;
    using AllWords = std::make_index_sequence<kVendorWords>;

    static bool IsLogged(const FuncEntry& entry) {
        return configuration.DoWeLogThis(entry.classBit) &&
               LoggingLevel() >= static_cast<unsigned>(entry.minLevel);
    }

    template <std::size_t... i>
    static void RemoveJunk(VendorWords& words, std::index_sequence<i...>) {
        ((words[i] = WithoutJunk<Parameters>(words[i])), ...);
    }

    template <std::size_t... i>
    static CK_RV Forward(Method method, const VendorWords& words, std::index_sequence<i...>) {
        return (bridge.*method)(words[i]...);
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
