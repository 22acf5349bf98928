#include "tests/fuzz/log_properties.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "reader/byte_buffer.h"
#include "reader/call_joiner.h"
#include "reader/call_reader.h"
#include "reader/event_line.h"
#include "reader/log_parser.h"

namespace {

using ckscribe::Call;
using ckscribe::FoundInText;
using ckscribe::LogParser;
using ckscribe::Record;

class Log {
public:
    explicit Log(std::string_view text) { bytes.Append(text); }

    // Returns the text. Readable bytes lie behind it.
    std::string_view Text() const { return bytes.View(); }

    void Require(bool holds, const char* what) const {
        if (holds) return;
        std::fprintf(stderr, "does not hold: %s\nof a log of %zu bytes:\n%.*s\n", what, bytes.Size(),
                     static_cast<int>(bytes.Size()), bytes.Data());
        std::abort();
    }

private:
    ckscribe::ByteBuffer bytes;
};

void Add(std::string& text, std::uint64_t number) { (text += ' ') += std::to_string(number); }
void Add(std::string& text, std::string_view part) { (text += ' ') += part; }
template <class Number>
void Add(std::string& text, const std::optional<Number>& number) {
    number ? Add(text, static_cast<std::uint64_t>(*number)) : Add(text, std::string_view("-"));
}
void Add(std::string& text, const ckscribe::Moment& moment) {
    Add(text, static_cast<std::uint64_t>(moment.nanoseconds));
    Add(text, static_cast<std::uint64_t>(moment.scale));
}
void Add(std::string& text, const ckscribe::CallFields& fields) {
    for (const auto& field :
         {fields.slot, fields.session, fields.object, fields.user, fields.mechanismNumber})
        Add(text, field);
    Add(text, fields.mechanism);
}

std::string Described(const Record& record) {
    std::string text = std::to_string(static_cast<int>(record.format));
    for (const bool is :
         {record.isStart, record.isFunctionCertain, record.hasThread, record.hasRv, record.hasNanoseconds})
        Add(text, std::uint64_t{is});
    Add(text, FunctionName(record.function));
    for (const std::uint64_t number :
         {std::uint64_t{record.process}, std::uint64_t{record.run}, static_cast<std::uint64_t>(record.thread),
          record.number, record.nanoseconds, record.rv, record.line, std::uint64_t{record.bodyOffset}})
        Add(text, number);
    Add(text, record.time);
    Add(text, record.result);
    Add(text, record.fields);
    Add(text, record.text);
    return text;
}

void AddStretch(std::string& text, const ckscribe::UnreadableStretch& stretch) {
    Add(text, std::string_view("\nunreadable"));
    Add(text, stretch.place.line);
    Add(text, stretch.lines);
    Add(text, stretch.beginning);
}

// A Description collects everything that is found as a text.
class Description : public ckscribe::CallSink {
public:
    void OnCall(const Call& call) override {
        ++calls;
        Add(text, std::string_view("\ncall"));
        Add(text, call.Function());
        Add(text, std::uint64_t{call.process});
        Add(text, call.thread);
        Add(text, call.run);
        Add(text, call.number);
        Add(text, call.start);
        Add(text, call.end);
        Add(text, call.nanoseconds);
        Add(text, call.rv);
        Add(text, call.result);
        Add(text, call.fields);
        Add(text, call.startPlace.line);
        Add(text, call.endPlace.line);
        Add(text, call.startRecord);
        Add(text, call.endRecord);
        Add(text, call.startText);
        Add(text, call.endText);
        Add(text, call.In().size());
        Add(text, call.Out().size());
    }
    // A stretch comes when it ends, which a reader may learn later than the calls behind it.
    void OnUnreadable(const ckscribe::UnreadableStretch& stretch) override { AddStretch(stretches, stretch); }

    int calls = 0;
    std::string text;
    std::string stretches;
};

void RequireEveryLine(const Log& log, const FoundInText& found) {
    const std::string_view text = log.Text();
    std::uint64_t lines = 0;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines += end != begin ? 1U : 0U;
        begin = end + 1;
    }
    std::uint64_t accounted = 0;
    for (const Record& record : found.records) {
        // Empty lines of a record are none of those above.
        for (std::size_t i = 0; i < record.text.size(); ++i)
            accounted += i == 0 || (record.text[i - 1] == '\n' && record.text[i] != '\n') ? 1U : 0U;
    }
    for (const ckscribe::UnreadableStretch& stretch : found.stretches) accounted += stretch.lines;
    log.Require(accounted == lines, "each line is read or counted");
}

// The plain way may also read an event whose arguments or results are damaged: they are absent then.
bool IsDamagedEvent(const Record& record) {
    return record.format == ckscribe::LogFormat::kEvents &&
           ckscribe::ChildrenOfEvent(record.text, "in").empty() &&
           ckscribe::ChildrenOfEvent(record.text, "out").empty();
}

void RequirePlainIsThorough(const Log& log) {
    FoundInText plain;
    FoundInText thorough;
    for (const LogParser::Rest rest : {LogParser::Rest::kIsThere, LogParser::Rest::kComes}) {
        const std::size_t donePlain = LogParser(true).Parse(log.Text(), rest, plain);
        const std::size_t doneThorough = LogParser(false).Parse(log.Text(), rest, thorough);
        log.Require(donePlain == doneThorough && plain.lines == thorough.lines, "both ways get equally far");
        std::size_t same = 0;
        for (const Record& record : plain.records) {
            const bool isSame =
                same < thorough.records.size() && Described(record) == Described(thorough.records[same]);
            log.Require(isSame || IsDamagedEvent(record), "both ways find the same");
            same += isSame ? 1U : 0U;
        }
        log.Require(same == thorough.records.size(), "the plain way finds all that the thorough one finds");
        if (plain.records.size() == same)
            log.Require(plain.stretches.size() == thorough.stretches.size(), "both find as much unreadable");
        if (rest == LogParser::Rest::kIsThere) RequireEveryLine(log, plain);
    }
}

void Read(std::string_view text, std::size_t piece, Description& found) {
    ckscribe::CallReader reader(found);
    for (std::size_t i = 0; i < text.size(); i += piece) reader.Feed(text.substr(i, piece));
    reader.Finish();
}

// Reads each side of a cut by itself, as two threads do.
void ReadCut(const Log& log, Description& found) {
    const std::size_t cut = ckscribe::LastRecordBegin(log.Text());
    const Log before(log.Text().substr(0, cut));
    const Log behind(log.Text().substr(cut));
    ckscribe::LogOrder order;
    ckscribe::CallJoiner joiner;
    const auto onStretch = [&](const ckscribe::UnreadableStretch& stretch) { found.OnUnreadable(stretch); };
    const auto onRecord = [&](const Record& record) { joiner.Take(record, 0, found); };
    FoundInText part;
    const std::size_t done = LogParser().Parse(before.Text(), LogParser::Rest::kComes, part);
    order.Take(part, onStretch, onRecord);
    joiner.KeepTexts();
    // The rest that the first side leaves belongs to the second.
    const Log rest(log.Text().substr(done));
    LogParser().Parse(done == cut ? behind.Text() : rest.Text(), LogParser::Rest::kIsThere, part);
    order.Take(part, onStretch, onRecord);
    order.EndFile(onStretch);
    joiner.Finish(found);
}

}  // namespace

void RequireLogProperties(std::string_view text) {
    const Log log(text);
    RequirePlainIsThorough(log);
    Description whole;
    Read(text, std::max<std::size_t>(text.size(), 1), whole);
    Description pieces;
    Read(text, 1 + text.size() % 61, pieces);
    log.Require(pieces.text == whole.text && pieces.stretches == whole.stretches,
                "pieces give the same as the whole");
    Description cut;
    ReadCut(log, cut);
    log.Require(cut.text == whole.text && cut.stretches == whole.stretches,
                "both sides of a cut give the same as the whole");
}
