// Tables from numbers to names are arrays of {value, "NAME"}. The values ascend, and none stands twice: each
// table asserts this with IsStrictlyAscending. NameOf searches all of them.
//
// Pure functions over constant data: any thread may call them at any time.

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

// The name of `value`, or `unknown` if it has no row. The table must be strictly ascending and not empty.
constexpr std::string_view NameOf(std::span<const NameRow> table, unsigned long value,
                                  std::string_view unknown) {
    const NameRow* row = table.data();
    // The first is asked for more often than any other: CKR_OK, CKA_CLASS.
    if (row->value == value) return row->name;
    // Halving without an early exit lets the compiler do without jumps that a processor would guess wrong.
    for (std::size_t left = table.size(); left > 1;) {
        const std::size_t half = left / 2;
        row += row[half].value <= value ? half : 0;
        left -= half;
    }
    return row->value == value ? row->name : unknown;
}

}  // namespace ckscribe
