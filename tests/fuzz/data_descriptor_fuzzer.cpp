// This fuzzer reads texts as byte values. The first byte of an input is the format, and the rest is the text.
// These properties hold:
// - the text stays as it was, and every format gives as many bytes as it can; plain text gives all of them;
// - numeric text is an error exactly when something else than pairs of hexadecimal digits stands in it;
// - a value that is written and read again is the same value, without an error.

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "descriptors/data_descriptor.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

std::string Data(const DataDescriptor& descriptor) {
    std::string data(descriptor.GetDataSize(), '\0');
    descriptor.GetData(data.data());
    return data;
}

std::string Written(const DataDescriptor& descriptor) {
    char* bytes = nullptr;
    std::size_t length = 0;
    std::FILE* stream = open_memstream(&bytes, &length);
    DescriptorReport report;
    descriptor.Write(stream, report);
    std::fclose(stream);
    const std::string text(bytes, length);
    std::free(bytes);
    return text;
}

bool IsPairsOfHexadecimalDigits(std::string_view text) {
    for (const char character : text) {
        if (!std::isxdigit(static_cast<unsigned char>(character))) return false;
    }
    return text.size() % 2 == 0;
}

void CheckReading(int format, const std::string& text, const std::string& data,
                  const DescriptorReport& report) {
    const bool isNumeric = format != DataDescriptor::kText && format != DataDescriptor::kRichText;
    if (format == DataDescriptor::kText) Require(data == text && !report.parsingError);
    if (format == DataDescriptor::kRichText) Require(data.size() <= text.size());
    if (isNumeric) Require(data.size() == (text.size() + 1) / 2);
    if (format == DataDescriptor::kNumeric) {
        Require((report.parsingError == 0) == IsPairsOfHexadecimalDigits(text));
    }
    if (isNumeric && format != DataDescriptor::kNumeric) Require(report.parsingError != 0);
    Require(report.memoryError == 0);
}

int FormatOfTag(std::string_view written) {
    const std::string_view tag = written.substr(0, 5);
    if (tag == "Num(\"") return DataDescriptor::kNumeric;
    if (tag == "Txt(\"") return DataDescriptor::kText;
    Require(tag == "RTF(\"");
    return DataDescriptor::kRichText;
}

void CheckThatItSurvivesWriting(const DataDescriptor& descriptor) {
    const std::string written = Written(descriptor);
    Require(written.size() >= 7 && written.ends_with("\")"));
    std::string text = written.substr(5, written.size() - 7);

    DataDescriptor again;
    DescriptorReport report;
    again.GetDataValueFromText(FormatOfTag(written), text.data(), static_cast<unsigned int>(text.size()),
                               report);
    Require(Data(again) == Data(descriptor));
    Require(!report.errorOccurred());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int format = data[0] - '0';
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);

    std::string given = text;
    DataDescriptor descriptor;
    DescriptorReport report;
    descriptor.GetDataValueFromText(format, given.data(), static_cast<unsigned int>(given.size()), report);
    Require(given == text);
    CheckReading(format, text, Data(descriptor), report);
    CheckThatItSurvivesWriting(descriptor);
    return 0;
}
