// A DataDescriptor holds a byte value and writes it in a tagged text form that people can read and edit:
// Txt("abc"), RTF("ab\a") or Num("00ff"). It also reads back the text between the quotes.
//
// The descriptor owns a copy of its bytes. It has no lock: one thread at a time uses it.

#pragma once

#include <cstdio>
#include <string_view>

#include "descriptors/descriptor_report.h"

class DataDescriptor {
public:
    // These are the forms that GetDataValueFromText reads.
    enum Format { kNumeric = 0, kText = 1, kRichText = 2 };

    DataDescriptor() = default;
    ~DataDescriptor();
    DataDescriptor(const DataDescriptor&) = delete;
    DataDescriptor& operator=(const DataDescriptor&) = delete;

    // Replaces the value by a copy of `length` bytes. A null `data` gives an empty value. If there is no
    // memory, the value becomes empty and the memory error of the report is set.
    void UseData(void* data, unsigned short length, DescriptorReport& report);

    // Appends one byte. If there is no memory, the value does not change, the memory error and the parsing
    // error of the report are set, and the result is false.
    bool AddDataByte(char byte, DescriptorReport& report);

    // Replaces the value by the one that `length` characters of `text` stand for. A null `text` gives an
    // empty value. `format` is one of Format; any other number sets the parsing error of the report and is
    // read as kNumeric. This function undoes what Write does, doubled quotes included. A text that cannot be
    // understood sets the parsing error, and the reading goes on. A character that is not a hexadecimal digit
    // counts as 0, and so does the missing half of a last odd digit. An unknown or unfinished escape gives no
    // byte. If there is no memory, the reading ends with the bytes read so far and with the flags that
    // AddDataByte sets.
    void GetDataValueFromText(int format, char* text, unsigned int length, DescriptorReport& report);

    // Writes the value with tag, parentheses and quotes. Does not flush and does not change the report.
    void Write(std::FILE* stream, DescriptorReport& report) const;
    void WriteDataValue(std::FILE* stream, DescriptorReport& report) const;

    // Copies the value to `buffer`, which has room for GetDataSize() bytes. Adds no terminator.
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
