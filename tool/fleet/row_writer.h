// Writes calls as rows of the table `calls` to any output.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tool/convert/call_writers.h"
#include "tool/fleet/row_sink.h"

namespace ckscribe {

class RowWriter : public CallWriter {
public:
    using Output = std::function<void(std::string_view rows)>;

    // `paths` are those of ReadLogs; they outlive the writer. `output` gets about `pieceSize` bytes at a
    // time.
    RowWriter(const std::vector<std::string>& paths, std::string host, std::size_t pieceSize, Output output);

    void OnLogBegin(const std::vector<std::uint32_t>& files) override;
    void OnCall(const Call& call) override;
    void OnLogEnd(std::optional<std::int64_t> firstDay) override;
    void Finish() override;

    // Returns whether a log held records of a text log; the writer has said so then.
    bool HasLeftOut() const { return hasLeftOut; }

private:
    const std::vector<std::string>& paths;
    const std::size_t pieceSize;
    const Output output;
    RowSink sink;
    std::uint32_t file = 0;  // of the log that is read
    std::uint64_t textBefore = 0;
    bool hasLeftOut = false;
};

}  // namespace ckscribe
