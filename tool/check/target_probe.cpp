#include "tool/check/target_probe.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <fmt/core.h>
#include <link.h>
#include <p11-kit/pkcs11.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <nlohmann/json.hpp>

namespace ckscribe {

namespace {

using Json = nlohmann::json;
using Clock = std::chrono::steady_clock;

// --- In the child

// Only this library exports this function.
constexpr char kOwnFunction[] = "CkLogSpecialInitialize";

constexpr const char* kStandardNames[] = {
#define C_EVERY_ROW(Name, ...) "C_" #Name,
#define C_UNBOUND_ROW(...)
#include "functions/functions.def"
};

constexpr const char* kOptionalNames[] = {
#define C_OPTIONAL_ROW(Name, ...) "C_" #Name,
#include "functions/functions.def"
};

constexpr const char* kVendorNames[] = {
#define CA_EVERY_ROW(Name) "CA_" #Name,
#include "functions/functions.def"
};

// Returns a text of PKCS#11, which has a fixed size, without the blanks that fill it up.
std::string Padded(const CK_UTF8CHAR* text, std::size_t size) {
    std::string padded(reinterpret_cast<const char*>(text), size);
    padded = padded.substr(0, padded.find('\0'));
    padded.erase(padded.find_last_not_of(' ') + 1);
    return padded;
}

std::string DescribeInfo(const CK_INFO& info) {
    return fmt::format(
        "{}, {}, version {}.{}, Cryptoki {}.{}", Padded(info.manufacturerID, sizeof info.manufacturerID),
        Padded(info.libraryDescription, sizeof info.libraryDescription), info.libraryVersion.major,
        info.libraryVersion.minor, info.cryptokiVersion.major, info.cryptokiVersion.minor);
}

// Returns the beginning of the object in memory that holds an address, or null if none does.
const void* ImageOf(const void* address) {
    Dl_info holder = {};
    return address != nullptr && dladdr(address, &holder) != 0 ? holder.dli_fbase : nullptr;
}

// Returns a function of the target or of a library that it needs. It returns null for a function of this
// library: the library does not count it as the target's.
void* FindFunction(void* target, const char* name) {
    void* const found = dlsym(target, name);
    const void* const own = ImageOf(dlsym(target, kOwnFunction));
    return own != nullptr && ImageOf(found) == own ? nullptr : found;
}

template <class Function>
Function Find(void* target, const char* name) {
    return reinterpret_cast<Function>(FindFunction(target, name));
}

CK_FUNCTION_LIST* FunctionListOf(void* target) {
    CK_FUNCTION_LIST* list = nullptr;
    const auto get = Find<CK_C_GetFunctionList>(target, "C_GetFunctionList");
    return get != nullptr && get(&list) == CKR_OK ? list : nullptr;
}

void AskTarget(void* target, bool initialize, Json& answer) {
    const CK_FUNCTION_LIST* const list = answer["listOnly"] == true ? FunctionListOf(target) : nullptr;
    const auto start = list != nullptr ? list->C_Initialize : Find<CK_C_Initialize>(target, "C_Initialize");
    const auto info = list != nullptr ? list->C_GetInfo : Find<CK_C_GetInfo>(target, "C_GetInfo");
    const auto stop = list != nullptr ? list->C_Finalize : Find<CK_C_Finalize>(target, "C_Finalize");
    if (initialize && start != nullptr) answer["initialize"] = start(nullptr);
    if (info != nullptr) {
        CK_INFO said = {};
        const CK_RV result = info(&said);
        answer["infoResult"] = result;
        if (result == CKR_OK) answer["info"] = DescribeInfo(said);
    }
    if (initialize && stop != nullptr && answer["initialize"] == CKR_OK) stop(nullptr);
}

void LookUpFunctions(void* target, Json& answer) {
    Json standard = Json::array();
    for (const char* name : kStandardNames) {
        const bool isOptional = std::ranges::any_of(
            kOptionalNames, [name](const char* optional) { return std::strcmp(name, optional) == 0; });
        if (FindFunction(target, name) == nullptr && !isOptional) standard.push_back(name);
    }
    Json vendor = Json::array();
    for (const char* name : kVendorNames) {
        if (FindFunction(target, name) == nullptr) vendor.push_back(name);
    }
    bool hasOther = false;
    for (const char* name : kStandardNames)
        hasOther |= std::strcmp(name, "C_GetFunctionList") != 0 && FindFunction(target, name) != nullptr;
    const bool hasList = FindFunction(target, "C_GetFunctionList") != nullptr;
    answer["standard"] = standard;
    answer["vendor"] = vendor;
    answer["hasList"] = hasList;
    answer["listOnly"] = hasList && !hasOther;
}

// Finds out whether the target is this library, or needs it.
void LookForCkscribe(void* target, Json& answer) {
    void* const own = dlsym(target, kOwnFunction);
    if (own == nullptr) return;
    link_map* image = nullptr;
    const bool isItself = dlinfo(target, RTLD_DI_LINKMAP, &image) == 0 &&
                          reinterpret_cast<std::uintptr_t>(ImageOf(own)) == image->l_addr;
    answer[isItself ? "isCkscribe" : "needsCkscribe"] = true;
}

Json Examine(const char* path, bool initialize) {
    Json answer;
    void* const target = dlopen(path, RTLD_NOW);
    answer["loaded"] = target != nullptr;
    if (target == nullptr) {
        const char* const reason = dlerror();
        answer["error"] = reason != nullptr ? reason : "the loader says nothing";
        return answer;
    }
    LookForCkscribe(target, answer);
    LookUpFunctions(target, answer);
    // A call into this library would start it, and it would make its files.
    if (!answer.contains("isCkscribe") && !answer.contains("needsCkscribe"))
        AskTarget(target, initialize, answer);
    return answer;
}

void CloseStandardStreams() {
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (int stream = 0; stream <= 2; ++stream) dup2(nothing, stream);
}

[[noreturn]] void RunChild(int answerTo, const char* path, bool initialize, int seconds) {
    setpgid(0, 0);
    // The alarm ends this process if the parent is killed in the meantime.
    alarm(static_cast<unsigned>(seconds) + 1);
    // If standard streams were closed, the pipe may have the number of one of them.
    answerTo = fcntl(answerTo, F_DUPFD_CLOEXEC, 3);
    CloseStandardStreams();
    const std::string answer =
        Examine(path, initialize).dump(-1, ' ', true, Json::error_handler_t::replace) + "\n";
    for (std::size_t written = 0; written < answer.size();) {
        const ssize_t count = write(answerTo, answer.data() + written, answer.size() - written);
        if (count <= 0) break;
        written += static_cast<std::size_t>(count);
    }
    // The target's destructors do not run: the probe only asks whether it loads.
    _exit(0);
}

// --- In the parent

struct Answer {
    std::string line;     // ends with a line feed if it is whole
    bool isLate = false;  // the time was over before that
};

Answer ReadAnswer(int from, Clock::time_point deadline) {
    Answer answer;
    while (!answer.line.ends_with('\n')) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        pollfd waiting = {from, POLLIN, 0};
        const int ready = left > 0 ? poll(&waiting, 1, static_cast<int>(left)) : 0;
        if (ready < 0 && errno == EINTR) continue;
        answer.isLate = ready <= 0;
        if (answer.isLate) break;
        char piece[4096];
        const ssize_t count = read(from, piece, sizeof piece);
        if (count <= 0) break;
        answer.line.append(piece, static_cast<std::size_t>(count));
    }
    return answer;
}

ProbedTarget FromAnswer(const Json& answer) {
    ProbedTarget target;
    target.isLoaded = answer.value("loaded", false);
    target.loaderError = answer.value("error", "");
    target.isCkscribe = answer.value("isCkscribe", false);
    target.needsCkscribe = answer.value("needsCkscribe", false);
    target.missingStandard = answer.value("standard", std::vector<std::string>());
    target.missingVendor = answer.value("vendor", std::vector<std::string>());
    target.hasFunctionList = answer.value("hasList", false);
    target.isListOnly = answer.value("listOnly", false);
    if (answer.contains("initialize")) target.initializeResult = answer["initialize"].get<unsigned long>();
    if (answer.contains("infoResult")) target.infoResult = answer["infoResult"].get<unsigned long>();
    target.info = answer.value("info", "");
    return target;
}

std::string DescribeEnding(int status, bool isLate, int seconds) {
    if (isLate) return fmt::format("does not come to an end within {} s", seconds);
    if (WIFSIGNALED(status))
        return fmt::format("ends the process with signal {} ({})", WTERMSIG(status),
                           strsignal(WTERMSIG(status)));
    return fmt::format("ends the process with status {}", WEXITSTATUS(status));
}

}  // namespace

ProbeResult ProbeTarget(const std::string& path, bool initialize, int seconds) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return {std::nullopt, fmt::format("cannot be tried: {}", std::strerror(errno))};
    const Clock::time_point deadline = Clock::now() + std::chrono::seconds(seconds);
    const pid_t child = fork();
    if (child == 0) RunChild(ends[1], path.c_str(), initialize, seconds);
    close(ends[1]);
    if (child < 0) {
        close(ends[0]);
        return {std::nullopt, fmt::format("cannot be tried: {}", std::strerror(errno))};
    }
    setpgid(child, child);
    const Answer answer = ReadAnswer(ends[0], deadline);
    close(ends[0]);
    // The child ends by itself after its answer, and when nobody reads it. A late child, and processes that
    // it started, must be ended.
    if (answer.isLate) kill(-child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
    kill(-child, SIGKILL);
    if (!answer.line.ends_with('\n')) return {std::nullopt, DescribeEnding(status, answer.isLate, seconds)};
    return {FromAnswer(Json::parse(answer.line)), ""};
}

}  // namespace ckscribe
