#include "descriptors/call_event.h"

#include <p11-kit/pkcs11.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <string_view>

#include "descriptors/command_descriptor.h"
#include "descriptors/data_setting.h"
#include "descriptors/event_environment.h"
#include "descriptors/events_file.h"
#include "descriptors/kept_inputs.h"
#include "descriptors/record_environment.h"
#include "functions/full_names.h"
#include "util/cache_line.h"
#include "util/calendar_date.h"
#include "util/hex_digits.h"
#include "util/json_writer.h"

namespace ckscribe {

using namespace std::string_view_literals;

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

// Both events of a call show the time of its beginning. Its text is kept, and the part in front of the point
// is computed once a second.
struct {
    timespec time = {0, 0};
    char text[sizeof "2026-11-21T12:33:45.123456789Z"] = "1970-01-01T00:00:00.000000000Z";
} rememberedTime;

constexpr std::size_t kLengthOfSeconds = sizeof "2026-11-21T12:33:45" - 1;

char* WriteTwoDigits(char* at, unsigned long number) {
    *at++ = static_cast<char>('0' + number / 10);
    *at++ = static_cast<char>('0' + number % 10);
    return at;
}

// Leaves the text as it is for a second before 1970 or after 9999, which has no text of this form.
void RememberSecond(std::time_t second) {
    constexpr std::time_t kLastSecond = 253'402'300'799;
    constexpr unsigned long kSecondsPerDay = 86'400;
    if (second < 0 || second > kLastSecond) return;
    const unsigned long ofDay = static_cast<unsigned long>(second) % kSecondsPerDay;
    const CalendarDate date = DateOfDay(static_cast<unsigned long>(second) / kSecondsPerDay);
    char* at = WriteTwoDigits(rememberedTime.text, date.year / 100);
    at = WriteTwoDigits(at, date.year % 100);
    at = WriteTwoDigits(at + 1, date.month);
    at = WriteTwoDigits(at + 1, date.day);
    at = WriteTwoDigits(at + 1, ofDay / 3600);
    at = WriteTwoDigits(at + 1, ofDay / 60 % 60);
    WriteTwoDigits(at + 1, ofDay % 60);
    rememberedTime.time.tv_sec = second;
}

void WriteThreeDigits(char* at, unsigned long number) {
    at[0] = static_cast<char>('0' + number / 100);
    at[1] = static_cast<char>('0' + number / 10 % 10);
    at[2] = static_cast<char>('0' + number % 10);
}

void RememberNanoseconds(long nanoseconds) {
    char* const fraction = rememberedTime.text + kLengthOfSeconds + 1;
    const auto number = static_cast<unsigned long>(nanoseconds);
    WriteThreeDigits(fraction, number / 1'000'000);
    WriteThreeDigits(fraction + 3, number / 1000 % 1000);
    WriteThreeDigits(fraction + 6, number % 1000);
    rememberedTime.time.tv_nsec = nanoseconds;
}

std::string_view TextOfTime(const timespec& time) {
    if (time.tv_sec != rememberedTime.time.tv_sec) RememberSecond(time.tv_sec);
    if (time.tv_nsec != rememberedTime.time.tv_nsec) RememberNanoseconds(time.tv_nsec);
    return {rememberedTime.text, sizeof rememberedTime.text - 1};
}

// These members of an event stay the same from call to call of a thread. They are written once and kept.
struct {
    EventRun run = {0, 0};
    int process = 0;
    int thread = 0;
    std::size_t length = 0;
    char text[sizeof R"("run":"18a3f1c2d4e5f607-12345678","pid":1234567890,"tid":1234567890)"];
} rememberedCaller;

void WriteRun(JsonWriter& json, const EventRun& run) {
    unsigned char bytes[sizeof run.began];
    for (std::size_t i = 0; i < sizeof bytes; ++i)
        bytes[i] = static_cast<unsigned char>(run.began >> (8 * (sizeof bytes - 1 - i)));
    char text[2 * sizeof bytes + 1 + 2 * sizeof run.process];
    ckscribe::WriteHexDigits(bytes, sizeof bytes, text);
    text[2 * sizeof bytes] = '-';
    const char* const end =
        std::to_chars(text + 2 * sizeof bytes + 1, text + sizeof text, run.process, 16).ptr;
    json.Member("run", {text, static_cast<std::size_t>(end - text)});
}

void RememberCaller(const EventRun& run, int process, int thread) {
    TextBuffer text;
    JsonWriter json(text);
    WriteRun(json, run);
    json.Key("pid");
    json.Number(static_cast<unsigned>(process));
    json.Key("tid");
    json.Number(static_cast<unsigned>(thread));
    rememberedCaller.run = run;
    rememberedCaller.process = process;
    rememberedCaller.thread = thread;
    rememberedCaller.length = text.Text().copy(rememberedCaller.text, sizeof rememberedCaller.text);
}

std::string_view MembersOfCaller(const EventRun& run) {
    const int process = recordEnvironment.processId();
    const int thread = eventEnvironment.threadNumber();
    const auto& remembered = rememberedCaller;
    const bool isSame = remembered.run.began == run.began && remembered.run.process == run.process &&
                        remembered.process == process && remembered.thread == thread;
    if (!isSame || remembered.length == 0) RememberCaller(run, process, thread);
    return {remembered.text, remembered.length};
}

void WriteNames(JsonWriter& json, const CallEvent& event) {
    json.Written(MembersOfCaller(event.run));
    json.Key("call");
    json.Number(event.number);
    json.Member("function", event.function);
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
    if (!name.empty()) json.Member("mechanism", name);
    json.Key("mechanism_number");
    json.Number(subject.mechanism);
}

// PKCS#11 lets C_GetAttributeValue return the values that there are beside these two failures. A buffer that
// is too small does not count: some targets then return lengths that go beyond it.
bool IsOutputDefined(unsigned long rv) {
    return rv == CKR_OK || rv == CKR_ATTRIBUTE_SENSITIVE || rv == CKR_ATTRIBUTE_TYPE_INVALID;
}

void TellSubjects(const DescriptorComposite& record, CallSubject& subject) {
    for (unsigned i = 0; i < record.ChildCount(); ++i) record.ChildAtIndex(i)->TellSubject(subject);
}

void WriteChildren(JsonWriter& json, const DescriptorComposite& record) {
    for (unsigned i = 0; i < record.ChildCount(); ++i) record.ChildAtIndex(i)->WriteEvent(json);
}

void Remember(CallEvent& event, std::string_view input) {
    event.inputLength = input.size();
    event.showsData = IsDataShownInEvents();
    event.isInputKept = input.size() > CallEvent::kInputRoom;
    if (event.isInputKept) {
        // If there is no memory for the input, the call has no end event.
        if (!KeepInput(event, input)) throw std::bad_alloc();
    } else {
        std::memcpy(event.input, input.data(), input.size());
    }
}

// The library may have been started anew during the call, with events that hide data.
std::string_view Input(const CallEvent& event) {
    if (event.showsData && !IsDataShownInEvents()) return {};
    if (!event.isInputKept) return {event.input, event.inputLength};
    const std::string_view kept = KeptInput(event);
    if (kept.size() != event.inputLength) throw std::bad_alloc();
    return kept;
}

}  // namespace

bool AreOutputsLeftOut() {
    return currentCallEvent != nullptr && currentCallEvent->isOutputUndefined && !IsDataShownInEvents();
}

void BeginCallEvent(CallEvent& event, const char* exportedName) {
    event.function = exportedName;
    event.time = eventEnvironment.wallClock();
    event.nanoseconds = 0;
    event.number = 0;
    event.isOutputUndefined = false;
    event.subject.known = 0;
    event.inputLength = 0;
    event.showsData = false;
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
    json.Written(R"("event":"start","time":")"sv, TextOfTime(event.time), "\""sv);
    WriteNames(json, event);
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
    event.isOutputUndefined = !IsOutputDefined(rv);
    TellSubjects(record, event.subject);
    ckscribe::TextBuffer line;
    JsonWriter json(line);
    json.BeginObject();
    json.Written(R"("event":"end","time":")"sv, TextOfTime(event.time), "\""sv);
    json.Key("ns");
    json.Number(event.nanoseconds);
    WriteNames(json, event);
    json.Key("rv");
    json.Number(rv);
    json.Member("result", FullNameOfResult(rv));
    WriteSubject(json, event.subject);
    json.Key("in");
    json.BeginArray();
    if (const std::string_view input = Input(event); !input.empty()) json.Written(input);
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
