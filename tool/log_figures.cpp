#include "tool/log_figures.h"

#include <algorithm>

namespace ckscribe {

namespace {

// A row of this many like calls is no accident any more.
constexpr std::uint64_t kShortestRetry = 2;
constexpr std::uint64_t kShortestPolling = 10;

// The mechanism of these functions makes a key and needs none.
constexpr std::string_view kGenerating[] = {"C_GenerateKey", "C_GenerateKeyPair"};

// Names of results are nearly always the same texts in memory.
bool IsSameName(std::string_view one, std::string_view other) {
    return (one.data() == other.data() && one.size() == other.size()) || one == other;
}

std::uint64_t NumberIn(std::string_view result, const std::optional<std::uint64_t>& rv) {
    return result == "CKR_UNKNOWN" ? rv.value_or(0) : 0;
}

bool IsOf(const ResultFigures& row, std::string_view result, const std::optional<std::uint64_t>& rv) {
    return IsSameName(row.result, result) && (row.rv == rv || result != "CKR_UNKNOWN");
}

void FillInfo(ObjectInfo& info, const ObjectInfo& other) {
    if (info.label.empty()) info.label = other.label;
    if (info.id.empty()) info.id = other.id;
    if (info.objectClass.empty()) info.objectClass = other.objectClass;
}

ReportedCall Reported(const Call& call) {
    return {
        call.Function(), call.process, call.thread, call.fields.session, {call.Time(), call.FirstPlace()}};
}

}  // namespace

ResultFigures& ResultTable::RowOf(std::string_view result, const std::optional<std::uint64_t>& rv) {
    if (last < rows.size() && IsOf(rows[last], result, rv)) return rows[last];
    const auto [place, isNew] = places.try_emplace({result, NumberIn(result, rv)}, rows.size());
    last = place->second;
    if (isNew) rows.push_back({{}, result, rv, 0, {}, {}});
    return rows[last];
}

void KeyUse::Count(std::string_view mechanism) {
    ++operations;
    for (auto& [name, count] : mechanisms) {
        if (name != mechanism) continue;
        ++count;
        return;
    }
    mechanisms.emplace_back(mechanism, 1);
}

void AddRepetition(Repetitions& all, const Repetition& row) {
    Repetition& sum = all[{row.function, row.result}];
    const std::uint64_t rows = sum.rows + row.rows;
    const std::uint64_t calls = sum.calls + row.calls;
    // If rows are equally long, the one that began first counts, whatever the order of the threads.
    const auto rank = [](const Repetition& one) {
        return std::tuple(-static_cast<std::int64_t>(one.longest), one.seen.time.nanoseconds, one.process,
                          one.thread);
    };
    if (sum.rows == 0 || rank(row) < rank(sum)) sum = row;
    sum.rows = rows;
    sum.calls = calls;
}

void LogFigures::Take(const Call& call) {
    CallSums& sums = SumsOf(call.function);
    CallingThread& thread = ThreadOf(call);
    ++calls;
    ++sums.calls;
    if (call.format == LogFormat::kEvents && !call.run.empty()) {
        hasEvents = true;
    } else {
        hasText = true;
    }
    hasThreads |= call.thread.has_value();
    const Sighting began{call.Time(), call.FirstPlace()};
    spans[static_cast<std::size_t>(began.time.scale)].Take(
        began, call.hasEnd ? Sighting{call.end, call.endPlace} : began);
    if (call.hasEnd) {
        if (call.IsError()) ++sums.errors;
        if (call.nanoseconds) sums.durations.Add(*call.nanoseconds);
        TakeResult(sums, call);
    } else {
        ++sums.unfinished;
        KeepRow(unfinished, Reported(call));
    }
    TakeOrder(sums, thread, call);
    TakeFields(sums, call);
    TakeRole(sums.role, call);
}

void LogFigures::Take(const UnreadableStretch& stretch) {
    ++unreadable;
    KeepRow(stretches, stretch);
}

void LogFigures::End() {
    for (auto& [key, thread] : threads) EndRow(thread);
}

std::uint64_t LogFigures::ThreadCount() const {
    const auto hasNumber = [](const auto& thread) { return thread.second.thread.has_value(); };
    return static_cast<std::uint64_t>(std::ranges::count_if(threads, hasNumber));
}

CallSums& LogFigures::SumsOf(FunctionIndex function) {
    if (IndexOf(function) >= functions.size()) AddFunctions();
    return functions[IndexOf(function)];
}

void LogFigures::AddFunctions() {
    const std::size_t known = functions.size();
    functions.resize(FunctionCount());
    for (std::size_t i = known; i < functions.size(); ++i) {
        const std::string_view name = FunctionName(FunctionIndex(i));
        functions[i].role = RoleOf(name);
        functions[i].isAsking = IsAsking(name);
        functions[i].isGenerating = std::ranges::find(kGenerating, name) != std::end(kGenerating);
    }
}

LogFigures::CallingThread& LogFigures::ThreadOf(const Call& call) {
    const ThreadKey key{call.process, call.thread.value_or(0)};
    if (lastThread != nullptr && key == lastKey) return *lastThread;
    const auto [found, isNew] = threads.try_emplace(key);
    if (isNew) {
        processes.insert(call.process);
        found->second.process = call.process;
        found->second.thread = call.thread;
    }
    lastKey = key;
    lastThread = &found->second;
    return *lastThread;
}

void LogFigures::TakeResult(CallSums& sums, const Call& call) {
    const Sighting seen{call.Time(), call.FirstPlace()};
    ResultFigures& row = sums.results.RowOf(call.result, call.rv);
    if (row.count++ == 0) {
        row.function = call.Function();
        row.first = seen;
    }
    row.last = seen;
}

void LogFigures::TakeOrder(const CallSums& sums, CallingThread& thread, const Call& call) {
    if (call.IsUnfinished()) return;
    Question question = sums.isAsking ? QuestionOf(call) : Question();
    if (thread.length != 0 && thread.function == call.function && IsSameName(thread.result, call.result) &&
        thread.question == question) {
        ++thread.length;
    } else {
        EndRow(thread);
        const bool isNews = call.IsError() && !(sums.isAsking && call.result == "CKR_NO_EVENT");
        thread.function = call.function;
        thread.result = call.result;
        thread.isFailure = isNews;
        thread.question = std::move(question);
        thread.length = sums.isAsking || isNews ? 1 : 0;
        thread.begin = {call.Time(), call.FirstPlace()};
    }
    if (!call.start.IsPrecise() || !call.nanoseconds) return;
    if (thread.lastEnd != 0 && call.start.nanoseconds > thread.lastEnd)
        pauses.Add(static_cast<std::uint64_t>(call.start.nanoseconds - thread.lastEnd));
    thread.lastEnd = call.end.nanoseconds;
}

void LogFigures::EndRow(CallingThread& thread) {
    if (thread.length < (thread.isFailure ? kShortestRetry : kShortestPolling)) return;
    AddRepetition(thread.isFailure ? retries : polling,
                  {FunctionName(thread.function), thread.result, 1, thread.length, thread.length,
                   thread.process, thread.thread, thread.begin});
    thread.length = 0;
}

void LogFigures::TakeRole(CallRole role, const Call& call) {
    const bool isOk = call.hasEnd && call.IsOk();
    const HandleOfProcess session{call.process, call.fields.session.value_or(0)};
    switch (role) {
        case CallRole::kOther:
            return;
        case CallRole::kOpenSession:
        case CallRole::kCloseSession:
        case CallRole::kCloseAllSessions:
        case CallRole::kFinalize:
            if (isOk) sessions.Take(role, call.fields.slot, Reported(call));
            return;
        case CallRole::kLogin:
            if (call.IsError()) TakeLoginFailure(call);
            return;
        case CallRole::kBeginSearch:
            searches[session] = InfoIn(call.In());
            return;
        case CallRole::kSearch: {
            const auto search = searches.find(session);
            if (search == searches.end() || search->second.IsEmpty()) return;
            for (const ToldObject& found : ObjectsToldBy(role, call))
                FillInfo(keys[{call.process, found.handle}].info, search->second);
            return;
        }
        case CallRole::kEndSearch:
            searches.erase(session);
            return;
        case CallRole::kMakeObject:
        case CallRole::kMakeKeyPair:
            // The handle may have belonged to another object before.
            for (ToldObject& made : ObjectsToldBy(role, call))
                keys[{call.process, made.handle}].info = std::move(made.info);
            return;
        case CallRole::kReadAttributes:
            for (const ToldObject& read : ObjectsToldBy(role, call)) {
                if (!read.info.IsEmpty()) FillInfo(keys[{call.process, read.handle}].info, read.info);
            }
            return;
        case CallRole::kTokenInfo:
            if (isOk && call.fields.slot) TakeToken(*call.fields.slot, call);
            return;
    }
}

void LogFigures::TakeLoginFailure(const Call& call) {
    const Sighting seen{call.Time(), call.FirstPlace()};
    const std::uint64_t user = call.fields.user.value_or(~std::uint64_t{0});
    LoginFailure& failure = loginFailures[{call.result, call.process, user}];
    if (failure.count++ == 0) failure = {call.result, call.process, call.fields.user, 1, seen, seen};
    failure.last = seen;
}

void LogFigures::TakeToken(std::uint64_t number, const Call& call) {
    SlotUse& slot = slots[number];
    if (!slot.token.empty() || !slot.serial.empty()) return;
    ToldToken token = TokenToldBy(call);
    slot.token = std::move(token.label);
    slot.serial = std::move(token.serial);
}

void LogFigures::TakeFields(const CallSums& sums, const Call& call) {
    if (call.fields.slot) ++slots[*call.fields.slot].calls;
    // A call that makes an object does not use it.
    if (!sums.isGenerating && call.fields.object && !call.fields.mechanism.empty() && !call.IsError()) {
        keys[{call.process, *call.fields.object}].Count(call.fields.mechanism);
    }
}

}  // namespace ckscribe
