// Measures the time of calls through one PKCS#11 library. It also measures the floor: the time that it takes
// to append the records of those calls to a log.
//
//   call_cost --module=FILE [--log=FILE] [--floor | --counted] [--calls=N] [Google Benchmark's own options]
//
// --module   the library to call
// --log      the file that it logs to: emptied before each run, so that no run pays for an earlier one
// --floor    each call is replaced by bare appends to --log of the bytes that the call itself logs, and by
//            the readings of the processor time that such records need
// --counted  each call adds 1 to one number of all threads, once before and once after
// --calls    how many times each thread calls in a run
//
// The time of a benchmark is the wall time from the first call of a run to the last, over the number of calls
// of all threads together. The mix counts as one call.

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/calling_thread.h"
#include "util/cache_line.h"

namespace {

std::string modulePath;
std::string logPath;
bool isFloor = false;
bool isCounted = false;
long calls = 1000;

CK_FUNCTION_LIST* library = nullptr;
int floorFile = -1;

// The threads of a run wait here for the last of them.
std::optional<std::barrier<>> finish;

using Call = void (CallingThread::*)();

[[noreturn]] void Fail(const std::string& message) {
    std::fprintf(stderr, "%s\n", message.c_str());
    std::exit(1);
}

void LoadModule() {
    void* const handle = dlopen(modulePath.c_str(), RTLD_NOW);
    if (handle == nullptr) Fail(dlerror());
    const auto getList = reinterpret_cast<CK_C_GetFunctionList>(dlsym(handle, "C_GetFunctionList"));
    if (getList == nullptr) Fail(modulePath + " has no C_GetFunctionList");
    Require(getList(&library), "C_GetFunctionList");
    CK_C_INITIALIZE_ARGS withThreads = {};
    withThreads.flags = CKF_OS_LOCKING_OK;
    Require(library->C_Initialize(&withThreads), "C_Initialize");
}

void EmptyLog() {
    if (!logPath.empty() && truncate(logPath.c_str(), 0) != 0) Fail("cannot empty " + logPath);
}

std::string TextOfLog() {
    std::ifstream file(logPath, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

bool IsDigit(char character) { return character >= '0' && character <= '9'; }

// Events are lines. Records of the old format begin with a new line and "Command(", those of the new one with
// one or two new lines and the time of day. No other line begins with a digit.
bool BeginsRecord(std::string_view text, std::size_t i) {
    const bool isLine = i == 0 || text[i - 1] == '\n';
    if (isLine && text.substr(i).starts_with("{\"event\":")) return true;
    if (text[i] != '\n') return false;
    const std::string_view rest = text.substr(i + 1);
    if (rest.starts_with("Command(")) return true;
    if (rest.starts_with('\n')) return rest.size() > 1 && IsDigit(rest[1]);
    return !rest.empty() && IsDigit(rest[0]) && (i == 0 || text[i - 1] != '\n');
}

std::vector<std::string> RecordsOf(Call call) {
    CallingThread thread(*library);
    EmptyLog();
    (thread.*call)();
    const std::string text = TextOfLog();
    std::vector<std::string> records;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (BeginsRecord(text, i)) records.emplace_back();
        if (records.empty()) Fail("unexpected text in " + logPath);
        records.back() += text[i];
    }
    if (records.empty()) Fail("nothing was logged to " + logPath);
    return records;
}

// Every record of the old format shows the processor time or counts from it, the new format's end records
// show it, and events have no such figure.
bool NeedsProcessorTime(std::string_view record) {
    if (record.starts_with("\nCommand(")) return true;
    return record.starts_with('\n') && record.find(":FINI") != record.npos;
}

void Append(const std::vector<std::string>& records, const std::vector<bool>& needsProcessorTime) {
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::string& record = records[i];
        if (needsProcessorTime[i]) benchmark::DoNotOptimize(std::clock());
        if (write(floorFile, record.data(), record.size()) < 0) Fail("cannot append to " + logPath);
    }
}

// The time of one thread does not serve: that thread may be done early, while others still wait for a
// processor.
template <class Work>
void Run(benchmark::State& state, const Work& work) {
    while (state.KeepRunningBatch(calls)) {
        for (long i = 0; i < calls; ++i) work();
        finish->arrive_and_wait();
    }
}

template <Call call>
void RunCalls(benchmark::State& state) {
    CallingThread thread(*library);
    (thread.*call)();
    Run(state, [&thread] { (thread.*call)(); });
}

alignas(ckscribe::kCacheLine) std::atomic<unsigned> queries{0};

// Does the least work of a call that asks the logging mask twice: all threads count their queries in one
// place. It waits for the count before the call, because other threads must see the count before the target
// is entered.
template <Call call>
void RunCountedCalls(benchmark::State& state) {
    const auto count = [] {
        queries.store(queries.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    };
    CallingThread thread(*library);
    Run(state, [&] {
        count();
        std::atomic_thread_fence(std::memory_order_seq_cst);
        (thread.*call)();
        count();
    });
}

void RunFloor(benchmark::State& state, const std::vector<std::string>& records) {
    std::vector<bool> needsProcessorTime;
    for (const std::string& record : records) needsProcessorTime.push_back(NeedsProcessorTime(record));
    Append(records, needsProcessorTime);
    Run(state, [&] { Append(records, needsProcessorTime); });
}

void PrepareRun(const benchmark::State& state) {
    EmptyLog();
    finish.emplace(state.threads());
}

template <Call call>
void Register(const char* name) {
    auto* const registered =
        isFloor ? benchmark::RegisterBenchmark(
                      name, [records = RecordsOf(call)](auto& state) { RunFloor(state, records); })
                : benchmark::RegisterBenchmark(name, isCounted ? RunCountedCalls<call> : RunCalls<call>);
    registered->UseRealTime()->Iterations(calls)->Setup(PrepareRun);
    registered->Threads(1)->Threads(2)->Threads(8);
}

bool TakeOption(std::string_view argument) {
    const auto valueOf = [argument](std::string_view option) {
        return argument.starts_with(option) ? std::string(argument.substr(option.size())) : "";
    };
    if (argument == "--floor") return isFloor = true;
    if (argument == "--counted") return isCounted = true;
    if (const std::string value = valueOf("--module="); !value.empty()) return modulePath = value, true;
    if (const std::string value = valueOf("--log="); !value.empty()) return logPath = value, true;
    if (const std::string value = valueOf("--calls="); !value.empty()) return calls = std::stol(value), true;
    return false;
}

}  // namespace

int main(int count, char** arguments) {
    std::vector<char*> others;
    for (int i = 0; i < count; ++i) {
        if (!TakeOption(arguments[i])) others.push_back(arguments[i]);
    }
    int otherCount = static_cast<int>(others.size());
    benchmark::Initialize(&otherCount, others.data());
    if (benchmark::ReportUnrecognizedArguments(otherCount, others.data())) return 1;

    LoadModule();
    if (isFloor) {
        floorFile = open(logPath.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
        if (floorFile < 0) Fail("--floor needs a --log that the module writes");
    }
    Register<&CallingThread::Sign>("Sign");
    Register<&CallingThread::GetSessionInfo>("GetSessionInfo");
    Register<&CallingThread::FindObjectsInit>("FindObjectsInit");
    Register<&CallingThread::EncryptUpdate>("EncryptUpdate");
    Register<&CallingThread::Mix>("Mix");
    benchmark::RunSpecifiedBenchmarks();
}
