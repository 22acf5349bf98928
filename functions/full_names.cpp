#include "functions/full_names.h"

#include <p11-kit/pkcs11.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "functions/name_table.h"
#include "functions/pkcs11_names.h"

namespace ckscribe {

namespace {

// The build writes the lists of names (functions/today_names.cmake).
#define TODAY(name) {name, #name},
constexpr NameRow kAttributes[] = {
#include "today_names_CKA.inc"
};
constexpr NameRow kMechanisms[] = {
#include "today_names_CKM.inc"
};
constexpr NameRow kResults[] = {
#include "today_names_CKR.inc"
};
#undef TODAY

template <std::size_t size>
struct Table {
    std::array<NameRow, size> rows{};
    std::ptrdiff_t count = 0;

    constexpr operator std::span<const NameRow>() const {
        return {rows.data(), static_cast<std::size_t>(count)};
    }
};

// Returns the rows in the order of their numbers. Keeps only the first of the header's rows that have the
// same number.
template <std::size_t size>
constexpr Table<size> Sorted(const NameRow (&listed)[size]) {
    Table<size> table;
    for (const NameRow& row : listed) {
        const auto end = table.rows.begin() + table.count;
        const auto place =
            std::upper_bound(table.rows.begin(), end, row.value,
                             [](unsigned long value, const NameRow& other) { return value < other.value; });
        if (place != table.rows.begin() && (place - 1)->value == row.value) continue;
        std::move_backward(place, end, end + 1);
        *place = row;
        ++table.count;
    }
    return table;
}

constexpr auto kAttributeTable = Sorted(kAttributes);
constexpr auto kMechanismTable = Sorted(kMechanisms);
constexpr auto kResultTable = Sorted(kResults);
static_assert(IsStrictlyAscending(kAttributeTable));
static_assert(IsStrictlyAscending(kMechanismTable));
static_assert(IsStrictlyAscending(kResultTable));

}  // namespace

std::string_view FullNameOfAttribute(unsigned long type) {
    const std::string_view own = GetAttributeType(type);
    return own != "CKA_XXX" ? own : NameOf(kAttributeTable, type, {});
}

std::string_view FullNameOfMechanism(unsigned long type) {
    const std::string_view own = GetMechanismType(type);
    return own != "Unknown Mechanism Type" ? own : NameOf(kMechanismTable, type, {});
}

std::string_view FullNameOfResult(unsigned long returnValue) {
    const std::string_view own = GetErrorCode(returnValue);
    return own != "CKR_UNKNOWN" ? own : NameOf(kResultTable, returnValue, own);
}

}  // namespace ckscribe
