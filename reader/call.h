// A Call is one call of a PKCS#11 function. It is put together from the records that a log has of the call:
// the start, the end, or both.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reader/moment.h"
#include "reader/recorded_functions.h"
#include "reader/value.h"

namespace ckscribe {

enum class LogFormat : std::uint8_t { kNewText, kOldText, kEvents };

// A Place says where a record begins. `file` counts from 0 the files that a reader was given. `line` counts
// from 1; 0 is no place.
struct Place {
    std::uint32_t file = 0;
    std::uint64_t line = 0;
};

// People most often select calls by these values. Each is the first input of its kind, or else the first
// output.
struct CallFields {
    std::optional<std::uint64_t> slot;
    std::optional<std::uint64_t> session;
    std::optional<std::uint64_t> object;
    std::optional<std::uint64_t> user;
    std::string_view mechanism;                    // empty when the call has none
    std::optional<std::uint64_t> mechanismNumber;  // events only
};

// Views are valid until CallSink::OnCall returns. KeptCall keeps a call longer.
struct Call {
    FunctionIndex function{};
    LogFormat format = LogFormat::kEvents;
    bool hasStart = false;
    bool hasEnd = false;

    std::uint32_t process = 0;
    std::optional<std::int64_t> thread;  // absent in the old format
    // For events, `run` names the load of the library that made the call, and `number` is the call's number
    // in its run, from 1. Otherwise they are empty and 0.
    std::string_view run;
    std::uint64_t number = 0;

    Moment start;
    Moment end;
    // `nanoseconds` is how long the target took. Only calls from events that ended have it.
    std::optional<std::uint64_t> nanoseconds;

    // `rv` is the result's number, once the call has ended. It is absent where a text log names a result that
    // this library does not know.
    std::optional<std::uint64_t> rv;
    std::string_view result;  // "CKR_OK"; "CKR_UNKNOWN" for a number without a name

    CallFields fields;

    Place startPlace;
    Place endPlace;

    // The two records hold what stands in the log. The two texts are the parts that children are read from:
    // the part from the brace on of a text record, the whole line of an event.
    std::string_view startRecord;
    std::string_view endRecord;
    std::string_view startText;
    std::string_view endText;

    std::string_view Function() const { return FunctionName(function); }
    bool IsUnfinished() const { return !hasEnd; }
    bool IsOk() const { return result.size() == 6 && std::memcmp(result.data(), "CKR_OK", 6) == 0; }
    bool IsError() const { return hasEnd && !IsOk(); }
    Moment Time() const { return start.IsThere() ? start : end; }
    Place FirstPlace() const { return hasStart ? startPlace : endPlace; }

    // Return the inputs and the outputs in the order of the records. Each call reads them from the text
    // again.
    std::vector<Value> In() const;
    std::vector<Value> Out() const;
};

// A KeptCall is a call with the memory that its views need.
class KeptCall {
public:
    KeptCall() = default;
    explicit KeptCall(const Call& call);
    KeptCall(const KeptCall& other) : KeptCall(other.call) {}
    KeptCall& operator=(const KeptCall& other);

    const Call& Get() const { return call; }

private:
    void Keep();

    Call call;
    std::string startRecord;
    std::string endRecord;
    std::string run;
    std::string mechanism;
};

// An UnreadableStretch stands for successive lines of a log that hold no readable record.
struct UnreadableStretch {
    Place place;
    std::uint64_t lines = 0;
    std::string beginning;  // of its first line, at most 200 bytes
};

// Takes what a reader finds, in the order of the log. The reader gives a call when it reads the call's end,
// and the calls without an end when the log is finished.
class CallSink {
public:
    virtual ~CallSink() = default;
    // OnStart takes a call that has begun and of which only the start is known. OnCall follows for the same
    // call.
    virtual void OnStart(const Call& /*call*/) {}
    virtual void OnCall(const Call& call) = 0;
    virtual void OnUnreadable(const UnreadableStretch&) {}
};

}  // namespace ckscribe
