// A byte value in its tagged text form, which a person can read and edit: Txt("abc"), RTF("ab\a") or
// Num("00ff"). Writes a value in that form and reads back what stands between the quotes.
//
// The descriptor owns a copy of its bytes. It has no lock: one thread at a time.

#pragma once

#include <cstdio>
#include <string_view>

#include "descriptors/descriptor_report.h"

class DataDescriptor {
public:
    // The forms of GetDataValueFromText.
    enum Format { kNumeric = 0, kText = 1, kRichText = 2 };

    DataDescriptor() = default;
    ~DataDescriptor();
    DataDescriptor(const DataDescriptor&) = delete;
    DataDescriptor& operator=(const DataDescriptor&) = delete;

    // Replaces the value by a copy of `length` bytes; a null `data` gives an empty value. Without memory the
    // value is empty and the report's memory error is set.
    void UseData(void* data, unsigned short length, DescriptorReport& report);

    // Appends one byte. Without memory the value stays as it was, the report's memory error and parsing error
    // are set and the result is false.
    bool AddDataByte(char byte, DescriptorReport& report);

    // Replaces the value by the one that `length` characters of `text` stand for (a null `text` gives an
    // empty value). `format` is one of Format; any other sets the report's parsing error and reads as
    // kNumeric. Undoes what Write does, doubled quotes included. What cannot be understood sets the parsing
    // error and the reading goes on: a character that is no hexadecimal digit counts as 0, and so does the
    // missing half of a last odd digit; an unknown or unfinished escape gives no byte. Without memory the
    // reading ends at the bytes that it has, with the flags of AddDataByte.
    void GetDataValueFromText(int format, char* text, unsigned int length, DescriptorReport& report);

    // Writes the value with tag, parentheses and quotes, without flushing. Sets nothing in the report.
    void Write(std::FILE* stream, DescriptorReport& report) const;
    void WriteDataValue(std::FILE* stream, DescriptorReport& report) const;

    // Copies the value to `buffer`, which has room for GetDataSize() bytes; adds no terminator.
    void GetData(char* buffer) const;
    unsigned long GetDataSize() const { return size; }

    // Frees the value and makes it empty.
    void Reset();

private:
    std::string_view Bytes() const { return {bytes, size}; }
    Format FormatFromBytes() const;
    void ReadNumericText(std::string_view text, DescriptorReport& report);
    void ReadText(std::string_view text, DescriptorReport& report);
    void ReadRichText(std::string_view text, DescriptorReport& report);

    unsigned long size = 0;
    char* bytes = nullptr;  // has room for size rounded up to a multiple of kGrowth
};
