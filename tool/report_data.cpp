#include "tool/report_data.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <tuple>
#include <unordered_map>

#include "functions/pkcs11_names.h"
#include "tool/report_remarks.h"

namespace ckscribe {

namespace {

// How many of each kind of example are kept.
constexpr std::size_t kMostExamples = 1000;
// So many times in a row is no accident any more.
constexpr std::uint64_t kShortestRetry = 2;
constexpr std::uint64_t kShortestPolling = 10;

// What a function does that the report follows.
enum class Role : std::uint8_t {
    kOther,
    kOpenSession,
    kCloseSession,
    kCloseAllSessions,
    kFinalize,
    kLogin,
    kBeginSearch,
    kSearch,
    kEndSearch,
    kMakeObject,
    kMakeKeyPair,
    kReadAttributes,
    kTokenInfo,
};

struct RoleRow {
    std::string_view function;
    Role role;
};
constexpr RoleRow kRoles[] = {
    {"C_OpenSession", Role::kOpenSession},
    {"CA_OpenSession", Role::kOpenSession},
    {"C_CloseSession", Role::kCloseSession},
    {"C_CloseAllSessions", Role::kCloseAllSessions},
    {"C_Finalize", Role::kFinalize},
    {"C_Login", Role::kLogin},
    {"CA_IndirectLogin", Role::kLogin},
    {"C_FindObjectsInit", Role::kBeginSearch},
    {"C_FindObjects", Role::kSearch},
    {"C_FindObjectsFinal", Role::kEndSearch},
    {"C_CreateObject", Role::kMakeObject},
    {"C_CopyObject", Role::kMakeObject},
    {"C_GenerateKey", Role::kMakeObject},
    {"C_UnwrapKey", Role::kMakeObject},
    {"C_DeriveKey", Role::kMakeObject},
    {"C_GenerateKeyPair", Role::kMakeKeyPair},
    {"C_GetAttributeValue", Role::kReadAttributes},
    {"C_GetTokenInfo", Role::kTokenInfo},
};

// Functions that only ask; calling them again and again is polling.
constexpr std::string_view kAsking[] = {"C_GetInfo",          "C_GetSlotList",      "C_GetSlotInfo",
                                        "C_GetTokenInfo",     "C_GetMechanismList", "C_GetMechanismInfo",
                                        "C_WaitForSlotEvent", "C_GetSessionInfo",   "CA_WaitForSlotEvent"};

struct Figures {
    Role role = Role::kOther;
    bool isAsking = false;
    std::uint64_t calls = 0;
    std::uint64_t errors = 0;
    std::uint64_t unfinished = 0;
    LatencyHistogram durations;
    std::vector<ResultFigures> results;
    std::size_t lastResult = 0;  // of `results`
};

struct Handle {
    std::uint32_t process = 0;
    std::uint64_t handle = 0;
    friend auto operator<=>(const Handle&, const Handle&) = default;
};

struct ObjectInfo {
    std::string label;
    std::string id;
    std::string objectClass;
    bool IsEmpty() const { return label.empty() && id.empty() && objectClass.empty(); }
};

struct Key {
    ObjectInfo info;
    std::uint64_t operations = 0;
    std::map<std::string, std::uint64_t, std::less<>> mechanisms;
};

struct OpenSession {
    std::uint64_t slot = 0;
    ReportedCall call;
};

struct Slot {
    std::uint64_t calls = 0;
    std::string token;
    std::string serial;
};

std::string Hex(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        hex += {kDigits[value >> 4], kDigits[value & 15]};
    }
    return hex;
}

// A text that a fixed field is padded with blanks to.
std::string Trimmed(std::string_view text) {
    const std::size_t last = text.find_last_not_of(std::string_view(" \0", 2));
    return std::string(text.substr(0, last == text.npos ? 0 : last + 1));
}

// The number that an attribute's value is, whatever the log shows of it.
std::optional<std::uint64_t> NumberOfAttribute(const Value& attribute) {
    for (const Value& value : attribute.children) {
        if (value.name == "value" && value.number) return value.number;
    }
    if (!attribute.bytes || attribute.bytes->size() != sizeof(std::uint64_t)) return std::nullopt;
    std::uint64_t number = 0;
    std::memcpy(&number, attribute.bytes->data(), sizeof number);
    return number;
}

std::string TextOfAttribute(const Value& attribute) {
    for (const Value& value : attribute.children) {
        if (value.name == "value" && value.bytes) return *value.bytes;
    }
    return attribute.bytes.value_or("");
}

void ReadAttributes(const std::vector<Value>& children, ObjectInfo& info) {
    for (const Value& list : children) {
        if (list.kind != "AttributeList") continue;
        for (const Value& attribute : list.children) {
            if (attribute.type == "CKA_LABEL") {
                info.label = TextOfAttribute(attribute);
            } else if (attribute.type == "CKA_ID") {
                info.id = Hex(TextOfAttribute(attribute));
            } else if (attribute.type == "CKA_CLASS") {
                if (const auto number = NumberOfAttribute(attribute)) {
                    info.objectClass = GetObjectClass(*number);
                } else if (const std::string name = TextOfAttribute(attribute); name.starts_with("CKO_")) {
                    info.objectClass = name;
                }
            }
        }
    }
}

void FillInfo(ObjectInfo& info, const ObjectInfo& other) {
    if (info.label.empty()) info.label = other.label;
    if (info.id.empty()) info.id = other.id;
    if (info.objectClass.empty()) info.objectClass = other.objectClass;
}

// The first numbers of a kind, those of lists included.
void CollectNumbers(const std::vector<Value>& children, std::string_view kind,
                    std::vector<std::uint64_t>& numbers) {
    for (const Value& child : children) {
        if (child.kind == kind && child.number) numbers.push_back(*child.number);
        if (child.kind != "ObjectHandleList") continue;
        for (const Value& element : child.children) {
            if (element.number) numbers.push_back(*element.number);
        }
    }
}

ReportedCall Reported(const Call& call) {
    return {
        call.Function(), call.process, call.thread, call.fields.session, {call.Time(), call.FirstPlace()}};
}

template <class Row>
void KeepRow(std::vector<Row>& rows, const Row& row) {
    if (rows.size() < kMostExamples) rows.push_back(row);
}

using RepetitionKey = std::pair<std::string_view, std::string_view>;
using Repetitions = std::map<RepetitionKey, Repetition>;

void AddRepetition(Repetitions& all, const Repetition& row) {
    Repetition& sum = all[{row.function, row.result}];
    const std::uint64_t rows = sum.rows + row.rows;
    const std::uint64_t calls = sum.calls + row.calls;
    if (row.longest > sum.longest) sum = row;
    sum.rows = rows;
    sum.calls = calls;
}

}  // namespace

ReportTime TimeOf(const Moment& moment) {
    if (moment.scale != TimeScale::kUtc) return std::nullopt;
    return moment.nanoseconds;
}

std::optional<double> Report::CallsPerSecond() const {
    const ReportTime from = TimeOf(first.time);
    const ReportTime to = TimeOf(last.time);
    if (!from || !to || *to - *from < kNanosecondsPerSecond) return std::nullopt;
    return static_cast<double>(calls) * kNanosecondsPerSecond / static_cast<double>(*to - *from);
}

// One thread of a log.
struct ReportBuilder::OfThread {
    std::int64_t lastEnd = 0;  // of events; 0: none
    // The row of like calls that goes on.
    FunctionIndex function{};
    std::string_view result;
    bool isFailure = false;
    std::uint64_t length = 0;
    Sighting begin;
    std::uint32_t process = 0;
    std::optional<std::int64_t> thread;
};

struct ReportBuilder::OfLog {
    struct ThreadKey {
        std::uint32_t process = 0;
        std::int64_t thread = 0;
        friend bool operator==(const ThreadKey&, const ThreadKey&) = default;
    };
    struct HashOfThread {
        std::size_t operator()(const ThreadKey& key) const {
            return (key.process * 0x9e3779b97f4a7c15U ^ static_cast<std::size_t>(key.thread)) *
                   0xff51afd7ed558ccdU;
        }
    };

    std::vector<Figures> functions;
    std::unordered_map<ThreadKey, OfThread, HashOfThread> threads;
    ThreadKey lastKey;
    OfThread* lastThread = nullptr;
    std::set<std::uint32_t> processes;
    std::uint64_t threadCount = 0;
    bool hasThreads = false;
    bool hasOldText = false;
    bool hasEvents = false;
    bool hasText = false;
    std::uint64_t calls = 0;
    std::uint64_t unreadable = 0;
    Sighting first;
    Sighting last;
    std::vector<ReportedCall> unfinished;
    std::vector<UnreadableStretch> stretches;
    std::map<Handle, OpenSession> sessions;
    std::uint64_t sessionsOpened = 0;
    std::uint64_t sessionsClosed = 0;
    std::map<std::tuple<std::string_view, std::uint32_t, std::uint64_t>, LoginFailure> loginFailures;
    std::map<std::uint64_t, Slot> slots;
    std::map<Handle, Key> keys;
    std::map<Handle, ObjectInfo> searches;  // by session
    Repetitions retries;
    Repetitions polling;
    LatencyHistogram pauses;

    Figures& FiguresOf(FunctionIndex function) {
        if (IndexOf(function) >= functions.size()) AddFunctions();
        return functions[IndexOf(function)];
    }

    void AddFunctions() {
        const std::size_t known = functions.size();
        functions.resize(FunctionCount());
        for (std::size_t i = known; i < functions.size(); ++i) {
            const std::string_view name = FunctionName(FunctionIndex(i));
            for (const RoleRow& row : kRoles) {
                if (row.function == name) functions[i].role = row.role;
            }
            functions[i].isAsking = std::ranges::find(kAsking, name) != std::end(kAsking);
        }
    }

    OfThread& ThreadOf(const Call& call) {
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

    void TakeResult(Figures& figures, const Call& call) {
        const Sighting seen{call.Time(), call.FirstPlace()};
        ResultFigures* row =
            figures.lastResult < figures.results.size() ? &figures.results[figures.lastResult] : nullptr;
        const auto isOfRow = [&call](const ResultFigures& other) {
            return other.result == call.result && (other.rv == call.rv || call.result != "CKR_UNKNOWN");
        };
        if (row == nullptr || !isOfRow(*row)) {
            const auto found = std::ranges::find_if(figures.results, isOfRow);
            figures.lastResult = static_cast<std::size_t>(found - figures.results.begin());
            if (found == figures.results.end())
                figures.results.push_back({call.Function(), call.result, call.rv, 0, seen, seen});
            row = &figures.results[figures.lastResult];
        }
        ++row->count;
        row->last = seen;
    }

    // Rows of like calls, and the pauses between calls.
    void TakeOrder(const Figures& figures, OfThread& thread, const Call& call) {
        if (call.IsUnfinished()) return;
        if (thread.length != 0 && thread.function == call.function && thread.result == call.result) {
            ++thread.length;
        } else {
            EndRow(thread);
            const bool isNews = call.IsError() && !(figures.isAsking && call.result == "CKR_NO_EVENT");
            thread.function = call.function;
            thread.result = call.result;
            thread.isFailure = isNews;
            thread.length = figures.isAsking || isNews ? 1 : 0;
            thread.begin = {call.Time(), call.FirstPlace()};
        }
        if (call.format != LogFormat::kEvents) return;
        if (thread.lastEnd != 0 && call.start.nanoseconds > thread.lastEnd)
            pauses.Add(static_cast<std::uint64_t>(call.start.nanoseconds - thread.lastEnd));
        thread.lastEnd = call.end.nanoseconds;
    }

    void EndRow(OfThread& thread) {
        if (thread.length < (thread.isFailure ? kShortestRetry : kShortestPolling)) return;
        AddRepetition(thread.isFailure ? retries : polling,
                      {FunctionName(thread.function), thread.result, 1, thread.length, thread.length,
                       thread.process, thread.thread, thread.begin});
        thread.length = 0;
    }

    void TakeRole(Role role, const Call& call) {
        const bool isOk = call.hasEnd && call.result == "CKR_OK";
        const Handle session{call.process, call.fields.session.value_or(0)};
        switch (role) {
            case Role::kOther:
                return;
            case Role::kOpenSession:
                if (!isOk || !call.fields.session) return;
                ++sessionsOpened;
                sessions[session] = {call.fields.slot.value_or(0), Reported(call)};
                return;
            case Role::kCloseSession:
                if (isOk) sessionsClosed += sessions.erase(session);
                return;
            case Role::kCloseAllSessions:
            case Role::kFinalize:
                if (!isOk) return;
                sessionsClosed += std::erase_if(sessions, [&](const auto& open) {
                    return open.first.process == call.process &&
                           (role == Role::kFinalize || open.second.slot == call.fields.slot);
                });
                return;
            case Role::kLogin:
                if (call.IsError()) TakeLoginFailure(call);
                return;
            case Role::kBeginSearch: {
                ObjectInfo info;
                ReadAttributes(call.In(), info);
                searches[session] = std::move(info);
                return;
            }
            case Role::kSearch: {
                const auto search = searches.find(session);
                if (!isOk || search == searches.end() || search->second.IsEmpty()) return;
                std::vector<std::uint64_t> handles;
                CollectNumbers(call.Out(), "ObjectHandle", handles);
                for (const std::uint64_t handle : handles)
                    FillInfo(keys[{call.process, handle}].info, search->second);
                return;
            }
            case Role::kEndSearch:
                searches.erase(session);
                return;
            case Role::kMakeObject:
            case Role::kMakeKeyPair:
                if (isOk) TakeNewObjects(role, call);
                return;
            case Role::kReadAttributes: {
                if (!isOk || !call.fields.object) return;
                ObjectInfo info;
                ReadAttributes(call.Out(), info);
                if (!info.IsEmpty()) FillInfo(keys[{call.process, *call.fields.object}].info, info);
                return;
            }
            case Role::kTokenInfo:
                if (isOk && call.fields.slot) TakeToken(*call.fields.slot, call);
                return;
        }
    }

    void TakeLoginFailure(const Call& call) {
        const Sighting seen{call.Time(), call.FirstPlace()};
        const std::uint64_t user = call.fields.user.value_or(~std::uint64_t{0});
        LoginFailure& failure = loginFailures[{call.result, call.process, user}];
        if (failure.count++ == 0) failure = {call.result, call.process, call.fields.user, 1, seen, seen};
        failure.last = seen;
    }

    void TakeNewObjects(Role role, const Call& call) {
        std::vector<std::uint64_t> handles;
        CollectNumbers(call.Out(), "ObjectHandle", handles);
        std::vector<Value> templates = call.In();
        std::erase_if(templates, [](const Value& value) { return value.kind != "AttributeList"; });
        const std::size_t pairs = role == Role::kMakeKeyPair ? 2 : 1;
        for (std::size_t i = 0; i < pairs && i < handles.size() && i < templates.size(); ++i) {
            ObjectInfo info;
            ReadAttributes({templates[i]}, info);
            if (role == Role::kMakeKeyPair && info.objectClass.empty())
                info.objectClass = i == 0 ? "CKO_PUBLIC_KEY" : "CKO_PRIVATE_KEY";
            // The handle may have been another object's before.
            keys[{call.process, handles[i]}].info = std::move(info);
        }
    }

    void TakeToken(std::uint64_t number, const Call& call) {
        Slot& slot = slots[number];
        if (!slot.token.empty() || !slot.serial.empty()) return;
        for (const Value& info : call.Out()) {
            if (info.kind != "TokenInfo") continue;
            for (const Value& member : info.children) {
                if (member.name == "label") slot.token = Trimmed(member.bytes.value_or(""));
                if (member.name == "serialNumber") slot.serial = Trimmed(member.bytes.value_or(""));
            }
        }
    }

    void TakeFields(const Call& call) {
        if (call.fields.slot) ++slots[*call.fields.slot].calls;
        if (call.fields.object && !call.fields.mechanism.empty() && !call.IsError()) {
            Key& key = keys[{call.process, *call.fields.object}];
            ++key.operations;
            const auto found = key.mechanisms.find(call.fields.mechanism);
            if (found != key.mechanisms.end()) {
                ++found->second;
            } else {
                key.mechanisms.emplace(call.fields.mechanism, 1);
            }
        }
    }
};

// All logs.
struct ReportBuilder::Total {
    Report report;
    std::vector<Figures> functions;
    bool hasThreads = false;
    Repetitions retries;
    Repetitions polling;
    std::map<std::uint64_t, Slot> slots;
};

ReportBuilder::ReportBuilder() : total(std::make_unique<Total>()) {}
ReportBuilder::~ReportBuilder() = default;

void ReportBuilder::OnLogBegin(const std::vector<std::uint32_t>&) { log = std::make_unique<OfLog>(); }

void ReportBuilder::OnCall(const Call& call) {
    OfLog& of = *log;
    Figures& figures = of.FiguresOf(call.function);
    OfThread& thread = of.ThreadOf(call);
    ++of.calls;
    ++figures.calls;
    if (call.format == LogFormat::kEvents) {
        of.hasEvents = true;
    } else {
        of.hasText = true;
    }
    of.hasThreads |= call.thread.has_value();
    const Moment time = call.Time();
    if (of.calls == 1 || (time.scale == of.first.time.scale && time.nanoseconds < of.first.time.nanoseconds))
        of.first = {time, call.FirstPlace()};
    if (call.hasEnd) {
        of.last = {call.end, call.endPlace};
        if (call.IsError()) ++figures.errors;
        if (call.nanoseconds) figures.durations.Add(*call.nanoseconds);
        of.TakeResult(figures, call);
    } else {
        ++figures.unfinished;
        KeepRow(of.unfinished, Reported(call));
    }
    of.TakeOrder(figures, thread, call);
    of.TakeFields(call);
    of.TakeRole(figures.role, call);
}

void ReportBuilder::OnUnreadable(const UnreadableStretch& stretch) {
    ++log->unreadable;
    KeepRow(log->stretches, stretch);
}

void ReportBuilder::OnLogEnd(std::optional<std::int64_t> firstDay) {
    OfLog& of = *log;
    Report& report = total->report;
    for (auto& [key, thread] : of.threads) of.EndRow(thread);
    const auto fix = [firstDay](Sighting& seen) { seen.time = InUtc(seen.time, firstDay); };

    report.calls += of.calls;
    report.unreadable += of.unreadable;
    report.processes += of.processes.size();
    if (of.hasThreads) {
        total->hasThreads = true;
        const auto hasNumber = [](const auto& thread) { return thread.second.thread.has_value(); };
        report.threads = report.threads.value_or(0) +
                         static_cast<std::uint64_t>(std::ranges::count_if(of.threads, hasNumber));
    }
    report.hasEvents |= of.hasEvents;
    report.hasText |= of.hasText;
    if (of.calls != 0) {
        fix(of.first);
        fix(of.last);
        if (!of.last.time.IsThere()) of.last = of.first;
        const bool isFirst = !report.first.time.IsThere();
        if (isFirst || of.first.time.nanoseconds < report.first.time.nanoseconds) report.first = of.first;
        if (isFirst || of.last.time.nanoseconds > report.last.time.nanoseconds) report.last = of.last;
    }

    if (of.functions.size() > total->functions.size()) total->functions.resize(of.functions.size());
    for (std::size_t i = 0; i < of.functions.size(); ++i) {
        Figures& sum = total->functions[i];
        Figures& figures = of.functions[i];
        sum.calls += figures.calls;
        sum.errors += figures.errors;
        sum.unfinished += figures.unfinished;
        sum.durations.Add(figures.durations);
        report.errors += figures.errors;
        report.unfinished += figures.unfinished;
        for (ResultFigures& result : figures.results) {
            fix(result.first);
            fix(result.last);
            const auto same = std::ranges::find_if(sum.results, [&](const ResultFigures& other) {
                return other.result == result.result && other.rv == result.rv;
            });
            if (same == sum.results.end()) {
                sum.results.push_back(result);
                continue;
            }
            same->count += result.count;
            if (result.first.time.nanoseconds < same->first.time.nanoseconds) same->first = result.first;
            if (result.last.time.nanoseconds > same->last.time.nanoseconds) same->last = result.last;
        }
    }
    for (ReportedCall& call : of.unfinished) {
        fix(call.seen);
        KeepRow(report.unfinishedCalls, call);
    }
    for (const UnreadableStretch& stretch : of.stretches) KeepRow(report.unreadableStretches, stretch);
    report.sessionsOpened += of.sessionsOpened;
    report.sessionsClosed += of.sessionsClosed;
    report.openSessionCount += of.sessions.size();
    for (auto& [handle, session] : of.sessions) {
        fix(session.call.seen);
        KeepRow(report.openSessions, session.call);
    }
    for (auto& [key, failure] : of.loginFailures) {
        fix(failure.first);
        fix(failure.last);
        report.loginFailures.push_back(failure);
    }
    for (const auto& [number, slot] : of.slots) {
        Slot& sum = total->slots[number];
        sum.calls += slot.calls;
        if (sum.token.empty()) sum.token = slot.token;
        if (sum.serial.empty()) sum.serial = slot.serial;
    }
    for (auto& [handle, key] : of.keys) {
        if (key.operations == 0 && key.info.IsEmpty()) continue;
        report.keys.push_back({handle.process,
                               handle.handle,
                               key.info.label,
                               key.info.id,
                               key.info.objectClass,
                               key.operations,
                               {key.mechanisms.begin(), key.mechanisms.end()}});
    }
    for (auto [key, row] : of.retries) {
        fix(row.seen);
        AddRepetition(total->retries, row);
    }
    for (auto [key, row] : of.polling) {
        fix(row.seen);
        AddRepetition(total->polling, row);
    }
    report.pauses.Add(of.pauses);
    log.reset();
}

Report ReportBuilder::Finish(const std::vector<std::string>& paths, const std::vector<FileReading>& files) {
    Report report = std::move(total->report);
    report.paths = paths;
    report.files = files;
    if (!total->hasThreads && report.calls == 0) report.threads = 0;
    for (std::size_t i = 0; i < total->functions.size(); ++i) {
        Figures& figures = total->functions[i];
        if (figures.calls == 0) continue;
        report.functions.push_back({FunctionName(FunctionIndex(i)), figures.calls, figures.errors,
                                    figures.unfinished, std::move(figures.durations)});
        std::ranges::stable_sort(figures.results, std::greater(), &ResultFigures::count);
        report.results.insert(report.results.end(), figures.results.begin(), figures.results.end());
    }
    std::ranges::sort(report.functions, [](const FunctionFigures& one, const FunctionFigures& other) {
        return std::tuple(other.calls, one.function) < std::tuple(one.calls, other.function);
    });
    std::ranges::stable_sort(report.results, {}, &ResultFigures::function);
    std::ranges::stable_sort(report.loginFailures, std::greater(), &LoginFailure::count);
    std::ranges::stable_sort(report.keys, std::greater(), &KeyFigures::operations);
    for (const auto& [number, slot] : total->slots)
        report.slots.push_back({number, slot.calls, slot.token, slot.serial});
    for (const auto& [key, row] : total->retries) report.retries.push_back(row);
    for (const auto& [key, row] : total->polling) report.polling.push_back(row);
    std::ranges::stable_sort(report.retries, std::greater(), &Repetition::longest);
    std::ranges::stable_sort(report.polling, std::greater(), &Repetition::longest);
    report.remarks = RemarksOn(report);
    return report;
}

}  // namespace ckscribe
