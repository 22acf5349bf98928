#include "descriptors/call_event.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <string_view>

#include "descriptors/command_descriptor.h"
#include "descriptors/event_environment.h"
#include "descriptors/events_file.h"
#include "descriptors/kept_inputs.h"
#include "descriptors/record_environment.h"
#include "functions/full_names.h"
#include "util/cache_line.h"
#include "util/hex_digits.h"
#include "util/json_writer.h"

namespace ckscribe {

alignas(ckscribe::kCacheLine) CallEvent* currentCallEvent = nullptr;

namespace {

constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;

std::uint64_t Nanoseconds(const timespec& time) {
    return static_cast<std::uint64_t>(time.tv_sec) * kNanosecondsPerSecond +
           static_cast<std::uint64_t>(time.tv_nsec);
}

// The run names the events of this process. The count says how many of its calls have left an event.
EventRun currentRun = {0, 0};
std::uint64_t countOfCalls = 0;

void Number(CallEvent& event) {
    if (event.number != 0) return;
    if (currentRun.began == 0) {
        currentRun = {Nanoseconds(eventEnvironment.wallClock()),
                      static_cast<unsigned>(recordEnvironment.processId())};
    }
    event.run = currentRun;
    event.number = ++countOfCalls;
}

// This text, "2026-11-21T12:33:45" for example, is computed once a second.
struct {
    std::time_t second = -1;
    char text[sizeof "2026-11-21T12:33:45"] = "1970-01-01T00:00:00";
} rememberedSecond;

std::string_view TextOfSecond(std::time_t second) {
    if (second != rememberedSecond.second) {
        std::tm utc{};
        gmtime_r(&second, &utc);
        char text[sizeof rememberedSecond.text];
        if (std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S", &utc) == sizeof text - 1) {
            std::memcpy(rememberedSecond.text, text, sizeof text);
            rememberedSecond.second = second;
        }
    }
    return {rememberedSecond.text, sizeof rememberedSecond.text - 1};
}

void WriteTime(JsonWriter& json, const timespec& time) {
    constexpr std::size_t kDigits = 9;
    const std::string_view second = TextOfSecond(time.tv_sec);
    char text[sizeof rememberedSecond.text + kDigits + 1];
    char* const point = std::copy(second.begin(), second.end(), text);
    *point = '.';
    long rest = time.tv_nsec;
    for (std::size_t i = kDigits; i > 0; --i, rest /= 10) point[i] = static_cast<char>('0' + rest % 10);
    point[kDigits + 1] = 'Z';
    json.Key("time");
    json.Constant({text, sizeof text});
}

void WriteRun(JsonWriter& json, const EventRun& run) {
    unsigned char bytes[sizeof run.began];
    for (std::size_t i = 0; i < sizeof bytes; ++i)
        bytes[i] = static_cast<unsigned char>(run.began >> (8 * (sizeof bytes - 1 - i)));
    char text[2 * sizeof bytes + 1 + 2 * sizeof run.process];
    ckscribe::WriteHexDigits(bytes, sizeof bytes, text);
    text[2 * sizeof bytes] = '-';
    const char* const end =
        std::to_chars(text + 2 * sizeof bytes + 1, text + sizeof text, run.process, 16).ptr;
    json.Key("run");
    json.Constant({text, static_cast<std::size_t>(end - text)});
}

void WriteHead(JsonWriter& json, const CallEvent& event) {
    WriteRun(json, event.run);
    json.Key("pid");
    json.Number(static_cast<unsigned>(recordEnvironment.processId()));
    json.Key("tid");
    json.Number(static_cast<unsigned>(eventEnvironment.threadNumber()));
    json.Key("call");
    json.Number(event.number);
    json.Key("function");
    json.Constant(event.function);
}

void WriteSubject(JsonWriter& json, const CallSubject& subject) {
    const auto number = [&](CallSubject::Field field, std::string_view key, unsigned long value) {
        if ((subject.known & field) == 0) return;
        json.Key(key);
        json.Number(value);
    };
    number(CallSubject::kSlot, "slot", subject.slot);
    number(CallSubject::kSession, "session", subject.session);
    number(CallSubject::kObject, "object", subject.object);
    number(CallSubject::kUser, "user", subject.user);
    if ((subject.known & CallSubject::kMechanism) == 0) return;
    const std::string_view name = FullNameOfMechanism(subject.mechanism);
    if (!name.empty()) {
        json.Key("mechanism");
        json.Constant(name);
    }
    json.Key("mechanism_number");
    json.Number(subject.mechanism);
}

void TellSubjects(const DescriptorComposite& record, CallSubject& subject) {
    for (unsigned i = 0; i < record.ChildCount(); ++i) record.ChildAtIndex(i)->TellSubject(subject);
}

void WriteChildren(JsonWriter& json, const DescriptorComposite& record) {
    for (unsigned i = 0; i < record.ChildCount(); ++i) record.ChildAtIndex(i)->WriteEvent(json);
}

void Remember(CallEvent& event, std::string_view input) {
    event.inputLength = input.size();
    event.isInputKept = input.size() > CallEvent::kInputRoom;
    if (event.isInputKept) {
        // If there is no memory for the input, the call has no end event.
        if (!KeepInput(event, input)) throw std::bad_alloc();
    } else {
        std::memcpy(event.input, input.data(), input.size());
    }
}

std::string_view Input(const CallEvent& event) {
    if (!event.isInputKept) return {event.input, event.inputLength};
    const std::string_view kept = KeptInput(event);
    if (kept.size() != event.inputLength) throw std::bad_alloc();
    return kept;
}

}  // namespace

void BeginCallEvent(CallEvent& event, const char* exportedName) {
    event.function = exportedName;
    event.time = eventEnvironment.wallClock();
    event.nanoseconds = 0;
    event.number = 0;
    event.subject.known = 0;
    event.inputLength = 0;
    event.isInputKept = false;
}

timespec NoteForwarding() { return eventEnvironment.monotonicClock(); }

void NoteReturn(CallEvent& event, const timespec& forwarded) {
    event.nanoseconds = Nanoseconds(eventEnvironment.monotonicClock()) - Nanoseconds(forwarded);
}

void ForgetEventRun() {
    currentRun = {0, 0};
    countOfCalls = 0;
}

void WriteStartEvent(CallEvent& event, const CommandDescriptor& record) {
    Number(event);
    TellSubjects(record, event.subject);
    ckscribe::TextBuffer line;
    JsonWriter json(line);
    json.BeginObject();
    json.Key("event");
    json.Constant("start");
    WriteTime(json, event.time);
    WriteHead(json, event);
    WriteSubject(json, event.subject);
    json.Key("in");
    json.BeginArray();
    const std::size_t begin = line.Text().size();
    WriteChildren(json, record);
    const std::size_t end = line.Text().size();
    json.EndArray();
    json.EndObject();
    line.Append('\n');
    AppendToEvents(line.Text());
    Remember(event, line.Text().substr(begin, end - begin));
}

void WriteEndEvent(CallEvent& event, const CommandDescriptor& record, unsigned long rv) {
    Number(event);
    TellSubjects(record, event.subject);
    ckscribe::TextBuffer line;
    JsonWriter json(line);
    json.BeginObject();
    json.Key("event");
    json.Constant("end");
    WriteTime(json, event.time);
    json.Key("ns");
    json.Number(event.nanoseconds);
    WriteHead(json, event);
    json.Key("rv");
    json.Number(rv);
    json.Key("result");
    json.Constant(FullNameOfResult(rv));
    WriteSubject(json, event.subject);
    json.Key("in");
    json.BeginArray();
    json.Written(Input(event));
    json.EndArray();
    json.Key("out");
    json.BeginArray();
    WriteChildren(json, record);
    json.EndArray();
    json.EndObject();
    line.Append('\n');
    AppendToEvents(line.Text());
}

}  // namespace ckscribe
