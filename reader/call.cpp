#include "reader/call.h"

#include <utility>

#include "reader/event_line.h"
#include "reader/record_children.h"

namespace ckscribe {

namespace {

std::vector<Value> ChildrenOfText(std::string_view text, const Call& call, bool isStart) {
    ChildrenReader reader;
    const ChildrenFormat format{call.format == LogFormat::kNewText, isStart};
    if (reader.Read(text, call.function, format, true).outcome != ChildrenOutcome::kRead &&
        reader.ReadAnything(text, format, true).outcome != ChildrenOutcome::kRead)
        return {};
    return ValuesOf(reader.Tokens());
}

}  // namespace

std::vector<Value> Call::In() const {
    if (format == LogFormat::kEvents) return ChildrenOfEvent(hasEnd ? endText : startText, "in");
    return hasStart ? ChildrenOfText(startText, *this, true) : std::vector<Value>();
}

std::vector<Value> Call::Out() const {
    if (!hasEnd) return {};
    if (format == LogFormat::kEvents) return ChildrenOfEvent(endText, "out");
    return ChildrenOfText(endText, *this, false);
}

KeptCall::KeptCall(const Call& source) : call(source) { Keep(); }

KeptCall& KeptCall::operator=(const KeptCall& other) {
    if (this == &other) return *this;
    call = other.call;
    Keep();
    return *this;
}

void KeptCall::Keep() {
    const auto offset = [](std::string_view record, std::string_view text) {
        return record.size() - text.size();
    };
    const std::size_t startOffset = offset(call.startRecord, call.startText);
    const std::size_t endOffset = offset(call.endRecord, call.endText);
    startRecord = call.startRecord;
    endRecord = call.endRecord;
    run = call.run;
    mechanism = call.fields.mechanism;
    call.startRecord = startRecord;
    call.endRecord = endRecord;
    call.startText = call.startRecord.substr(startOffset);
    call.endText = call.endRecord.substr(endOffset);
    call.run = run;
    call.fields.mechanism = mechanism;
}

}  // namespace ckscribe
