// Takes calls and makes rows of those that came from events. Text logs have no run, therefore a repeat of
// their calls cannot be recognised: they are counted and left out.
//
// One thread at a time may use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "reader/call.h"
#include "tool/fleet/call_row.h"

namespace ckscribe {

class RowSink : public CallSink {
public:
    explicit RowSink(std::string host) : host(std::move(host)) {}

    // Says that the following calls belong to this log of the host.
    void SetLog(std::string name) { log = std::move(name); }
    void SetPositions(CallPositions next) { positions = next; }

    void OnCall(const Call& call) override;
    void OnUnreadable(const UnreadableStretch& stretch) override { unreadableLines += stretch.lines; }

    const std::string& Rows() const { return rows; }
    // Returns the rows, split into insertions that an engine takes: none has more than 100 days (partitions).
    std::vector<std::string_view> Insertions() const;
    void DropRows();
    const CallPositions& Positions() const { return positions; }
    std::uint64_t CallsOfText() const { return callsOfText; }
    std::uint64_t UnreadableLines() const { return unreadableLines; }

private:
    const std::string host;
    std::string log;
    std::string rows;
    std::vector<std::size_t> insertions;  // where in `rows` each but the first begins
    std::set<std::int64_t> days;          // of the last one
    CallPositions positions;
    std::uint64_t callsOfText = 0;
    std::uint64_t unreadableLines = 0;
};

// Returns the name of a file's log on its host: its whole path without what rotation and compression add. It
// replaces bytes that are no UTF-8, because the answers of an engine are JSON.
std::string LogNameOf(const std::string& path);

// Says that a file is a text log, or holds one, and what to do about it.
void SayTextLog(const std::string& path);

}  // namespace ckscribe
