#include "tool/fleet/row_writer.h"

namespace ckscribe {

RowWriter::RowWriter(const std::vector<std::string>& paths, std::string host, std::size_t pieceSize,
                     Output output)
    : paths(paths), pieceSize(pieceSize), output(std::move(output)), sink(std::move(host)) {}

void RowWriter::OnLogBegin(const std::vector<std::uint32_t>& files) {
    file = files.front();
    textBefore = sink.CallsOfText();
    sink.SetLog(LogNameOf(paths[file]));
    sink.SetPositions(CallPositions());
}

void RowWriter::OnCall(const Call& call) {
    sink.OnCall(call);
    if (sink.Rows().size() >= pieceSize) Finish();
}

void RowWriter::OnLogEnd(std::optional<std::int64_t>) {
    if (sink.CallsOfText() == textBefore) return;
    SayTextLog(paths[file]);
    hasLeftOut = true;
}

void RowWriter::Finish() {
    for (const std::string_view insertion : sink.Insertions()) output(insertion);
    sink.DropRows();
}

}  // namespace ckscribe
