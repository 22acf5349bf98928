#include "reader/call_joiner.h"

#include <algorithm>

#include "reader/known_names.h"

namespace ckscribe {

namespace {

// The memory of a text that was longer is given back when its call ends.
constexpr std::size_t kLongestKeptText = 64 << 10;

void SetStart(Call& call, const Record& start, std::string_view text, std::uint32_t file) {
    call.hasStart = true;
    call.start = start.time;
    call.startPlace = {file, start.line};
    call.startRecord = text;
    call.startText = text.substr(start.bodyOffset);
    call.fields = start.fields;
}

void SetCommon(Call& call, const Record& record) {
    call.function = record.function;
    call.format = record.format;
    call.process = record.process;
    if (record.hasThread) call.thread = record.thread;
    if (record.run != 0) call.run = RunNames().NameOf(record.run);
    call.number = record.number;
}

void SetEnd(Call& call, const Record& end, std::uint32_t file) {
    call.hasEnd = true;
    call.endPlace = {file, end.line};
    call.endRecord = end.text;
    call.endText = end.text.substr(end.bodyOffset);
    if (end.hasRv) call.rv = end.rv;
    call.result = end.result;
    if (end.hasNanoseconds) call.nanoseconds = end.nanoseconds;
    if (end.format != LogFormat::kEvents) {
        call.end = end.time;
        return;
    }
    // An event's time is the call's beginning, in its end, too.
    call.start = end.time;
    call.end = end.time;
    call.end.nanoseconds += static_cast<std::int64_t>(end.nanoseconds);
}

template <class Field>
void FillField(std::optional<Field>& field, const std::optional<Field>& other) {
    if (!field) field = other;
}

void FillFields(CallFields& fields, const CallFields& others) {
    FillField(fields.slot, others.slot);
    FillField(fields.session, others.session);
    FillField(fields.object, others.object);
    FillField(fields.user, others.user);
    if (fields.mechanism.empty()) fields.mechanism = others.mechanism;
    FillField(fields.mechanismNumber, others.mechanismNumber);
}

}  // namespace

CallJoiner::Key CallJoiner::KeyOf(const Record& record) {
    if (record.format == LogFormat::kEvents) return {std::uint64_t{1} << 63 | record.run, record.number};
    const bool isOld = record.format == LogFormat::kOldText;
    return {std::uint64_t{isOld} << 32 | record.process, static_cast<std::uint64_t>(record.thread)};
}

Call CallJoiner::CallOf(const OpenCall& open) {
    Call call;
    SetCommon(call, open.start);
    SetStart(call, open.start, open.text, open.file);
    return call;
}

CallJoiner::OpenCalls& CallJoiner::CallsOf(const Key& key) {
    if (lastCalls == nullptr || !(key == lastKey)) {
        lastKey = key;
        lastCalls = &open[key];
    }
    return *lastCalls;
}

std::uint32_t CallJoiner::TakePlace() {
    if (freePlaces.empty()) {
        pool.emplace_back();
        return static_cast<std::uint32_t>(pool.size() - 1);
    }
    const std::uint32_t place = freePlaces.back();
    freePlaces.pop_back();
    return place;
}

// The newest start that the end belongs to: of its function, else of one whose records look alike.
int CallJoiner::FindStart(const OpenCalls& open, const std::deque<OpenCall>& pool, const Record& end) {
    const int newest = static_cast<int>(open.size()) - 1;
    if (end.format == LogFormat::kEvents) return newest;
    const auto startOf = [&](int i) -> const Record& {
        return pool[open[static_cast<std::size_t>(i)]].start;
    };
    for (int i = newest; i >= 0 && end.isFunctionCertain; --i) {
        if (startOf(i).function == end.function) return i;
    }
    if (end.isFunctionCertain) return -1;
    for (int i = newest; i >= 0; --i) {
        if (startOf(i).printed == end.printed) return i;
    }
    return -1;
}

void CallJoiner::Take(const Record& record, std::uint32_t file, CallSink& sink) {
    const Key key = KeyOf(record);
    OpenCalls& calls = CallsOf(key);
    const bool isEvent = record.format == LogFormat::kEvents;
    if (record.isStart) {
        const std::uint32_t place = TakePlace();
        OpenCall& call = pool[place];
        call.start = record;
        call.text.assign(record.text);
        // The mechanism's name is a part of the text.
        if (std::string_view& mechanism = call.start.fields.mechanism; !mechanism.empty()) {
            const auto offset = static_cast<std::size_t>(mechanism.data() - record.text.data());
            mechanism = std::string_view(call.text).substr(offset, mechanism.size());
        }
        call.order = nextOrder++;
        call.file = file;
        calls.push_back(place);
        ++openCount;
        return;
    }

    Call call;
    SetCommon(call, record);
    const int found = FindStart(calls, pool, record);
    if (found >= 0) {
        const OpenCall& start = pool[calls[static_cast<std::size_t>(found)]];
        call.function = start.start.function;
        SetStart(call, start.start, start.text, start.file);
    }
    SetEnd(call, record, file);
    FillFields(call.fields, record.fields);
    sink.OnCall(call);

    if (found >= 0) {
        const std::uint32_t place = calls[static_cast<std::size_t>(found)];
        calls.erase(calls.begin() + found);
        if (pool[place].text.capacity() > kLongestKeptText) std::string().swap(pool[place].text);
        freePlaces.push_back(place);
        --openCount;
    }
    if (isEvent) {
        // A call does not come again.
        open.erase(key);
        lastCalls = nullptr;
    }
}

void CallJoiner::Finish(CallSink& sink) {
    std::vector<const OpenCall*> left;
    for (const auto& [key, calls] : open) {
        for (const std::uint32_t place : calls) left.push_back(&pool[place]);
    }
    std::ranges::sort(left, {}, &OpenCall::order);
    for (const OpenCall* const call : left) sink.OnCall(CallOf(*call));
    *this = CallJoiner();
}

void CallJoiner::ForEachOpen(const std::function<void(const Call&)>& visit) const {
    for (const auto& [key, calls] : open) {
        for (const std::uint32_t place : calls) visit(CallOf(pool[place]));
    }
}

}  // namespace ckscribe
