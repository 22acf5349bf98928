// A RecordReader reads a record of the log back, of either format, piece by piece. The log itself may not say
// how long a text is or in which form bytes are written; the expected bytes say it then. The reader takes
// everything else from the record and then compares it. It prints the first thing that is not as expected,
// with the record, and ends the process.
#pragma once

#include <string>
#include <string_view>

#include "tests/fuzz/expected_records.h"

class RecordReader {
public:
    // `text` outlives the reader.
    RecordReader(std::string_view text, bool isNew) : whole(text), rest(text), isNew(isNew) {}

    void Read(const ExpectedRecord& record);
    void ReadEnd() { Require(rest.empty(), "something behind the records"); }

private:
    void ReadNewHead(const ExpectedRecord& record);
    void ReadOldHead(const ExpectedRecord& record);
    void ReadResult(CK_RV rv);
    void ReadChildren(const std::vector<ExpectedChild>& children, std::size_t indent);
    void ReadChild(const ExpectedChild& child, std::size_t indent);
    void ReadShape(const ExpectedChild& child, std::size_t indent);
    void ReadNumber(const ExpectedChild& child);
    void ReadBytes(const std::string& bytes);
    void ReadText(const std::string& bytes);
    std::string TakeBytes(const std::string& expected);

    // Each of these takes something off the front.
    void Take(std::string_view literal);
    void TakeNewLine(std::size_t indent);
    std::string_view TakeWhile(int (*isOfKind)(int));
    CK_ULONG TakeHex();
    CK_ULONG TakeDecimal();
    long TakeSigned();
    std::string TakeNumericText();
    std::string TakeRichText();

    void Require(bool holds, const std::string& what) const;

    std::string_view whole;
    std::string_view rest;
    bool isNew;
};
