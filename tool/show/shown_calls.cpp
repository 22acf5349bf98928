#include "tool/show/shown_calls.h"

#include <cstdio>

namespace ckscribe {

namespace {

void Put(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

// Prints a record as it stands in a log. In the new format an empty line stands before a start.
void PutRecord(std::string_view record, LogFormat format, bool isStart) {
    if (record.empty()) return;
    if (format == LogFormat::kNewText && isStart) Put("\n");
    Put(record);
    Put("\n");
}

}  // namespace

void ShownCalls::Flush() { std::fflush(stdout); }

void ShownCalls::Print(const Call& call) const {
    if (style.isRecords) {
        PutRecord(call.startRecord, call.format, true);
        PutRecord(call.endRecord, call.format, false);
        return;
    }
    Put(CallLine(call, style.line));
    Put("\n");
}

void ShownCalls::OnCall(const Call& call) {
    const bool isSelected = filter.Matches(call);
    if (style.context == 0) {
        if (isSelected) Print(call);
        return;
    }
    Around& around = threads[{call.process, call.thread.value_or(0)}];
    if (isSelected) {
        for (const KeptCall& before : around.before) Print(before.Get());
        around.before.clear();
        around.after = style.context;
        Print(call);
    } else if (around.after != 0) {
        --around.after;
        Print(call);
    } else {
        if (around.before.size() == style.context) around.before.pop_front();
        around.before.emplace_back(call);
    }
}

void ShownCalls::ShowOpen(const Call& call) {
    if (filter.Matches(call)) Print(call);
}

}  // namespace ckscribe
