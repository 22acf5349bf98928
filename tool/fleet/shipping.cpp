#include "tool/fleet/shipping.h"

#include <fmt/format.h>

#include <algorithm>
#include <ctime>
#include <string_view>

#include "reader/call_reader.h"
#include "reader/log_family.h"
#include "reader/log_source.h"
#include "tool/exit_status.h"
#include "tool/fleet/row_sink.h"
#include "tool/harmless_text.h"
#include "tool/messages.h"

namespace ckscribe {

namespace {

// The first event of a file must begin within so many bytes.
constexpr std::size_t kHead = 64 << 10;
// So many bytes are inserted at once.
constexpr std::size_t kBatch = 16 << 20;
// No line is longer than so many bytes.
constexpr std::size_t kLongestLine = 256 << 20;
constexpr std::string_view kEventBegin = "{\"event\":";

// Reads until it has `size` bytes or the source ends.
std::string ReadUpTo(LogSource& source, std::size_t size) {
    std::string bytes(size, '\0');
    std::size_t count = 0;
    while (count < size) {
        const std::size_t more = source.Read(bytes.data() + count, size - count);
        if (more == 0) break;
        count += more;
    }
    bytes.resize(count);
    return bytes;
}

// A Head is the beginning of a file up to the end of its first event.
enum class HeadKind { kWhole, kNotYet, kNoEvent };
struct Head {
    HeadKind kind = HeadKind::kNotYet;
    std::string text;
};

Head HeadOf(LogSource& source) {
    std::string bytes = ReadUpTo(source, kHead);
    std::size_t begin = 0;
    while (begin < bytes.size()) {
        const std::size_t end = bytes.find('\n', begin);
        const bool isEvent = std::string_view(bytes).substr(begin).starts_with(kEventBegin);
        // If the line is longer than the head, its beginning identifies the file.
        if (isEvent && (end != bytes.npos || bytes.size() == kHead))
            return {HeadKind::kWhole, bytes.substr(0, end == bytes.npos ? end : end + 1)};
        if (end == bytes.npos) break;
        begin = end + 1;
    }
    const std::string_view rest = std::string_view(bytes).substr(begin);
    const bool maySoon =
        bytes.empty() || (!rest.empty() && (rest.starts_with(kEventBegin) || kEventBegin.starts_with(rest)));
    return {maySoon ? HeadKind::kNotYet : HeadKind::kNoEvent, {}};
}

class Shipping {
public:
    Shipping(const std::vector<std::string>& paths, const std::string& host, ShippingState& state,
             Engine& engine)
        : paths(paths), state(state), engine(engine), sink(host) {}

    int Ship() {
        for (const LogFamily& family : FamiliesOf(paths)) {
            positions = CallPositions();
            for (const std::uint32_t file : family) ShipFile(paths[file]);
        }
        state.ForgetUnused();
        state.Save();
        return status;
    }

private:
    void Complain(const std::string& path, std::string_view what) {
        Say(fmt::format("{}: {}.", Harmless(path), what));
        status = kNotWell;
    }

    void ShipFile(const std::string& path) {
        LogSource source;
        if (!source.Open(path)) return Complain(path, source.Error());
        const std::string stamp = source.Stamp();
        if (source.IsUnpacking() && state.IsDone(stamp)) return;
        const Head head = HeadOf(source);
        if (head.kind == HeadKind::kNoEvent) return RefuseFile(path, source);
        if (head.kind == HeadKind::kNotYet) {
            if (!source.Error().empty()) Complain(path, source.Error());
            return;
        }
        ShippedContent& known = state.ContentOf(FingerprintOf(head.text));
        ShippedContent anew;
        const Beginning begins = BeginningOf(source, known, stamp);
        if (begins == Beginning::kNowhere) {
            if (!source.Error().empty()) Complain(path, source.Error());
            return;
        }
        ShippedContent& content = begins == Beginning::kAnew ? anew : known;
        positions.StartBehind(content.position);
        sink.SetLog(LogNameOf(path));
        sink.SetPositions(positions);
        const std::uint64_t textBefore = sink.CallsOfText();
        const std::uint64_t unreadableBefore = sink.UnreadableLines();
        const bool isAllRead = ShipRest(path, source, head.text, content);
        positions.StartBehind(content.position);
        if (sink.CallsOfText() != textBefore) {
            SayTextLog(path);
            status = kNotWell;
        }
        if (const std::uint64_t lines = sink.UnreadableLines() - unreadableBefore; lines != 0)
            Say(fmt::format("{}: {} cannot be read and {} left out.", Harmless(path),
                            lines == 1 ? "1 line" : fmt::format("{} lines", lines),
                            lines == 1 ? "is" : "are"));
        if (!source.Error().empty()) return Complain(path, source.Error());
        if (isAllRead && (source.IsUnpacking() || begins == Beginning::kAnew)) state.SetDone(stamp);
    }

    // Refuses a file that does not begin with an event. It is a text log, or nothing that the library writes.
    // An empty file is neither.
    void RefuseFile(const std::string& path, LogSource& source) {
        source.Rewind();
        RowSink seen("");
        CallReader reader(seen);
        reader.Feed(ReadUpTo(source, kBatch));
        reader.Finish();
        if (seen.CallsOfText() == 0) return Complain(path, "it begins with no event of a call");
        SayTextLog(path);
        status = kNotWell;
    }

    // Goes to the place where reading begins.
    enum class Beginning { kWhereItWasLeft, kAnew, kNowhere };
    Beginning BeginningOf(LogSource& source, ShippedContent& content, const std::string& stamp) {
        if (!source.Rewind()) return Beginning::kNowhere;
        if (content.offset == 0) return Beginning::kWhereItWasLeft;
        const std::uint64_t size = std::min(content.offset, ShippingState::kTail);
        const bool isReached = source.Skip(content.offset - size);
        tail = isReached ? ReadUpTo(source, size) : "";
        if (tail.size() < size) return BeginningOfShorter(source, stamp);
        if (FingerprintOf(tail) == content.tail) return Beginning::kWhereItWasLeft;
        content.offset = 0;
        return source.Rewind() ? Beginning::kWhereItWasLeft : Beginning::kNowhere;
    }

    // A file that ends before the place where it was left may be an unfinished copy. If nobody writes it any
    // more, it is something else: a log that was cut and written on, perhaps. This run reads it once from its
    // beginning. The state keeps what it knows of the longer file.
    Beginning BeginningOfShorter(LogSource& source, const std::string& stamp) {
        constexpr std::int64_t kFinished = 60;
        if (!source.Error().empty() || std::time(nullptr) - source.WrittenAt() < kFinished ||
            state.IsDone(stamp) || !source.Rewind())
            return Beginning::kNowhere;
        return Beginning::kAnew;
    }

    // Returns whether it has read everything.
    bool ShipRest(const std::string& path, LogSource& source, const std::string& head,
                  ShippedContent& content) {
        if (content.offset == 0) tail.clear();
        std::string bytes;
        while (true) {
            const std::string more = ReadUpTo(source, kBatch);
            const bool isAtEnd = more.size() < kBatch;
            bytes += more;
            // A process may still be writing a line that has no end. A packed file does not grow.
            const bool isPackedEnd = isAtEnd && source.IsUnpacking() && source.Error().empty();
            const std::size_t whole = isPackedEnd ? bytes.size() : bytes.rfind('\n') + 1;
            if (whole == 0) {
                if (isAtEnd) return true;
                if (bytes.size() < kLongestLine) continue;
                Complain(path, "a line is longer than 256 MiB");
                return false;
            }
            // Somebody may have emptied the file after its head was read, and may have written more than it
            // held.
            if (!source.IsUnpacking() && !StillBeginsWith(source, head, content.offset + bytes.size()))
                return false;
            ShipLines(std::string_view(bytes).substr(0, whole), content);
            bytes.erase(0, whole);
            if (isAtEnd) return bytes.empty();
        }
    }

    static bool StillBeginsWith(LogSource& source, const std::string& head, std::uint64_t next) {
        return source.Rewind() && ReadUpTo(source, head.size()) == head && source.Skip(next - head.size());
    }

    void ShipLines(std::string_view lines, ShippedContent& content) {
        CallReader reader(sink);
        reader.Feed(lines);
        reader.Finish();
        for (const std::string_view insertion : sink.Insertions()) engine.Insert(engine.Table(), insertion);
        sink.DropRows();
        tail.append(lines.substr(lines.size() - std::min<std::size_t>(lines.size(), ShippingState::kTail)));
        if (tail.size() > ShippingState::kTail) tail.erase(0, tail.size() - ShippingState::kTail);
        content.offset += lines.size();
        content.tail = FingerprintOf(tail);
        content.position = sink.Positions().Last();
        state.Save();
    }

    const std::vector<std::string>& paths;
    ShippingState& state;
    Engine& engine;
    RowSink sink;
    CallPositions positions;
    std::string tail;  // the last bytes before content.offset
    int status = kWell;
};

}  // namespace

int ShipCalls(const std::vector<std::string>& paths, const std::string& host, ShippingState& state,
              Engine& engine) {
    return Shipping(paths, host, state, engine).Ship();
}

}  // namespace ckscribe
