#include "reader/call_reader.h"

namespace ckscribe {

void CallReader::Feed(std::string_view bytes) {
    // The reader parses pieces of 1 MiB: memory stays small however much the caller feeds.
    constexpr std::size_t kPiece = 1 << 20;
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, kPiece);
        bytes.remove_prefix(piece.size());
        text.Add(piece);
        // A record is complete only with a line end.
        if (piece.find('\n') != piece.npos) Parse(LogParser::Rest::kComes);
    }
}

void CallReader::Settle() { Parse(LogParser::Rest::kMayCome); }

void CallReader::Parse(LogParser::Rest rest) {
    const std::size_t done = parser.Parse(text.View(), rest, found);
    Give();
    text.Drop(done);
}

void CallReader::EndFile() {
    text.End();
    const std::size_t done = parser.Parse(text.View(), LogParser::Rest::kIsThere, found);
    Give();
    text.Drop(done);
    order.EndFile([this](UnreadableStretch& stretch) { GiveStretch(stretch); });
    ++file;
}

void CallReader::Finish() {
    EndFile();
    joiner.Finish(sink);
}

void CallReader::Give() {
    order.Take(
        found, [this](UnreadableStretch& stretch) { GiveStretch(stretch); },
        [this](const Record& record) { joiner.Take(record, file, sink); });
    joiner.KeepTexts();
}

void CallReader::GiveStretch(UnreadableStretch& stretch) {
    stretch.place.file = file;
    sink.OnUnreadable(stretch);
}

}  // namespace ckscribe
