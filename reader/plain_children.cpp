#include "reader/plain_children.h"

#include <array>
#include <cstring>
#include <span>
#include <string>
#include <vector>

#include "reader/child_lists.h"

namespace ckscribe {

namespace {

// A PlainElement is a ChildElement in the form that this reader needs.
struct PlainElement {
    ChildShape shape{};
    FieldKind field{};
    bool isOptional = false;
    bool isRepeated = false;
    // The new format prints the label in front of the value. The label's first eight bytes stand here as a
    // number, too: one comparison tests them.
    std::uint32_t labelSize = 0;
    std::uint64_t labelWord = 0;
    std::uint64_t labelMask = 0;
    std::string label;
    std::vector<PlainElement> members;
};

std::uint64_t WordAt(const char* text) {
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    return word;
}

std::vector<PlainElement> PlainElementsOf(std::span<const ChildElement> elements) {
    std::vector<PlainElement> plain;
    for (const ChildElement& element : elements) {
        const ChildKind& kind = kChildKinds[element.kind];
        PlainElement& added = plain.emplace_back();
        added.shape = kind.shape;
        added.field = kind.field;
        added.isOptional = element.isOptional;
        added.isRepeated = element.isRepeated;
        added.label = kind.newLabel;
        if (kind.hasOwnLabel) added.label += element.label;
        added.labelSize = static_cast<std::uint32_t>(added.label.size());
        const std::string word = added.label.substr(0, sizeof added.labelWord);
        std::memcpy(&added.labelWord, word.data(), word.size());
        std::memset(&added.labelMask, 0xff, word.size());
        if (kind.shape == ChildShape::kGroup) added.members = PlainElementsOf(MembersOf(element.kind));
    }
    return plain;
}

struct PlainLists {
    std::vector<PlainElement> start;
    std::vector<PlainElement> end;
};

// Returns the lists of a function. A function that this library does not know has an empty list.
const PlainLists& PlainListsOf(FunctionIndex function) {
    static const std::vector<PlainLists> all = [] {
        std::vector<PlainLists> lists(FunctionCount());
        for (std::size_t i = 0; i < lists.size(); ++i) {
            const FunctionIndex index{static_cast<std::uint16_t>(i)};
            lists[i] = {PlainElementsOf(ChildrenOfRecord(index, true)),
                        PlainElementsOf(ChildrenOfRecord(index, false))};
        }
        return lists;
    }();
    static const PlainLists none;
    return IndexOf(function) < all.size() ? all[IndexOf(function)] : none;
}

constexpr std::array<bool, 256> kIsOfName = [] {
    std::array<bool, 256> table{};
    for (unsigned i = 0; i < table.size(); ++i) {
        table[i] = (i >= '0' && i <= '9') || (i >= 'A' && i <= 'Z') || (i >= 'a' && i <= 'z') || i == '_';
    }
    return table;
}();

// Takes the children off the front of a line in the first way that fits. A line feed ends every search.
class Line {
public:
    Line(const char* begin, const char* end, CallFields& fields)
        : position(begin), end(end), fields(fields) {}

    PlainOutcome Read(const std::vector<PlainElement>& elements) {
        if (Take('{') && ReadAll(elements, true) && Take('}') && position == end) return PlainOutcome::kRead;
        return isOdd || hasChoice ? PlainOutcome::kNotPlain : PlainOutcome::kCannotBeRead;
    }

private:
    bool ReadAll(const std::vector<PlainElement>& elements, bool isTop) {
        for (const PlainElement& element : elements) {
            const bool maySkip = element.isOptional || element.isRepeated;
            hasChoice = hasChoice || (maySkip && isTop);
            do {
                const char* const before = position;
                if (ReadElement(element, isTop)) continue;
                // Another way to read the group may fit before it counts as absent.
                if (isTop && element.shape == ChildShape::kGroup && position != before)
                    return maySkip && Odd();
                if (!maySkip || isOdd) return false;
                position = before;
                break;
            } while (element.isRepeated);
        }
        return true;
    }

    bool ReadElement(const PlainElement& element, bool isTop);
    bool ReadAttribute();
    bool ReadBytes(const char* closing, std::size_t closingSize);
    bool ReadNumbers(bool isSession);

    // Leaves the record to ChildrenReader.
    bool Odd() {
        isOdd = true;
        return false;
    }

    bool Take(char character) {
        if (*position != character) return false;
        ++position;
        return true;
    }

    bool TakeLabel(const PlainElement& element) {
        if ((WordAt(position) & element.labelMask) != element.labelWord) return false;
        constexpr std::size_t kWord = sizeof element.labelWord;
        if (element.labelSize > kWord &&
            std::strncmp(position + kWord, element.label.c_str() + kWord, element.labelSize - kWord) != 0)
            return false;
        position += element.labelSize;
        return true;
    }

    bool TakeNumber(std::uint64_t& number) {
        const char* const begin = position;
        number = 0;
        if (begin[0] == '0' && begin[1] == 'x') {
            position += 2;
            for (;; ++position) {
                const auto digit = static_cast<unsigned char>(*position);
                unsigned value = digit - unsigned{'0'};
                if (value > 9) {
                    value = (digit | 0x20U) - unsigned{'a'};
                    if (value > 5) break;
                    value += 10;
                }
                number = number << 4 | value;
            }
            return position - begin <= 18 ? position - begin > 2 : Odd();
        }
        for (unsigned digit; (digit = static_cast<unsigned char>(*position) - unsigned{'0'}) <= 9; ++position)
            number = number * 10 + digit;
        // A number of more than 19 digits may be too large.
        return position - begin <= 19 ? position != begin : Odd();
    }

    // Takes the low 32 bits, which are printed as a signed number.
    bool TakeSigned32(std::uint64_t& number) {
        const bool isNegative = Take('-');
        if (!TakeNumber(number)) return false;
        if (isNegative) number = static_cast<std::uint32_t>(0 - number);
        return true;
    }

    void SetField(FieldKind kind, std::uint64_t number) {
        const auto set = [number](std::optional<std::uint64_t>& field) {
            if (!field) field = number;
        };
        switch (kind) {
            case FieldKind::kSlot:
                return set(fields.slot);
            case FieldKind::kSession:
                return set(fields.session);
            case FieldKind::kObject:
                return set(fields.object);
            case FieldKind::kUser:
                return set(fields.user);
            case FieldKind::kNone:
            case FieldKind::kMechanism:
                return;
        }
    }

    const char* position;
    const char* const end;
    CallFields& fields;
    bool isOdd = false;
    // `hasChoice` is true if there was another way to read something, or if something could be left out.
    bool hasChoice = false;
};

bool Line::ReadElement(const PlainElement& element, bool isTop) {
    std::uint64_t number = 0;
    switch (element.shape) {
        case ChildShape::kNumber:
        case ChildShape::kHex:
        case ChildShape::kDecimal:
            if (!TakeLabel(element) || !TakeNumber(number) || !Take(' ')) return false;
            if (isTop) SetField(element.field, number);
            break;
        case ChildShape::kShort:
            if (!TakeLabel(element) || !TakeSigned32(number) || !Take(' ')) return false;
            if (isTop) SetField(element.field, number);
            break;
        case ChildShape::kBytes:
        case ChildShape::kValue:
            if (!TakeLabel(element) || !ReadBytes("\" ", 2)) return false;
            break;
        case ChildShape::kMechanism: {
            if (!TakeLabel(element) || !Take('(')) return false;
            const char* const name = position;
            while (kIsOfName[static_cast<unsigned char>(*position)]) ++position;
            if (*position != ',') return *position == '"' || position == end ? false : Odd();
            const std::string_view type(name, static_cast<std::size_t>(position - name));
            ++position;
            if (!ReadBytes("\") ", 3)) return false;
            if (isTop && fields.mechanism.empty()) fields.mechanism = type;
            break;
        }
        case ChildShape::kAttribute:
            if (!ReadAttribute()) return false;
            break;
        case ChildShape::kSession:
        case ChildShape::kKeySizes:
            if (!TakeLabel(element) || !ReadNumbers(element.shape == ChildShape::kSession)) return false;
            break;
        case ChildShape::kGroup:
            if (!TakeLabel(element) || !Take('{')) return false;
            if (*position != '}' && !ReadAll(element.members, false)) return false;
            if (!Take('}') || !Take(' ')) return false;
            break;
        case ChildShape::kBoolean:
        case ChildShape::kText:
        case ChildShape::kSerial:
        case ChildShape::kPolicies:
        case ChildShape::kAny:
            return Odd();
    }
    return true;
}

// Reads "CKA_LABEL=" and its value. A list of names has no values.
bool Line::ReadAttribute() {
    const char* const name = position;
    while (kIsOfName[static_cast<unsigned char>(*position)]) ++position;
    if (position == name) return false;
    return Take('=') ? ReadBytes("\" ", 2) : Take(' ');
}

// Reads bytes up to the first `closing`.
bool Line::ReadBytes(const char* closing, std::size_t closingSize) {
    if (!Take('"')) return false;
    const char* from = position;
    while (true) {
        const auto* const quote =
            static_cast<const char*>(std::memchr(from, '"', static_cast<std::size_t>(end - from)));
        if (quote == nullptr) return false;
        if (std::strncmp(quote + 1, closing + 1, closingSize - 1) == 0) {
            position = quote + closingSize;
            hasChoice = true;
            return true;
        }
        from = quote + 1;
    }
}

// Reads "(1,3,0x6,0x0) " of a session, or "(512,4096,0x0) " of a mechanism.
bool Line::ReadNumbers(bool isSession) {
    const int count = isSession ? 4 : 3;
    for (int i = 0; i < count; ++i) {
        std::uint64_t number = 0;
        if (!Take(i == 0 ? '(' : ',')) return false;
        if (isSession && i < 2 ? !TakeSigned32(number) : !TakeNumber(number)) return false;
    }
    return Take(')') && Take(' ');
}

}  // namespace

PlainOutcome ReadPlainChildren(const char* begin, const char* lineEnd, FunctionIndex function, bool isStart,
                               CallFields& fields) {
    // A record may go on behind its first line, in a text whose length is printed.
    if (lineEnd[-1] != '}') return PlainOutcome::kNotPlain;
    fields = CallFields{};
    const PlainLists& lists = PlainListsOf(function);
    return Line(begin, lineEnd, fields).Read(isStart ? lists.start : lists.end);
}

}  // namespace ckscribe
