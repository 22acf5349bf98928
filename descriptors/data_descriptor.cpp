#include "descriptors/data_descriptor.h"

#include <cstdlib>
#include <cstring>
#include <optional>

#include "descriptors/byte_kinds.h"
#include "descriptors/numeric_text.h"
#include "descriptors/rich_text.h"
#include "util/tolk_text.h"

namespace {

constexpr unsigned long kGrowth = 8;

constexpr unsigned long RoundedUpToGrowth(unsigned long length) {
    return (length + kGrowth - 1) / kGrowth * kGrowth;
}

// Returns the value of a hexadecimal digit. Any other character sets the parsing error and counts as 0.
int HexToInt(char digit, DescriptorReport& report) {
    const int value = Tolk_atox(digit);
    if (value >= 0) return value;
    report.parsingError = 1;
    return 0;
}

}  // namespace

DataDescriptor::~DataDescriptor() { Reset(); }

void DataDescriptor::Reset() {
    std::free(bytes);
    bytes = nullptr;
    size = 0;
}

void DataDescriptor::UseData(void* data, unsigned short length, DescriptorReport& report) {
    Reset();
    if (data == nullptr || length == 0) return;
    bytes = static_cast<char*>(std::malloc(RoundedUpToGrowth(length)));
    if (bytes == nullptr) {
        report.memoryError = 1;
        return;
    }
    std::memcpy(bytes, data, length);
    size = length;
}

bool DataDescriptor::AddDataByte(char byte, DescriptorReport& report) {
    if (size % kGrowth == 0) {
        void* grown = std::realloc(bytes, size + kGrowth);
        if (grown == nullptr) {
            report.memoryError = 1;
            report.parsingError = 1;
            return false;
        }
        bytes = static_cast<char*>(grown);
    }
    bytes[size++] = byte;
    return true;
}

void DataDescriptor::GetDataValueFromText(int format, char* text, unsigned int length,
                                          DescriptorReport& report) {
    Reset();
    const std::string_view view = text == nullptr ? std::string_view() : std::string_view(text, length);
    switch (format) {
        case kText:
            return ReadText(view, report);
        case kRichText:
            return ReadRichText(view, report);
        case kNumeric:
            return ReadNumericText(view, report);
        default:
            report.parsingError = 1;
            return ReadNumericText(view, report);
    }
}

void DataDescriptor::ReadText(std::string_view text, DescriptorReport& report) {
    for (const char byte : text) {
        if (!AddDataByte(byte, report)) return;
    }
}

void DataDescriptor::ReadRichText(std::string_view text, DescriptorReport& report) {
    while (!text.empty()) {
        const std::optional<char> byte = ckscribe::TakeRichTextByte(text);
        if (!byte) {
            report.parsingError = 1;
        } else if (!AddDataByte(*byte, report)) {
            return;
        }
    }
}

void DataDescriptor::ReadNumericText(std::string_view text, DescriptorReport& report) {
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const char highDigit = text[i];
        const char lowDigit = i + 1 < text.size() ? text[i + 1] : '\0';
        const int byte = HexToInt(highDigit, report) * 16 + HexToInt(lowDigit, report);
        if (!AddDataByte(static_cast<char>(byte), report)) return;
    }
}

void DataDescriptor::Write(std::FILE* stream, DescriptorReport& report) const {
    WriteDataValue(stream, report);
}

void DataDescriptor::WriteDataValue(std::FILE* stream, DescriptorReport&) const {
    switch (FormatFromBytes()) {
        case kText:
            std::fputs("Txt(\"", stream);
            if (size > 0) std::fwrite(bytes, 1, size, stream);
            break;
        case kRichText:
            std::fputs("RTF(\"", stream);
            ckscribe::WriteRichText(stream, Bytes());
            break;
        case kNumeric:
            std::fputs("Num(\"", stream);
            ckscribe::WriteNumericText(stream, Bytes());
            break;
    }
    std::fputs("\")", stream);
}

DataDescriptor::Format DataDescriptor::FormatFromBytes() const {
    const ckscribe::ByteKinds kinds = ckscribe::KindsOf(bytes, size);
    if (!kinds.isText) return kNumeric;
    if (kinds.controls == 0) return kText;
    const unsigned long printable = size - kinds.controls;
    return kinds.controls * 5 < printable ? kRichText : kNumeric;
}

void DataDescriptor::GetData(char* buffer) const {
    if (size > 0) std::memcpy(buffer, bytes, size);
}
