#include "tests/calls/library_test.h"

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "tests/file_text.h"

LibraryTest::LibraryTest()
    : settings{{"LibUNIX64", TargetNamed("scripted_target")},
               {"Enabled", "1"},
               {"NewFormat", "1"},
               {"File", LogPath()},
               {"Error", ErrorPath()}},
      directoryBefore(std::filesystem::current_path()) {
    setenv("WendrafilConfigurationPath", directory.Path().c_str(), 1);
    setenv("TZ", kFixedZone, 1);
    std::filesystem::current_path(directory.Path());
    RestartClock();
    script.Reset();
}

LibraryTest::~LibraryTest() {
    Unload();
    std::filesystem::current_path(directoryBefore);
}

void LibraryTest::WriteConfiguration() {
    std::string text = "CkLog2 = {\n";
    for (const auto& [key, value] : settings) text += "   " + key + " = " + value + ";\n";
    WriteFile(ConfigurationPath(), text + "}\n");
    isConfigured = true;
}

void LibraryTest::Load() {
    if (IsLoaded()) return;
    if (!isConfigured) WriteConfiguration();
    handle = dlopen(kLibraryPath, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(nullptr, handle) << dlerror();
#define C_EVERY_ROW(Name, ...) \
    api.C_##Name = reinterpret_cast<decltype(api.C_##Name)>(ExportedAddress("C_" #Name));
#include "functions/functions.def"
}

void LibraryTest::Unload() {
    if (!IsLoaded()) return;
    dlclose(handle);
    handle = nullptr;
    api = {};
    // A library that stays loaded would keep the configuration of this test for the next one.
    EXPECT_EQ(nullptr, dlopen(kLibraryPath, RTLD_NOW | RTLD_NOLOAD)) << "the library was not unloaded";
}

void LibraryTest::Restart() {
    Load();
    Exported<void()>("CkLogSpecialFinalize")();
    WriteConfiguration();
    ClearLog();
    RestartClock();
    script.received.clear();
}

void* LibraryTest::ExportedAddress(const char* name) {
    Load();
    void* const address = dlsym(handle, name);
    EXPECT_NE(nullptr, address) << name;
    return address;
}

std::string LibraryTest::Contents(const std::string& path) { return FileText(path); }

void LibraryTest::WriteFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

void LibraryTest::ClearLog() const { SearchAndEmpty(LogPath()); }

void LibraryTest::ClearEvents() const { SearchAndEmpty(EventsPath()); }

std::size_t LibraryTest::LogSize() const {
    std::error_code missing;
    const std::uintmax_t size = std::filesystem::file_size(LogPath(), missing);
    return missing ? 0 : size;
}

std::string LibraryTest::LogSince(std::size_t size) const { return FileText(LogPath(), size); }

std::string LibraryTest::WithIds(std::string text) {
    const int process = getpid();
    const int thread = static_cast<int>(static_cast<std::uint32_t>((std::uintptr_t)pthread_self()));
    char id[40];
    std::snprintf(id, sizeof id, "%05d-%03d", process, thread);
    char run[40];
    std::snprintf(run, sizeof run, "%016lx-%x", kFixedTime * 1'000'000'000 + kFixedNanoseconds,
                  static_cast<unsigned>(process));
    text = ReplaceAll(ReplaceAll(std::move(text), "<id>", id), "<pid>", std::to_string(process));
    return ReplaceAll(ReplaceAll(std::move(text), "<tid>", std::to_string(gettid())), "<run>", run);
}

std::string LibraryTest::ReplaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}
