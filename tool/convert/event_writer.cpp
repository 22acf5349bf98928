#include <fmt/format.h>

#include <cstdio>
#include <ctime>

#include "tool/convert/call_writers.h"
#include "tool/convert/value_json.h"
#include "tool/report_json.h"

namespace ckscribe {

namespace {

using Json = nlohmann::ordered_json;

// Returns as much of a moment as the log says: no date where it has none, and no zone where the time is
// local.
std::string TimeAsTold(const Moment& moment) {
    std::string text = IsoTime(moment.nanoseconds);
    if (moment.scale == TimeScale::kUtc) return text;
    text.pop_back();
    return moment.scale == TimeScale::kLocal ? text : text.substr(text.find('T') + 1);
}

void PutLine(const std::string& line) { fmt::print("{}\n", line); }

Json EventOf(const Call& call, bool isStart) {
    Json event;
    event["event"] = isStart ? "start" : "end";
    // Both events have the time at which the call began.
    if (call.Time().IsThere()) event["time"] = TimeAsTold(call.Time());
    event["pid"] = call.process;
    if (call.thread) event["tid"] = *call.thread;
    event["function"] = std::string(call.Function());
    if (!isStart) {
        if (call.rv) event["rv"] = *call.rv;
        event["result"] = std::string(call.result);
    }
    const CallFields& fields = call.fields;
    if (fields.slot) event["slot"] = *fields.slot;
    if (fields.session) event["session"] = *fields.session;
    if (fields.object) event["object"] = *fields.object;
    if (fields.user) event["user"] = *fields.user;
    if (!fields.mechanism.empty()) event["mechanism"] = std::string(fields.mechanism);
    event["in"] = JsonOf(call.In());
    if (!isStart) event["out"] = JsonOf(call.Out());
    return event;
}

// Events stand in the order of the records, because only this order joins events without run and number
// again.
class EventWriter : public CallWriter {
public:
    void OnStart(const Call& call) override { Put(call, call.startRecord, true); }
    void OnCall(const Call& call) override {
        if (call.hasEnd) Put(call, call.endRecord, false);
    }

private:
    static void Put(const Call& call, std::string_view record, bool isStart) {
        // An event keeps its bytes.
        PutLine(call.format == LogFormat::kEvents ? std::string(record) : LineOf(EventOf(call, isStart)));
    }
};

}  // namespace

std::unique_ptr<CallWriter> MakeEventWriter() { return std::make_unique<EventWriter>(); }

}  // namespace ckscribe
