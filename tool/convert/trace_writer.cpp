#include <fmt/format.h>

#include <algorithm>

#include "tool/call_line.h"
#include "tool/convert/call_writers.h"
#include "tool/convert/value_json.h"

namespace ckscribe {

namespace {

// Returns microseconds with three decimals. A double would lose the nanoseconds.
std::string Microseconds(std::int64_t nanoseconds) {
    const char* const sign = nanoseconds < 0 ? "-" : "";
    const std::uint64_t size = static_cast<std::uint64_t>(nanoseconds < 0 ? -nanoseconds : nanoseconds);
    return fmt::format("{}{}.{:03}", sign, size / 1000, size % 1000);
}

class TraceWriter : public CallWriter {
public:
    TraceWriter() { fmt::print("{{\"displayTimeUnit\":\"ns\",\"traceEvents\":["); }

    void OnCall(const Call& call) override {
        nlohmann::ordered_json arguments;
        arguments["in"] = ValuesText(call.In());
        if (call.hasEnd) {
            arguments["result"] = ResultText(call);
            arguments["out"] = ValuesText(call.Out());
        }
        const std::int64_t begin = InUtc(call.Time()).nanoseconds;
        fmt::print("{}\n{{\"name\":{},\"cat\":\"pkcs11\",\"ph\":\"{}\",\"ts\":{},", isFirst ? "" : ",",
                   LineOf(std::string(call.Function())), call.hasEnd ? 'X' : 'B', Microseconds(begin));
        if (call.hasEnd) {
            // A text log has only whole seconds.
            const std::int64_t told = call.hasStart ? call.end.nanoseconds - call.start.nanoseconds : 0;
            const auto duration = static_cast<std::int64_t>(
                call.nanoseconds.value_or(static_cast<std::uint64_t>(std::max<std::int64_t>(told, 0))));
            fmt::print("\"dur\":{},", Microseconds(duration));
        }
        fmt::print("\"pid\":{},\"tid\":{},\"args\":{}}}", call.process, call.thread.value_or(0),
                   LineOf(arguments));
        isFirst = false;
    }

    void Finish() override { fmt::print("\n]}}\n"); }

private:
    bool isFirst = true;
};

}  // namespace

std::unique_ptr<CallWriter> MakeTraceWriter() { return std::make_unique<TraceWriter>(); }

}  // namespace ckscribe
