#include "reader/call_reader.h"

namespace ckscribe {

void CallReader::Feed(std::string_view bytes) {
    // In pieces, so that memory stays small whatever is fed.
    constexpr std::size_t kPiece = 1 << 20;
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, kPiece);
        bytes.remove_prefix(piece.size());
        text.Add(piece);
        // Only a line's end completes a record.
        if (piece.find('\n') != piece.npos || text.IsTooLong()) Parse(LogParser::Rest::kComes);
    }
}

void CallReader::Settle() { Parse(LogParser::Rest::kMayCome); }

void CallReader::Parse(LogParser::Rest rest) {
    const std::size_t done =
        parser.Parse(text.View(), text.IsTooLong() ? LogParser::Rest::kIsTooLong : rest, found);
    Give();
    text.Drop(done);
}

void CallReader::EndFile() {
    text.End();
    const std::size_t done = parser.Parse(text.View(), LogParser::Rest::kIsThere, found);
    parser.EndFile(found);
    Give();
    text.Drop(done);
    ++file;
}

void CallReader::Finish() {
    EndFile();
    joiner.Finish(sink);
}

void CallReader::Give() {
    for (UnreadableStretch& stretch : found.stretches) {
        stretch.place.file = file;
        sink.OnUnreadable(stretch);
    }
    for (const Record& record : found.records) joiner.Take(record, file, sink);
    found.stretches.clear();
    found.records.clear();
}

}  // namespace ckscribe
