// This fuzzer parses lists of identifiers of PIN entry devices. The first byte of an input is the slot, and
// the rest is the list. These properties hold:
// - the list is only cut: each character stays or becomes NUL;
// - a question for one result finds what the rules, written down a second time below, find;
// - a question for both results finds the same as two questions for one result each, if the list assigns each
//   result once.

#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "config/wendrafil_configuration.h"

namespace {

using Store = WendrafilConfiguration;

void Require(bool holds) {
    if (!holds) std::abort();
}

std::vector<std::string> Items(const std::string& list) {
    std::vector<std::string> items(1);
    for (const char c : list) {
        if (c == ',')
            items.emplace_back();
        else
            items.back() += c;
    }
    return items;
}

bool IsWhite(char c) { return static_cast<signed char>(c) >= 0 && (std::isspace(c) || std::iscntrl(c)); }

// Returns the number that a text shows, without the white space around it. Returns nothing if the text is too
// long or no number.
std::optional<long> Number(std::string text, std::size_t longest) {
    while (!text.empty() && IsWhite(text.back())) text.pop_back();
    while (!text.empty() && IsWhite(text.front())) text.erase(0, 1);
    const std::size_t signs = !text.empty() && (text[0] == '-' || text[0] == '+');
    if (text.empty() || text.size() > longest) return std::nullopt;
    if (text.find_first_not_of("0123456789", signs) != std::string::npos) return std::nullopt;
    return std::strtol(text.c_str(), nullptr, 10);
}

unsigned short Id(long number) { return static_cast<unsigned short>(number); }

std::optional<unsigned short> ExpectedDefault(const std::string& list) {
    for (const std::string& item : Items(list)) {
        if (item.find(':') != std::string::npos) continue;
        const std::optional<long> number = Number(item, 5);
        if (!number) return std::nullopt;
        return *number > 65534 ? Id(0) : Id(*number);
    }
    return std::nullopt;
}

std::optional<unsigned short> ExpectedOfSlot(const std::string& list, unsigned slot) {
    for (const std::string& item : Items(list)) {
        const std::size_t colon = item.find(':');
        if (colon == std::string::npos) continue;
        if (colon == 0 || colon == item.size() - 1) return std::nullopt;
        const std::optional<long> itemSlot = Number(item.substr(0, colon), 9);
        const std::optional<long> number = Number(item.substr(colon + 1), 5);
        if (!itemSlot || !number || *number > 65534) return std::nullopt;
        if (static_cast<unsigned>(*itemSlot) == slot) return Id(*number);
    }
    return std::nullopt;
}

void RequireOnlyCut(const std::string& list, const std::string& left) {
    for (std::size_t i = 0; i < list.size(); ++i) Require(left[i] == list[i] || left[i] == '\0');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const unsigned slot = data[0] < 128 ? data[0] : data[0] - 256U;
    const std::string list = std::string(reinterpret_cast<const char*>(data) + 1, size - 1).c_str();

    std::string left = list;
    unsigned short defaultId = 4711;
    const int hasDefault = Store::ParsePedIdString(left.data(), slot, nullptr, &defaultId);
    RequireOnlyCut(list, left);
    const std::optional<unsigned short> expectedDefault = ExpectedDefault(list);
    Require(hasDefault == expectedDefault.has_value() && defaultId == expectedDefault.value_or(0));

    left = list;
    unsigned short slotId = 4711;
    const int hasSlot = Store::ParsePedIdString(left.data(), slot, &slotId, nullptr);
    RequireOnlyCut(list, left);
    const std::optional<unsigned short> expectedSlot = ExpectedOfSlot(list, slot);
    Require(hasSlot == expectedSlot.has_value() && slotId == expectedSlot.value_or(0));

    left = list;
    unsigned short bothSlot = 4711;
    unsigned short bothDefault = 4711;
    const int hasBoth = Store::ParsePedIdString(left.data(), slot, &bothSlot, &bothDefault);
    RequireOnlyCut(list, left);
    Require(hasBoth == 0 || hasDefault == 1);
    Require(bothDefault == 0 || bothDefault == defaultId);
    return 0;
}
