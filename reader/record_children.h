// Reads the children of a text record, which stand between its braces. The format does not escape bytes that
// are a text, therefore a record can often be read in several ways. The list of children of the record's
// function decides.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "reader/child_lists.h"
#include "reader/recorded_functions.h"
#include "reader/value.h"

namespace ckscribe {

// In the text of a record, `kElisionMark number kElisionMark` stands for so many bytes that LogText left out
// of a very long line.
inline constexpr char kElisionMark = '\x01';

struct ChildrenFormat {
    bool isNew = true;
    bool isStart = true;
};

// A ChildToken is one child as it stands in the text. The children of a group follow it with a greater depth.
struct ChildToken {
    std::uint8_t kind = 0;  // index of kChildKinds
    std::uint8_t depth = 0;
    bool isCut = false;  // the text has room for the low 32 bits only
    // `form` is the form of bytes: N(umeric), S(imple), R(ich), T if they stand as they are, ? if the text
    // does not say.
    char form = '?';
    std::string_view name;  // label
    std::string_view type;  // name of a mechanism or an attribute
    std::string_view text;  // bytes as written, without quotes
    std::uint64_t number = 0;
};

enum class ChildrenOutcome { kRead, kUnreadable, kNeedsMore };

struct ChildrenEnd {
    ChildrenOutcome outcome = ChildrenOutcome::kUnreadable;
    std::size_t end = 0;  // behind the closing brace
};

// One thread at a time may use a reader. It keeps its memory from record to record.
class ChildrenReader {
public:
    // Reads from the opening brace on (in the old format from the line end in front of it). A record ends
    // with the line of its closing brace; with `isAllThere` it may also end with `text`. Returns kNeedsMore
    // if it cannot read the record yet but more text might help.
    ChildrenEnd Read(std::string_view text, FunctionIndex function, ChildrenFormat format, bool isAllThere);

    // Does the same for a record whose children are in no list.
    ChildrenEnd ReadAnything(std::string_view text, ChildrenFormat format, bool isAllThere);

    // Returns the children of the record that was read last.
    const std::vector<ChildToken>& Tokens() const { return tokens; }

private:
    struct Level {
        const ChildElement* elements = nullptr;
        std::uint32_t count = 0;
        std::uint32_t next = 0;
    };
    struct State {
        Level levels[4];
        unsigned depth = 0;
        std::size_t position = 0;
    };
    // A Choice is a place with another way to read: the bytes may end at a later quote, or the child may be
    // absent.
    struct Choice {
        State state;
        std::size_t tokenCount = 0;
        std::size_t searchFrom = 0;  // 0: the child is left out
    };

    ChildrenEnd Run(const ChildElement* elements, std::size_t count);
    bool Step(std::size_t searchFrom);
    bool ReadElement(const ChildElement& element, std::size_t searchFrom);
    bool ReadBytes(ChildToken& token, std::string_view closing, std::size_t searchFrom);
    bool ReadAttribute(const ChildElement& element, std::size_t searchFrom);
    bool ReadAny(std::size_t searchFrom);
    bool Open(const ChildElement* elements, std::size_t count);
    bool Take(std::string_view literal);
    bool TakeLine(unsigned indent);
    bool TakeNumber(std::uint64_t& number, bool& isHex);
    bool TakeSigned32(std::uint64_t& number);
    bool Finish(ChildToken& token);

    std::string_view text;
    ChildrenFormat format;
    bool isAllThere = false;
    // `ranOut` is true if more text might help.
    bool ranOut = false;
    // The search for another end of the bytes that were read last begins at `laterEnd`, which is 0 when there
    // were no bytes.
    std::size_t laterEnd = 0;
    std::size_t budget = 0;
    State state;
    std::vector<Choice> choices;
    std::vector<ChildToken> tokens;
};

// Returns the values of tokens, those of a group as its children.
std::vector<Value> ValuesOf(const std::vector<ChildToken>& tokens);

FieldKind FieldOf(const ChildToken& token);

}  // namespace ckscribe
