#include "reader/call_joiner.h"

#include <algorithm>

#include "reader/known_names.h"

namespace ckscribe {

namespace {

// When a call ends, the joiner gives back the memory of a text that is longer than this, in bytes.
constexpr std::size_t kLongestKeptText = 64 << 10;
// This bit marks the key of an event that has a number.
constexpr std::uint64_t kNumbered = std::uint64_t{1} << 63;

// Lets the views of a call's start point into `text`.
void SetStartText(Call& call, std::string_view text) {
    // The mechanism's name is a part of the text.
    if (!call.fields.mechanism.empty()) {
        const auto offset = static_cast<std::size_t>(call.fields.mechanism.data() - call.startRecord.data());
        call.fields.mechanism = text.substr(offset, call.fields.mechanism.size());
    }
    const std::size_t bodyOffset = call.startRecord.size() - call.startText.size();
    call.startRecord = text;
    call.startText = text.substr(bodyOffset);
}

void SetStart(Call& call, const Record& start, std::uint32_t file) {
    call.hasStart = true;
    call.start = start.time;
    call.startPlace = {file, start.line};
    call.startRecord = start.text;
    call.startText = start.text.substr(start.bodyOffset);
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
    // The end event repeats the time at which the call began.
    call.start = end.time;
    call.end = end.End();
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

CallJoiner::Key CallJoiner::KeyOf(const Record& record, FunctionIndex function) {
    if (record.run != 0) return {kNumbered | record.run, record.number};
    return {static_cast<std::uint64_t>(record.format) << 48 | std::uint64_t{IndexOf(function)} << 32 |
                record.process,
            static_cast<std::uint64_t>(record.thread)};
}

std::uint32_t& CallJoiner::NewestOf(const Key& key) {
    if ((key.first & kNumbered) != 0) return open.try_emplace(key, kNone).first->second;
    Known& found = known[HashOfKey()(key) % kMostKnown];
    if (found.newest == nullptr || !(found.key == key)) {
        // Entries of `open` keep their addresses, and those of threads are never erased.
        found = {key, &open.try_emplace(key, kNone).first->second};
    }
    return *found.newest;
}

void CallJoiner::Open(const Record& record, std::uint32_t file, std::uint32_t& newest) {
    std::uint32_t place = 0;
    if (freePlaces.empty()) {
        place = static_cast<std::uint32_t>(pool.size());
        pool.emplace_back();
    } else {
        place = freePlaces.back();
        freePlaces.pop_back();
    }
    OpenCall& opened = pool[place];
    opened.call = Call{};
    SetCommon(opened.call, record);
    SetStart(opened.call, record, file);
    opened.order = nextOrder++;
    opened.older = newest;
    opened.isOpen = true;
    newest = place;
    begun.push_back(place);
    ++openCount;
}

// Returns the entry that holds the place of the newest start of the end's function, or else of a function
// whose records look alike. Returns null when there is none.
std::uint32_t* CallJoiner::FindStart(const Record& end) {
    if (end.isFunctionCertain) {
        std::uint32_t& newest = NewestOf(KeyOf(end, end.function));
        return newest == kNone ? nullptr : &newest;
    }
    std::uint32_t* found = nullptr;
    for (unsigned i = 0; i < end.printed->count; ++i) {
        std::uint32_t& newest = NewestOf(KeyOf(end, end.printed->functions[i]));
        if (newest != kNone && (found == nullptr || pool[*found].order < pool[newest].order)) found = &newest;
    }
    return found;
}

void CallJoiner::Take(const Record& record, std::uint32_t file, CallSink& sink) {
    if (record.isStart) {
        std::uint32_t& newest = NewestOf(KeyOf(record, record.function));
        Open(record, file, newest);
        sink.OnStart(pool[newest].call);
        return;
    }
    bool isLast = true;
    if (std::uint32_t* const found = FindStart(record)) {
        const std::uint32_t place = *found;
        OpenCall& opened = pool[place];
        // The start names the function more exactly than the end, therefore the call keeps the start's.
        SetEnd(opened.call, record, file);
        FillFields(opened.call.fields, record.fields);
        sink.OnCall(opened.call);
        *found = opened.older;
        isLast = opened.older == kNone;
        opened.isOpen = false;
        if (opened.text.capacity() > kLongestKeptText) std::string().swap(opened.text);
        freePlaces.push_back(place);
        --openCount;
    } else {
        Call call;
        SetCommon(call, record);
        SetEnd(call, record, file);
        call.fields = record.fields;
        sink.OnCall(call);
    }
    // No later event has this call's number, therefore its entry can go.
    if (record.run != 0 && isLast) open.erase(KeyOf(record, record.function));
}

void CallJoiner::KeepTexts() {
    for (const std::uint32_t place : begun) {
        OpenCall& opened = pool[place];
        if (!opened.isOpen || opened.call.startRecord.data() == opened.text.data()) continue;
        opened.text.assign(opened.call.startRecord);
        SetStartText(opened.call, opened.text);
    }
    begun.clear();
}

void CallJoiner::Finish(CallSink& sink) {
    std::vector<const OpenCall*> left;
    for (const OpenCall& call : pool) {
        if (call.isOpen) left.push_back(&call);
    }
    std::ranges::sort(left, {}, &OpenCall::order);
    for (const OpenCall* const call : left) sink.OnCall(call->call);
    *this = CallJoiner();
}

void CallJoiner::ForEachOpen(const std::function<void(const Call&)>& visit) const {
    for (const OpenCall& call : pool) {
        if (call.isOpen) visit(call.call);
    }
}

}  // namespace ckscribe
