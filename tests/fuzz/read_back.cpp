#include "tests/fuzz/read_back.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include "functions/pkcs11_names.h"
#include "reader/call_reader.h"

namespace {

using ckscribe::Call;
using ckscribe::Value;

class OneCall : public ckscribe::CallSink {
public:
    void OnCall(const Call& call) override {
        ++count;
        kept = ckscribe::KeptCall(call);
    }
    void OnUnreadable(const ckscribe::UnreadableStretch&) override { ++unreadable; }

    int count = 0;
    int unreadable = 0;
    ckscribe::KeptCall kept;
};

// Bytes as the log writes them, without quotes.
std::string Written(const std::string& bytes) {
    static constexpr char kDigits[] = "0123456789abcdefghijklmnopqrstuv";
    if (bytes.empty()) return "<null>";
    std::size_t controls = 0;
    bool isText = true;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        isText = isText && value <= 126;
        controls += value < 32 ? 1U : 0U;
    }
    std::string written;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        if (!isText || (controls != 0 && bytes.size() - controls <= controls)) {
            written += {kDigits[value >> 4], kDigits[value & 15]};
        } else if (controls != 0 && value < 32) {
            written += {'\\', kDigits[value]};
        } else if (controls != 0 && (byte == '\\' || byte == '"')) {
            written += {byte, byte};
        } else {
            written += byte;
        }
    }
    return written;
}

// Whether a reader may take a part of these bytes for their end.
bool HasSeveralEnds(const std::vector<ExpectedChild>& children) {
    for (const ExpectedChild& child : children) {
        const std::string written = child.shape == Shape::kText ? "" : Written(child.bytes);
        for (const char* const closing : {"\" ", "\") ", "\");", "\"));"}) {
            // The last of these characters may be what follows the bytes.
            if ((written + "\" ").find(closing) < written.size()) return true;
        }
        if (written.ends_with('"') || HasSeveralEnds(child.children)) return true;
    }
    return false;
}

class Comparison {
public:
    Comparison(std::string_view log, bool isNew) : log(log), isNew(isNew) {}

    void Compare(const std::vector<ExpectedChild>& expected, const std::vector<Value>& values) {
        Require(expected.size() == values.size(), "as many children");
        for (std::size_t i = 0; i < expected.size(); ++i) Compare(expected[i], values[i]);
    }

    void Require(bool holds, const char* what) const {
        if (holds) return;
        std::fprintf(stderr, "does not come back: %s\nof:%.*s\n", what, static_cast<int>(log.size()),
                     log.data());
        std::abort();
    }

private:
    void Compare(const ExpectedChild& expected, const Value& value) {
        switch (expected.shape) {
            case Shape::kNumber:
                return CompareNumber(expected.numbers[0], value, isNew);
            case Shape::kDecimal:
                return CompareNumber(expected.numbers[0], value, true);
            case Shape::kHex:
            case Shape::kShort:
                return CompareNumber(expected.numbers[0], value, false);
            case Shape::kBoolean:
                return Require(value.boolean == (expected.numbers[0] != 0), "a boolean");
            case Shape::kBytes:
            case Shape::kValue:
                if (value.kind == "PIN") {
                    Require(!value.bytes && (expected.bytes.empty() || expected.bytes == "********"),
                            "a PIN");
                    return;
                }
                return CompareBytes(expected.bytes, value);
            case Shape::kText:
                return Require(value.bytes == expected.bytes && value.isText, "a text");
            case Shape::kMechanism:
                Require(value.children.size() == 1 && value.children[0].name == "parameter", "a parameter");
                CompareType(GetMechanismType(expected.numbers[0]), value);
                return CompareBytes(expected.bytes, value.children[0]);
            case Shape::kAttribute:
                CompareType(GetAttributeType(expected.numbers[0]), value);
                return CompareBytes(expected.bytes, value);
            case Shape::kType:
                CompareType(GetAttributeType(expected.numbers[0]), value);
                return Require(!value.bytes, "a type without a value");
            case Shape::kKeySizes:
                Require(value.children.size() == 3, "three numbers");
                CompareNumber(expected.numbers[0], value.children[0], true);
                CompareNumber(expected.numbers[1], value.children[1], true);
                return CompareNumber(expected.numbers[2], value.children[2], false);
            case Shape::kSession:
                Require(value.children.size() == 4, "four numbers");
                for (std::size_t i = 0; i < 4; ++i)
                    CompareNumber(expected.numbers[i], value.children[i], false);
                return;
            case Shape::kChildren:
                return Compare(expected.children, value.children);
        }
    }

    void CompareNumber(CK_ULONG expected, const Value& value, bool isWhole) const {
        Require(value.isCut == !isWhole, "whether a number is cut");
        Require(value.number == (isWhole ? expected : static_cast<std::uint32_t>(expected)), "a number");
    }

    void CompareType(std::string_view expected, const Value& value) const {
        Require(value.type == expected, "a type");
    }

    void CompareBytes(const std::string& expected, const Value& value) const {
        Require(value.bytes.has_value(), "bytes");
        // The new format does not say in which form bytes are written.
        const bool isSame = value.bytes == expected || (isNew && Written(*value.bytes) == Written(expected));
        Require(isSame && value.size == value.bytes->size(), "the same bytes");
    }

    std::string_view log;
    bool isNew;
};

}  // namespace

void RequireReadBack(std::string_view log, const std::string& function, const ExpectedRecord& start,
                     const ExpectedRecord& end) {
    const bool isNew = log.find("Command(") != 1;
    OneCall sink;
    ckscribe::CallReader reader(sink);
    reader.Feed(log);
    reader.Finish();
    const Call& call = sink.kept.Get();
    Comparison comparison(log, isNew);
    comparison.Require(sink.unreadable == 0, "everything is read");
    comparison.Require(sink.count == 1, "one call");
    comparison.Require(call.hasStart && call.hasEnd, "a start and an end");
    comparison.Require(call.Function() == (start.command == "UnknownType" ? start.command : function),
                       "the function");
    comparison.Require(call.rv == end.rv, "the result");
    if (HasSeveralEnds(start.children) || HasSeveralEnds(end.children)) return;
    comparison.Compare(start.children, call.In());
    comparison.Compare(end.children, call.Out());
}
