#include "tests/fuzz/record_reader.h"

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "functions/pkcs11_names.h"

namespace {

constexpr std::size_t kIndent = 3;

CK_ULONG Low32Bits(CK_ULONG number) { return static_cast<std::uint32_t>(number); }
long Signed32Bits(CK_ULONG number) { return static_cast<std::int32_t>(static_cast<std::uint32_t>(number)); }

// COMPAT: Records name these results otherwise than the lookup does.
constexpr CK_RV kNamelessInRecords[] = {0x80000040, 0x80000041};
constexpr ckscribe::ReturnValueRow kNameInRecordsAlone = {"CKR_PARTITION_DISABLED", 0x80000020};

enum class Form { kNumeric, kSimple, kRich };

// Returns the form in which bytes are written. Printable bytes are a text, and mostly printable bytes are a
// text with escapes.
Form FormOf(const std::string& bytes) {
    std::size_t printable = 0;
    std::size_t control = 0;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (value > 126) return Form::kNumeric;
        ++(value < 32 ? control : printable);
    }
    if (control == 0) return Form::kSimple;
    return printable > control ? Form::kRich : Form::kNumeric;
}

const char* NameOf(Form form) {
    return form == Form::kNumeric ? "Numeric" : form == Form::kSimple ? "SimpleText" : "RichText";
}

}  // namespace

void RecordReader::Read(const ExpectedRecord& record) {
    if (isNew) {
        ReadNewHead(record);
    } else {
        ReadOldHead(record);
    }
    ReadChildren(record.children, 0);
}

void RecordReader::ReadNewHead(const ExpectedRecord& record) {
    if (record.isStart) Take("\n");
    Take("\n");
    TakeDecimal();  // the time of day
    Take(":");
    TakeDecimal();
    Take(":");
    TakeDecimal();
    Take(" ");
    TakeDecimal();  // the process
    Take("-");
    TakeSigned();  // the thread
    Take(record.isStart ? ":STRT" : ":FINI");
    Take(record.command);
    if (!record.specifier.empty()) {
        Take("_");
        Take(record.specifier);
    }
    if (!record.isStart) {
        const char* const stars = record.rv == CKR_OK ? "" : "***";
        Take(std::string(" ") + stars);
        ReadResult(record.rv);
        Take(stars);
        TakeSigned();
        Take("clks");
    }
    Take(" ");
}

void RecordReader::ReadOldHead(const ExpectedRecord& record) {
    Take("\nCommand(" + record.command + ", " + (record.specifier.empty() ? "None" : record.specifier) +
         (record.isStart ? ", Start" : ", End, "));
    if (!record.isStart) ReadResult(record.rv);
    Take(") PID:  ");
    TakeDecimal();
    Take("  Time:  ");
    const std::size_t end = rest.find('\n');
    Require(end == 24, "no time");
    rest.remove_prefix(end);
    Take("\n");
    if (record.isStart) return;
    Take(" // ");
    TakeSigned();
    Take(" clock cycles");
}

void RecordReader::ReadResult(CK_RV rv) {
    if (rv == CKR_OK) return Take("CKR_OK");  // a number may follow at once
    const std::string name(
        TakeWhile([](int c) { return int{isupper(c) != 0 || isdigit(c) != 0 || c == '_'}; }));
    if (name == "CKR_UNKNOWN") {
        Take(" ");
        Require(TakeHex() == rv, "result");
        for (const ckscribe::ReturnValueRow& row : CKR_LookupTable)
            Require(row.value != rv || rv == kNamelessInRecords[0] || rv == kNamelessInRecords[1], row.name);
        return;
    }
    CK_ULONG value = 0;
    const bool isFound = GetErrorCodeForString(name.c_str(), &value) == CKR_OK;
    if (!isFound && name == kNameInRecordsAlone.name) value = kNameInRecordsAlone.value;
    Require(value == rv, "result");
}

// Each child of the old format has a line of its own, with the exception of bare values.
void RecordReader::ReadChildren(const std::vector<ExpectedChild>& children, std::size_t indent) {
    TakeNewLine(indent);
    Take("{");
    for (const ExpectedChild& child : children) {
        ReadChild(child, indent + kIndent);
        Take(isNew ? " " : ";");
    }
    TakeNewLine(indent);
    Take("}");
}

void RecordReader::ReadChild(const ExpectedChild& child, std::size_t indent) {
    if (child.shape != Shape::kValue) TakeNewLine(indent);
    Take(isNew ? child.newLabel : child.oldLabel);
    ReadShape(child, indent);
}

void RecordReader::ReadShape(const ExpectedChild& child, std::size_t indent) {
    switch (child.shape) {
        case Shape::kNumber:
        case Shape::kHex:
        case Shape::kDecimal:
        case Shape::kShort:
            return ReadNumber(child);
        case Shape::kBoolean:
            return Take(child.numbers[0] != 0 ? "true" : "false");
        case Shape::kBytes:
        case Shape::kValue:
            return ReadBytes(child.bytes);
        case Shape::kText:
            return ReadText(child.bytes);
        case Shape::kMechanism:
            if (isNew) Take("(");  // COMPAT: the old format has only the closing one
            Take(GetMechanismType(child.numbers[0]));
            Take(isNew ? "," : ",Value");
            ReadBytes(child.bytes);
            return Take(")");
        case Shape::kAttribute:
            if (!isNew) Take("(");
            Take(GetAttributeType(child.numbers[0]));
            Take(isNew ? "=" : ",Value");
            ReadBytes(child.bytes);
            if (!isNew) Take(")");
            return;
        case Shape::kType:
            if (!isNew) Take("(");
            Take(GetAttributeType(child.numbers[0]));
            if (!isNew) Take(")");
            return;
        case Shape::kKeySizes:
            Take("(");
            Require(TakeDecimal() == child.numbers[0], "smallest key");
            Take(",");
            Require(TakeDecimal() == child.numbers[1], "largest key");
            Take(",");
            Require(TakeHex() == Low32Bits(child.numbers[2]), "flags");
            return Take(")");
        case Shape::kSession:
            Take("(");
            for (std::size_t i = 0; i < 4; ++i) {
                if (i != 0) Take(",");
                if (isNew && i < 2) {
                    Require(TakeSigned() == Signed32Bits(child.numbers[i]), "number of a session");
                } else {
                    Require(TakeHex() == Low32Bits(child.numbers[i]), "number of a session");
                }
            }
            return Take(")");
        case Shape::kChildren:
            return ReadChildren(child.children, indent);
    }
}

void RecordReader::ReadNumber(const ExpectedChild& child) {
    const CK_ULONG number = child.numbers[0];
    const bool isHex = child.shape == Shape::kHex || (!isNew && child.shape != Shape::kDecimal);
    if (!isNew) Take("(");
    if (isHex) {
        Require(TakeHex() == Low32Bits(number), "number");
    } else if (child.shape == Shape::kShort) {
        Require(TakeSigned() == Signed32Bits(number), "number");
    } else {
        Require(TakeDecimal() == number, "number");
    }
    if (!isNew) Take(")");
}

void RecordReader::ReadBytes(const std::string& bytes) {
    if (!isNew) Take(std::string("(") + NameOf(FormOf(bytes)));
    Take("\"");
    Require(TakeBytes(bytes) == bytes, "bytes");
    Take("\"");
    if (!isNew) Take(")");
}

std::string RecordReader::TakeBytes(const std::string& expected) {
    if (expected.empty()) {
        Take("<null>");
        return "";
    }
    switch (FormOf(expected)) {
        case Form::kNumeric:
            return TakeNumericText();
        case Form::kRich:
            return TakeRichText();
        case Form::kSimple:
            break;
    }
    const std::string bytes(rest.substr(0, expected.size()));
    rest.remove_prefix(bytes.size());
    return bytes;
}

void RecordReader::ReadText(const std::string& bytes) {
    Take("(");
    Require(TakeSigned() == static_cast<long>(bytes.size()), "length of a text");
    Take(",\"");
    Take(bytes);
    Take("\")");
}

void RecordReader::Take(std::string_view literal) {
    Require(rest.starts_with(literal), std::string(literal));
    rest.remove_prefix(literal.size());
}

void RecordReader::TakeNewLine(std::size_t indent) {
    if (isNew) return;
    Take("\n");
    Take(std::string(indent, ' '));
}

std::string_view RecordReader::TakeWhile(int (*isOfKind)(int)) {
    std::size_t count = 0;
    while (count < rest.size() && isOfKind(static_cast<unsigned char>(rest[count])) != 0) ++count;
    Require(count != 0, "something else");
    const std::string_view taken = rest.substr(0, count);
    rest.remove_prefix(count);
    return taken;
}

CK_ULONG RecordReader::TakeHex() {
    Take("0x");
    return std::strtoul(std::string(TakeWhile(isxdigit)).c_str(), nullptr, 16);
}

CK_ULONG RecordReader::TakeDecimal() {
    return std::strtoul(std::string(TakeWhile(isdigit)).c_str(), nullptr, 10);
}

long RecordReader::TakeSigned() {
    const bool isNegative = rest.starts_with('-');
    if (isNegative) Take("-");
    const long number = static_cast<long>(TakeDecimal());
    return isNegative ? -number : number;
}

std::string RecordReader::TakeNumericText() {
    const std::string_view digits = TakeWhile(isxdigit);
    Require(digits.size() % 2 == 0, "pairs of digits");
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes += static_cast<char>(std::strtoul(std::string(digits.substr(i, 2)).c_str(), nullptr, 16));
    return bytes;
}

// A backslash begins an escape, and a double quote that is not the end is doubled.
std::string RecordReader::TakeRichText() {
    constexpr std::string_view kEscapes = "0123456789abcdefghijklmnopqrstuv";
    std::string bytes;
    for (;;) {
        Require(!rest.empty(), "end of rich text");
        const char first = rest[0];
        const char second = rest.size() > 1 ? rest[1] : '\0';
        if (first == '"' && second != '"') return bytes;
        if (first == '\\' && second != '\\') {
            Require(kEscapes.find(second) != kEscapes.npos, "escape");
            bytes += static_cast<char>(kEscapes.find(second));
        } else {
            bytes += first;
        }
        rest.remove_prefix(first == '\\' || first == '"' ? 2 : 1);
    }
}

void RecordReader::Require(bool holds, const std::string& what) const {
    if (holds) return;
    std::fprintf(stderr, "expected: %s\nin:%.*s\n-- at offset %zu --\n", what.c_str(),
                 static_cast<int>(whole.size()), whole.data(), whole.size() - rest.size());
    std::abort();
}
