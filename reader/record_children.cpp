#include "reader/record_children.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>

#include "util/json_writer.h"

namespace ckscribe {

namespace {

std::string_view NameOfLabel(std::string_view label) {
    return label.ends_with('=') ? label.substr(0, label.size() - 1) : label;
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

bool IsOfName(char character) {
    return IsDigit(character) || (character >= 'A' && character <= 'Z') ||
           (character >= 'a' && character <= 'z') || character == '_';
}

// This bounds the search for another way to read a record, in addition to the record's length. A record
// counts as unreadable when the budget is used up.
constexpr std::size_t kBudget = 1 << 22;
// No child whose length is printed is longer than this, in bytes.
constexpr std::uint64_t kLongestText = 4 << 20;

constexpr ChildElement kAnything[] = {{KindOf("any"), false, true}};

}  // namespace

ChildrenEnd ChildrenReader::Read(std::string_view whole, FunctionIndex function, ChildrenFormat howRead,
                                 bool isWhole) {
    text = whole;
    format = howRead;
    isAllThere = isWhole;
    const std::span<const ChildElement> elements = ChildrenOfRecord(function, howRead.isStart);
    return Run(elements.data(), elements.size());
}

ChildrenEnd ChildrenReader::ReadAnything(std::string_view whole, ChildrenFormat howRead, bool isWhole) {
    text = whole;
    format = howRead;
    isAllThere = isWhole;
    return Run(kAnything, std::size(kAnything));
}

ChildrenEnd ChildrenReader::Run(const ChildElement* elements, std::size_t count) {
    ranOut = false;
    budget = kBudget + 64 * text.size();
    choices.clear();
    tokens.clear();
    state.depth = 0;
    state.position = 0;
    state.levels[0] = {elements, static_cast<std::uint32_t>(count), 0};
    bool holds = (format.isNew || Take("\n")) && Take("{");
    std::size_t searchFrom = 0;
    while (true) {
        if (holds) {
            const Level& level = state.levels[state.depth];
            if (level.next < level.count) {
                holds = Step(searchFrom);
                searchFrom = 0;
                continue;
            }
            holds = TakeLine(state.depth) && Take("}");
            if (holds && state.depth == 0) {
                // Only a line end shows that the brace is not a part of a text.
                if (state.position == text.size()) {
                    if (isAllThere) return {ChildrenOutcome::kRead, state.position};
                    ranOut = true;
                } else if (text[state.position] == '\n') {
                    return {ChildrenOutcome::kRead, state.position};
                }
                holds = false;
            } else if (holds) {
                --state.depth;
                holds = Take(format.isNew ? " " : ";");
                continue;
            }
        }
        // Another way to read the record counts only if this one fails whatever text follows. Otherwise the
        // result would depend on how much of the log is there.
        if (ranOut && !isAllThere) return {ChildrenOutcome::kNeedsMore, 0};
        if (choices.empty() || budget == 0) break;
        const Choice& choice = choices.back();
        state = choice.state;
        searchFrom = choice.searchFrom;
        tokens.resize(choice.tokenCount);
        choices.pop_back();
        holds = true;
        --budget;
        if (searchFrom == 0) ++state.levels[state.depth].next;
    }
    return {ChildrenOutcome::kUnreadable, 0};
}

// Reads the next child of the innermost group.
bool ChildrenReader::Step(std::size_t searchFrom) {
    Level& level = state.levels[state.depth];
    const ChildElement& element = level.elements[level.next];
    const State before = state;
    const std::size_t tokensBefore = tokens.size();
    const bool mayBeAbsent = element.isOptional || element.isRepeated;
    // In a list the next character decides whether the list goes on. Elsewhere both ways are tried.
    const bool isList = element.isRepeated && state.depth != 0;
    if (mayBeAbsent && !isList && searchFrom == 0) choices.push_back({state, tokensBefore, 0});
    if (!element.isRepeated && kChildKinds[element.kind].shape != ChildShape::kPolicies) ++level.next;
    laterEnd = 0;
    if (!ReadElement(element, searchFrom)) {
        if (!isList || searchFrom != 0) return false;
        state = before;
        tokens.resize(tokensBefore);
        ++state.levels[state.depth].next;
        return true;
    }
    if (laterEnd != 0) choices.push_back({before, tokensBefore, laterEnd});
    return true;
}

bool ChildrenReader::ReadElement(const ChildElement& element, std::size_t searchFrom) {
    const ChildKind& kind = kChildKinds[element.kind];
    if (kind.shape == ChildShape::kAny) return ReadAny(searchFrom);
    if (kind.shape == ChildShape::kAttribute) return ReadAttribute(element, searchFrom);
    if (kind.shape == ChildShape::kPolicies) {
        // This place takes all pairs that there are, then the next element follows.
        static constexpr ChildElement kId = {KindOf("ulong"), false, false, "id="};
        static constexpr ChildElement kValue = {KindOf("ulong"), false, false, "val="};
        const State before = state;
        if (ReadElement(kId, 0)) return true;
        state = before;
        if (ReadElement(kValue, 0)) return true;
        state = before;
        ++state.levels[state.depth].next;
        return true;
    }

    if (kind.shape != ChildShape::kValue && !TakeLine(state.depth + 1)) return false;
    ChildToken token;
    token.kind = element.kind;
    token.depth = static_cast<std::uint8_t>(state.depth);
    token.name = element.name.empty() ? NameOfLabel(element.label) : element.name;
    if (format.isNew) {
        if (!Take(kind.newLabel) || (kind.hasOwnLabel && !Take(element.label))) return false;
    } else if (!Take(kind.oldLabel)) {
        return false;
    }
    switch (kind.shape) {
        case ChildShape::kNumber:
        case ChildShape::kHex:
        case ChildShape::kDecimal: {
            bool isHex = false;
            if (!format.isNew && !Take("(")) return false;
            if (!TakeNumber(token.number, isHex)) return false;
            if (!format.isNew && !Take(")")) return false;
            token.isCut = isHex;
            return Finish(token);
        }
        case ChildShape::kShort: {
            if (!format.isNew && !Take("(")) return false;
            bool isHex = false;
            if (format.isNew ? !TakeSigned32(token.number) : !TakeNumber(token.number, isHex)) return false;
            if (!format.isNew && !Take(")")) return false;
            token.isCut = true;
            return Finish(token);
        }
        case ChildShape::kBoolean:
            token.number = Take("true") ? 1 : 0;
            if (token.number == 0 && !Take("false")) return false;
            return Finish(token);
        case ChildShape::kBytes:
        case ChildShape::kValue:
            return ReadBytes(token, format.isNew ? "\" " : "\");", searchFrom);
        case ChildShape::kText: {
            std::uint64_t length = 0;
            bool isHex = false;
            if (!Take("(") || !TakeNumber(length, isHex) || !Take(",\"") || length > kLongestText)
                return false;
            if (length > text.size() - state.position) {
                ranOut = true;
                return false;
            }
            token.form = 'T';
            token.text = text.substr(state.position, length);
            state.position += length;
            return Take("\")") && Finish(token);
        }
        case ChildShape::kMechanism: {
            if (format.isNew && !Take("(")) return false;
            const std::size_t comma = text.find_first_of(",\n\"", state.position);
            if (comma == text.npos) ranOut = true;
            if (comma == text.npos || text[comma] != ',') return false;
            token.type = text.substr(state.position, comma - state.position);
            state.position = comma + 1;
            if (!format.isNew && !Take("Value")) return false;
            return ReadBytes(token, format.isNew ? "\") " : "\"));", searchFrom);
        }
        case ChildShape::kKeySizes:
        case ChildShape::kSession: {
            static constexpr std::string_view kSizes[] = {"ulMinKeySize", "ulMaxKeySize", "flags"};
            static constexpr std::string_view kInfoOfSession[] = {"slotID", "state", "flags",
                                                                  "ulDeviceError"};
            const bool isSession = kind.shape == ChildShape::kSession;
            const std::span<const std::string_view> names =
                isSession ? std::span<const std::string_view>(kInfoOfSession) : kSizes;
            tokens.push_back(token);
            if (!Take("(")) return false;
            for (std::size_t i = 0; i < names.size(); ++i) {
                ChildToken part;
                part.kind = KindOf("part");
                part.depth = static_cast<std::uint8_t>(state.depth + 1);
                part.name = names[i];
                if (i != 0 && !Take(",")) return false;
                bool isHex = false;
                if (isSession && format.isNew && i < 2) {
                    if (!TakeSigned32(part.number)) return false;
                    isHex = true;
                } else if (!TakeNumber(part.number, isHex)) {
                    return false;
                }
                part.isCut = isHex;
                tokens.push_back(part);
            }
            return Take(")") && Take(format.isNew ? " " : ";");
        }
        case ChildShape::kSerial: {
            // In the new format the serial number stands as the label, at most 32 bytes of any kind. The old
            // format does not print it.
            if (!format.isNew) return Take("(SimpleText\"<null>\")") && Finish(token);
            constexpr std::string_view kNothing = "\"<null>\"";
            const std::size_t end = text.substr(state.position, 32 + kNothing.size()).find(kNothing);
            if (end == text.npos) {
                if (text.size() - state.position < 32 + kNothing.size()) ranOut = true;
                return false;
            }
            token.name = text.substr(state.position, end);
            state.position += end + kNothing.size();
            return Finish(token);
        }
        case ChildShape::kGroup: {
            tokens.push_back(token);
            const std::span<const ChildElement> members = MembersOf(element.kind);
            return Open(members.data(), members.size());
        }
        case ChildShape::kAttribute:
        case ChildShape::kPolicies:
        case ChildShape::kAny:
            break;
    }
    return false;
}

// Reads "CKA_LABEL=" and its value. A list of names has no values.
bool ChildrenReader::ReadAttribute(const ChildElement& element, std::size_t searchFrom) {
    if (!TakeLine(state.depth + 1)) return false;
    if (!format.isNew && !Take("Attribute(")) return false;
    ChildToken token;
    token.kind = element.kind;
    token.depth = static_cast<std::uint8_t>(state.depth);
    std::size_t end = state.position;
    while (end < text.size() && IsOfName(text[end])) ++end;
    if (end == text.size()) ranOut = true;
    if (end == state.position) return false;
    token.type = text.substr(state.position, end - state.position);
    state.position = end;
    if (format.isNew) {
        if (Take("=")) return ReadBytes(token, "\" ", searchFrom);
    } else {
        if (Take(",Value")) return ReadBytes(token, "\"));", searchFrom);
        if (!Take(")")) return false;
    }
    token.form = '-';
    return Finish(token);
}

// Reads bytes up to the first `closing`, or up to the first one behind `searchFrom`, and takes the separator.
// Sets `laterEnd` for the choice of a later end.
bool ChildrenReader::ReadBytes(ChildToken& token, std::string_view closing, std::size_t searchFrom) {
    if (!format.isNew) {
        if (!Take("(")) return false;
        token.form = Take("Numeric") ? 'N' : Take("SimpleText") ? 'S' : Take("RichText") ? 'R' : '-';
        if (token.form == '-') return false;
    }
    if (!Take("\"")) return false;
    const std::size_t begin = state.position;
    std::size_t quote = std::max(begin, searchFrom);
    while (true) {
        const std::size_t found = text.find('"', quote);
        const std::size_t line = text.substr(quote, found == text.npos ? found : found - quote).find('\n');
        const std::size_t searched = (found == text.npos ? text.size() : found) - quote;
        budget -= std::min(budget, searched / 16);
        if (line != text.npos) return false;
        if (found == text.npos) {
            ranOut = true;
            return false;
        }
        if (text.size() - found < closing.size()) ranOut = true;
        if (text.substr(found).starts_with(closing)) {
            quote = found;
            break;
        }
        quote = found + 1;
    }
    token.text = text.substr(begin, quote - begin);
    laterEnd = quote + 1;
    state.position = quote + closing.size();
    tokens.push_back(token);
    return true;
}

// Reads a child that is in no list as the kind that it looks like.
bool ChildrenReader::ReadAny(std::size_t searchFrom) {
    ChildElement element;
    std::size_t longest = 0;
    const std::string_view rest = text.substr(state.position);
    const std::string_view line =
        format.isNew ? rest : rest.substr(std::min(rest.find_first_not_of("\n "), rest.size()));
    for (std::uint8_t i = 0; i < std::size(kChildKinds); ++i) {
        const std::string_view label = format.isNew ? kChildKinds[i].newLabel : kChildKinds[i].oldLabel;
        if (label.size() <= longest || !line.starts_with(label)) continue;
        longest = label.size();
        element.kind = i;
    }
    if (longest != 0) {
        // The name ByteString may also stand before a text with its length.
        if (kChildKinds[element.kind].shape == ChildShape::kBytes && line.substr(longest, 1) == "(" &&
            IsDigit(line.substr(longest + 1, 1).empty() ? ' ' : line[longest + 1]))
            element.kind = KindOf("string");
        return ReadElement(element, searchFrom);
    }
    if (!format.isNew) {
        ranOut |= line.size() < 32;
        return false;
    }
    // The label reaches up to its '=', or up to the first character that can begin a value. The value
    // follows.
    const std::size_t stop = std::min(rest.find_first_of("\"\n{}("), rest.size());
    std::size_t end = rest.substr(0, std::min<std::size_t>(stop, 40)).find('=');
    end = end == rest.npos ? std::min(rest.find_first_of("0123456789-\"{}(\n"), stop) : end + 1;
    if (end == rest.size()) {
        ranOut = true;
        return false;
    }
    element.label = rest.substr(0, end);
    const char first = rest[end];
    element.kind = first == '"'                         ? KindOf("bytes")
                   : first == '('                       ? KindOf("string")
                   : first == 't' || first == 'f'       ? KindOf("bool")
                   : first == '-'                       ? KindOf("ushort")
                   : rest.substr(end).starts_with("0x") ? KindOf("hex")
                                                        : KindOf("dec");
    return ReadElement(element, searchFrom);
}

bool ChildrenReader::Open(const ChildElement* elements, std::size_t count) {
    if (!TakeLine(state.depth + 1) || !Take("{")) return false;
    constexpr unsigned kDeepest = std::size(State{}.levels) - 1;
    if (state.depth == kDeepest) return false;
    ++state.depth;
    // A structure that the logging library could not read has no members.
    const std::size_t before = state.position;
    const bool isEmpty = TakeLine(state.depth) && Take("}");
    state.position = before;
    state.levels[state.depth] = {elements, isEmpty ? 0 : static_cast<std::uint32_t>(count), 0};
    return true;
}

bool ChildrenReader::Take(std::string_view literal) {
    const std::size_t left = text.size() - state.position;
    if (left < literal.size()) {
        if (literal.starts_with(text.substr(state.position))) ranOut = true;
        return false;
    }
    if (text.compare(state.position, literal.size(), literal) != 0) return false;
    state.position += literal.size();
    return true;
}

// In the old format each child and each brace stands on a line of its own.
bool ChildrenReader::TakeLine(unsigned indent) {
    static constexpr std::string_view kLine = "\n               ";
    return format.isNew || Take(kLine.substr(0, 1 + 3 * indent));
}

bool ChildrenReader::TakeNumber(std::uint64_t& number, bool& isHex) {
    isHex = Take("0x");
    const char* const begin = text.data() + state.position;
    const char* const end = text.data() + text.size();
    const auto [behind, error] = std::from_chars(begin, end, number, isHex ? 16 : 10);
    if (behind == end) ranOut = true;
    state.position += static_cast<std::size_t>(behind - begin);
    return error == std::errc();
}

// Takes the low 32 bits, which are printed as a signed number.
bool ChildrenReader::TakeSigned32(std::uint64_t& number) {
    const bool isNegative = Take("-");
    bool isHex = false;
    if (!TakeNumber(number, isHex)) return false;
    if (isNegative) number = static_cast<std::uint32_t>(0 - number);
    return true;
}

bool ChildrenReader::Finish(ChildToken& token) {
    tokens.push_back(token);
    return Take(format.isNew ? " " : ";");
}

// ---- Values
// ------------------------------------------------------------------------------------------------

namespace {

constexpr std::string_view kEscapes = "0123456789abcdefghijklmnopqrstuvwxyz";
constexpr unsigned char kFirstPrintable = 32;
constexpr unsigned char kLastPrintable = 126;

// Returns the form in which a log writes these bytes: N(umeric), S(imple text), R(ich text).
char FormOf(std::string_view bytes) {
    std::size_t controls = 0;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (value > kLastPrintable) return 'N';
        if (value < kFirstPrintable) ++controls;
    }
    if (controls == 0) return 'S';
    return bytes.size() - controls > controls ? 'R' : 'N';
}

int DigitOf(char digit) {
    if (IsDigit(digit)) return digit - '0';
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

// Returns false if `digits` are not pairs of hexadecimal digits.
bool BytesOfDigits(std::string_view digits, std::string& bytes) {
    bytes.clear();
    if (digits.size() % 2 != 0) return false;
    bytes.reserve(digits.size() / 2);
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        const int high = DigitOf(digits[i]);
        const int low = DigitOf(digits[i + 1]);
        if (high < 0 || low < 0) return false;
        bytes += static_cast<char>(high << 4 | low);
    }
    return true;
}

// Reads a text in which a backslash begins an escape and a double quote stands twice. Returns false if it
// breaks these rules.
bool BytesOfRichText(std::string_view rich, std::string& bytes) {
    bytes.clear();
    for (std::size_t i = 0; i < rich.size(); ++i) {
        const char first = rich[i];
        const char second = i + 1 < rich.size() ? rich[i + 1] : '\0';
        if (first == '"' && second != '"') return false;
        if (first == '\\' && second != '\\') {
            const std::size_t control = kEscapes.find(second);
            if (second == '\0' || control >= kFirstPrintable) return false;
            bytes += static_cast<char>(control);
        } else {
            bytes += first;
        }
        if (first == '\\' || first == '"') ++i;
    }
    return true;
}

// Sets the bytes that the text shows. If the text does not say its form, that form counts in which a log
// writes the resulting bytes.
void SetBytes(Value& value, char form, std::string_view text) {
    value.size = 0;
    value.bytes = std::string();
    if (form != 'T' && text == "<null>") return;
    std::uint64_t leftOut = 0;
    if (const std::size_t mark = form == 'T' ? text.npos : text.find(kElisionMark); mark != text.npos) {
        const std::size_t end = std::min(text.find(kElisionMark, mark + 1), text.size());
        std::from_chars(text.data() + mark + 1, text.data() + end, leftOut);
        leftOut += text.size() - std::min(text.size(), end + 1);
        text = text.substr(0, mark);
        // Only complete bytes decide the form.
        if (text.size() % 2 != 0 && form != 'S' && form != 'R') {
            text.remove_suffix(1);
            ++leftOut;
        }
    }
    std::string bytes;
    bool isNumeric = false;
    if (form == 'N' || form == '?') {
        isNumeric = BytesOfDigits(text, bytes) && (form == 'N' || FormOf(bytes) == 'N');
    }
    bool isRich = false;
    if (!isNumeric && (form == 'R' || form == '?'))
        isRich = BytesOfRichText(text, bytes) && (form == 'R' || FormOf(bytes) == 'R');
    if (!isNumeric && !isRich) bytes = text;
    value.isText = !isNumeric;
    value.size = bytes.size() + (isNumeric ? leftOut / 2 : leftOut);
    if (bytes.size() > kLargestKeptValue) bytes.resize(kLargestKeptValue);
    value.bytes = std::move(bytes);
}

// These members of structures are padded with blanks to a fixed size in bytes. A member of that size is a
// text whatever it looks like: many tokens have a serial number of sixteen hexadecimal digits.
constexpr struct {
    std::string_view name;
    std::size_t size;
} kPaddedTexts[] = {
    {"label", 32}, {"manufacturerID", 32}, {"model", 16}, {"serialNumber", 16}, {"slotDescription", 64}};

// These attributes are texts of UTF-8. Digits whose bytes are no readable text are themselves the text, for
// example the label "ec".
constexpr std::string_view kTextAttributes[] = {"CKA_LABEL", "CKA_APPLICATION", "CKA_URL"};

char FormOf(const ChildToken& token) {
    if (token.form != '?') return token.form;
    for (const auto& padded : kPaddedTexts) {
        if (token.name == padded.name && token.text.size() == padded.size) return 'S';
    }
    if (std::ranges::find(kTextAttributes, token.type) == std::end(kTextAttributes)) return '?';
    std::string bytes;
    return BytesOfDigits(token.text, bytes) && !IsReadableText(bytes) ? 'S' : '?';
}

Value ValueOf(const ChildToken& token) {
    const ChildKind& kind = kChildKinds[token.kind];
    Value value;
    value.kind = kind.kind.empty() ? kind.oldLabel : kind.kind;
    value.name = token.name;
    value.type = token.type;
    switch (kind.shape) {
        case ChildShape::kNumber:
        case ChildShape::kHex:
        case ChildShape::kDecimal:
        case ChildShape::kShort:
            value.number = token.number;
            value.isCut = token.isCut;
            break;
        case ChildShape::kBoolean:
            value.boolean = token.number != 0;
            break;
        case ChildShape::kBytes:
        case ChildShape::kValue:
        case ChildShape::kText:
            if (value.kind != "PIN") SetBytes(value, FormOf(token), token.text);
            break;
        case ChildShape::kAttribute:
            if (token.form != '-') SetBytes(value, FormOf(token), token.text);
            break;
        case ChildShape::kMechanism: {
            Value parameter;
            parameter.kind = "ByteString";
            parameter.name = "parameter";
            SetBytes(parameter, token.form, token.text);
            value.children.push_back(parameter);
            break;
        }
        case ChildShape::kKeySizes:
        case ChildShape::kSession:
        case ChildShape::kGroup:
            value.isGroup = true;
            break;
        case ChildShape::kSerial:
            SetBytes(value, 'S', "<null>");
            break;
        case ChildShape::kPolicies:
        case ChildShape::kAny:
            break;
    }
    return value;
}

// Returns the values of one depth from token `next` on, and moves `next` behind them.
std::vector<Value> ValuesFrom(const std::vector<ChildToken>& tokens, std::size_t& next, unsigned depth) {
    std::vector<Value> values;
    while (next < tokens.size() && tokens[next].depth >= depth) {
        values.push_back(ValueOf(tokens[next++]));
        Value& value = values.back();
        if (next < tokens.size() && tokens[next].depth > depth)
            value.children = ValuesFrom(tokens, next, depth + 1);
        // The elements of a list are numbers without a kind, as in events: the list names their kind.
        const bool isList = value.kind.ends_with("List") && value.kind != "AttributeList";
        for (std::size_t i = 0; isList && i < value.children.size(); ++i) value.children[i].kind.clear();
    }
    return values;
}

}  // namespace

std::vector<Value> ValuesOf(const std::vector<ChildToken>& tokens) {
    std::size_t next = 0;
    return ValuesFrom(tokens, next, 0);
}

FieldKind FieldOf(const ChildToken& token) { return kChildKinds[token.kind].field; }

}  // namespace ckscribe
