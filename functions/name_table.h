// Tables from numbers to names are arrays of {value, "NAME"}. The values ascend, and none stands twice: each
// table asserts this with IsStrictlyAscending. NameOf searches all of them.
//
// The functions are pure and read only constant data: any thread may call them at any time.

#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace ckscribe {

struct NameRow {
    unsigned long value;
    std::string_view name;
};

constexpr bool IsStrictlyAscending(std::span<const NameRow> table) {
    const auto isNotBelow = [](const NameRow& left, const NameRow& right) {
        return left.value >= right.value;
    };
    return std::adjacent_find(table.begin(), table.end(), isNotBelow) == table.end();
}

// Returns the name of `value`, or `unknown` if it has no row. The table must be strictly ascending and not
// empty.
constexpr std::string_view NameOf(std::span<const NameRow> table, unsigned long value,
                                  std::string_view unknown) {
    // Calls ask for the first row more often than for any other: CKR_OK, CKA_CLASS.
    if (table.front().value == value) return table.front().name;
    const auto isBelow = [](const NameRow& row, unsigned long wanted) { return row.value < wanted; };
    const auto row = std::lower_bound(table.begin(), table.end(), value, isBelow);
    return row != table.end() && row->value == value ? row->name : unknown;
}

}  // namespace ckscribe
