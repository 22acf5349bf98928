#include "tests/faults/application.h"

#include <dlfcn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

std::atomic<TargetAnswer*> targetAnswer{nullptr};
std::atomic<void (*)()> onTargetLoaded{nullptr};
std::atomic<void (*)()> onTargetUnloaded{nullptr};

CK_RV AnswerCall(const char* function, const TargetWord* arguments, std::size_t count) {
    TargetAnswer* const answer = targetAnswer.load(std::memory_order_acquire);
    return answer == nullptr ? CKR_OK : answer(function, arguments, count);
}

void TargetIsLoaded() {
    if (void (*const loaded)() = onTargetLoaded.load()) loaded();
}

void TargetIsUnloaded() {
    if (void (*const unloaded)() = onTargetUnloaded.load()) unloaded();
}

Library::Library(const char* path) : handle(dlopen(path, RTLD_NOW | RTLD_LOCAL)) {
    if (handle == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        std::abort();
    }
#define C_EVERY_ROW(Name, ...) api.C_##Name = reinterpret_cast<decltype(api.C_##Name)>(Address("C_" #Name));
#include "functions/functions.def"
}

void Library::Close() {
    dlclose(handle);
    handle = nullptr;
}

void* Library::Address(const char* name) const { return dlsym(handle, name); }

bool AreEventsTested() {
    const char* const file = std::getenv("CKSCRIBE_TESTED_FILE");
    return file != nullptr && std::strcmp(file, "events") == 0;
}

FaultsTest::FaultsTest()
    : settings{{"LibUNIX64", SCRIPTED_TARGET},
               {"Enabled", "1"},
               {"NewFormat", "1"},
               {"File", LogPath()},
               {"Error", ErrorPath()}} {
    setenv("WendrafilConfigurationPath", directory.Path().c_str(), 1);
    WriteConfigurationFile(ConfigurationText());
}

void FaultsTest::Set(const std::string& key, const std::string& value) {
    settings[key] = value;
    WriteConfigurationFile(ConfigurationText());
}

void FaultsTest::Unset(const std::string& key) {
    settings.erase(key);
    WriteConfigurationFile(ConfigurationText());
}

void FaultsTest::WriteConfigurationFile(const std::string& text) const {
    std::ofstream(ConfigurationPath(), std::ios::binary) << text;
}

std::string FaultsTest::ConfigurationText() const {
    std::string text = "CkLog2 = {\n";
    std::map<std::string, std::string> written = settings;
    const auto file = written.find("File");
    if (AreEventsTested() && written["Enabled"] == "1" && file != written.end()) {
        written["Enabled"] = "0";
        written["Events"] = file->second;
        written["HideData"] = "0";
    }
    for (const auto& [key, value] : written) text += "   " + key + " = " + value + ";\n";
    return text + "}\n";
}

std::string FaultsTest::Contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text;
    char piece[1 << 14];
    while (file.read(piece, sizeof piece), file.gcount() > 0) {
        text.append(piece, static_cast<std::size_t>(file.gcount()));
    }
    return text;
}

int FaultsTest::StatusOf(const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        alarm(kPatience);
        body();
        std::fflush(nullptr);
        _exit(HasFailure() ? 1 : 0);
    }
    int status = -1;
    EXPECT_EQ(child, waitpid(child, &status, 0));
    return status;
}

testing::AssertionResult FaultsTest::Survives(const std::function<void()>& body) {
    const int status = StatusOf(body);
    if (status == 0) return testing::AssertionSuccess();
    return testing::AssertionFailure() << Ending(status);
}

void LeaveNoCore() {
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
}

void GiveUpRightsOfRoot() {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && seteuid(kNobody) != 0) std::abort();
}

std::string Ending(int status) {
    if (WIFEXITED(status)) return "the process ended with status " + std::to_string(WEXITSTATUS(status));
    if (!WIFSIGNALED(status)) return "the process did not end";
    if (WTERMSIG(status) == SIGALRM) return "the process hung";
    return "the process died of signal " + std::to_string(WTERMSIG(status));
}
