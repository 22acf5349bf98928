// This fuzzer converts texts and bytes. An input is the text of every conversion, and the bytes of those that
// begin with bytes. These properties hold. What is converted and converted back is the same. Two functions
// for one thing agree. Numbers are those of the C library. Nothing is written beyond its size. A text is only
// read, unless it is there to be trimmed.

#include <cctype>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "util/tolk_text.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

using Bytes = std::vector<unsigned char>;

std::string HexText(const Bytes& bytes) {
    std::string text;
    for (const unsigned char byte : bytes) {
        text += "0123456789abcDEF"[byte / 16];
        text += "0123456789ABCdef"[byte % 16];
    }
    return text;
}

void CheckBytesThroughHex(const Bytes& bytes) {
    const std::string text = HexText(bytes);
    Bytes pairs(bytes.size() + 1, 0xEE);
    Require(Tolk_AsciiToHex(text.c_str(), pairs.data(), bytes.size()) == bytes.size());
    Require(pairs.back() == 0xEE);
    pairs.pop_back();
    Require(pairs == bytes);

    unsigned char* array = nullptr;
    int length = -1;
    Require(Tolk_AsciiHexToNewByteArray(text.c_str(), &array, &length) == 0);
    Require(Bytes(array, array + length) == bytes);
    std::free(array);
}

void CheckHex(const std::string& text) {
    int length = -1;
    unsigned char* array = nullptr;
    const int result = Tolk_AsciiHexToNewByteArray(text.c_str(), &array, &length);
    const bool isHex = text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    Require(result == (isHex ? 0 : -1));
    if (!isHex) return;
    Require(length == static_cast<int>((text.size() + 1) / 2));
    const std::string even = (text.size() % 2 != 0 ? "0" : "") + text;
    Bytes pairs(even.size() / 2 + 1);
    Require(Tolk_AsciiToHex(even.c_str(), pairs.data(), pairs.size()) == static_cast<unsigned long>(length));
    pairs.pop_back();
    Require(Bytes(array, array + length) == pairs);
    std::free(array);
}

void CheckNumber(const std::string& text, int radix) {
    int value = 4711;
    const int result = Tolk_atoi(text.c_str(), radix, &value);
    Require(result == 0 || (result == -1 && value == 4711));
    if (result == 0) Require(Tolk_IsIntegerString(text.c_str(), 1) == 1);

    const bool isSigned = !text.empty() && (text[0] == '-' || text[0] == '+');
    const std::string digits = text.substr(isSigned);
    const std::size_t longest = radix == 10 ? 9 : 8;
    const std::string all = std::string("0123456789abcdef").substr(0, static_cast<std::size_t>(radix));
    if (digits.empty() || digits.size() > longest || digits.find_first_not_of(all) != std::string::npos)
        return;
    const long expected = std::strtol(text.c_str(), nullptr, radix);
    const bool fits = !isSigned || (expected >= INT_MIN && expected <= INT_MAX);
    Require(result == (fits ? 0 : -1) && (!fits || value == static_cast<int>(expected)));
}

void CheckTrimming(const std::string& text) {
    std::string copy = text;
    const std::string trimmed = Tolk_TrimWhiteSpaces(copy.data());
    Require(text.find(trimmed) != std::string::npos);
    Require(trimmed.empty() || (Tolk_SkipWhiteSpaces(trimmed.c_str()) == trimmed.c_str()));
    Require(trimmed.empty() || !std::iscntrl(trimmed.back() & 0x7F) || trimmed.back() < 0);
    Require(trimmed.empty() || trimmed.back() != ' ');
    copy = trimmed;
    Require(trimmed == Tolk_TrimWhiteSpaces(copy.data()));
}

void CheckComparing(const std::string& a, const std::string& b) {
    const int order = Tolk_stricmp(a.c_str(), b.c_str());
    Require(order >= -1 && order <= 1 && order == -Tolk_stricmp(b.c_str(), a.c_str()));
    const int limited = Tolk_strnicmp(a.c_str(), b.c_str(), static_cast<int>(a.size() + b.size() + 1));
    Require((order == 0) == (limited == 0));
    Require(Tolk_strnicmp(a.c_str(), b.c_str(), 0) == 0);
    Require(order != 0 || a.size() == b.size());
    Require(Tolk_stricmp(a.c_str(), a.c_str()) == 0);
}

void CheckTags(const std::string& line, const std::string& tag) {
    const char* value = Tolk_ParseTagValuePair(line.c_str(), tag.c_str());
    int number = 4711;
    unsigned char truth = 2;
    const int numberResult = Tolk_ParseTagValuePairAsInteger(line.c_str(), tag.c_str(), &number);
    const int truthResult = Tolk_ParseTagValuePairAsBoolean(line.c_str(), tag.c_str(), &truth);
    if (value == nullptr) {
        Require(numberResult == -1 && number == 4711 && truthResult == -1 && truth == 2);
        return;
    }
    Require(value > line.c_str() && value <= line.c_str() + line.size());
    Require(std::memchr(line.c_str(), '=', static_cast<std::size_t>(value - line.c_str())) != nullptr);
    int again = 4711;
    Require(numberResult == Tolk_atoi(value, 10, &again) && number == again);
    Require(truthResult == 0 ? truth <= 1 : truth == 2);
}

void CheckBinary(const Bytes& bytes, int group) {
    const int bits = static_cast<int>(bytes.size()) * 8;
    std::vector<char> out(bytes.size() * 16 + 1, '\xEE');
    Require(Tolk_FormatAsBinary(bytes.data(), bits, group, out.data()) == out.data());
    Bytes back(bytes.size());
    int bit = bits;
    for (const char* c = out.data(); *c != '\0'; ++c) {
        if (*c == ' ') {
            Require(group != 0 && bit % group == 0);
            continue;
        }
        Require(*c == '0' || *c == '1');
        --bit;
        back[static_cast<std::size_t>(bit / 8)] |= static_cast<unsigned char>((*c - '0') << bit % 8);
    }
    Require(bit == 0 && back == bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool isSilent =
        std::freopen("/dev/null", "w", stdout) != nullptr;  // "error" is printed often
    Require(isSilent);
    const Bytes bytes(data, data + size);
    const std::string text = std::string(bytes.begin(), bytes.end()).c_str();
    const std::string half = text.substr(text.size() / 2);

    CheckBytesThroughHex(bytes);
    CheckHex(text);
    for (const int radix : {2, 10, 16}) CheckNumber(text, radix);
    CheckTrimming(text);
    CheckComparing(text.substr(0, text.size() / 2), half);
    CheckTags(text, "Key");
    CheckTags(text, text.substr(0, text.find_first_of(" =")));
    CheckBinary(bytes, size == 0 ? 0 : data[0] % 20);
    Require(Tolk_strnlen(text.c_str(), 5) == std::min<std::size_t>(text.size(), 5));
    return 0;
}
