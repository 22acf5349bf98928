// An application around the built library: every test has a configuration, a log, and a target of its own.
//
// The library is loaded when a test first needs it and unloaded when the test ends, so that tests may share a
// process. Its target is the scripted one (see call_script.h), time and clock are fixed (fixed_clock.h), and
// the current directory is the test's own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "tests/calls/call_script.h"
#include "tests/calls/fixed_clock.h"
#include "tests/temporary_directory.h"

class LibraryTest : public testing::Test {
protected:
    LibraryTest();
    ~LibraryTest() override;

    // Entries of section "CkLog2", written by WriteConfiguration. At first they are "LibUNIX64" (the scripted
    // target), "Enabled" 1, "NewFormat" 1, "File" LogPath() and "Error" ErrorPath().
    void Set(const std::string& key, const std::string& value) { settings.insert_or_assign(key, value); }
    void Unset(const std::string& key) { settings.erase(key); }
    void WriteConfiguration();

    // Loads the library, which then reads the configuration as it was written last; writes it if that was not
    // done.
    void Load();
    void Unload();
    bool IsLoaded() const { return handle != nullptr; }

    // Writes the configuration, and lets the library start again with it and with an empty log at its next
    // call.
    void Restart();

    // Returns a function that the library exports, with the type that the caller knows.
    template <class Function>
    Function* Exported(const char* name) {
        return reinterpret_cast<Function*>(ExportedAddress(name));
    }
    void* ExportedAddress(const char* name);

    // The standard functions, looked up by name (`api.C_Login(...)`). Only once the library is loaded.
    CK_FUNCTION_LIST api = {};

    // Whole files; a file that does not exist is empty.
    std::string Log() const { return Contents(LogPath()); }
    std::string Events() const { return Contents(EventsPath()); }
    std::string Errors() const { return Contents(ErrorPath()); }
    static std::string Contents(const std::string& path);
    static void WriteFile(const std::string& path, const std::string& text);
    void ClearLog() const;
    void ClearEvents() const;

    // For many calls in turn: what has been written into the log since it had this size.
    std::size_t LogSize() const;
    std::string LogSince(std::size_t size) const;

    std::string LogPath() const { return directory.File("calls.log"); }
    std::string EventsPath() const { return directory.File("events.jsonl"); }
    std::string ErrorPath() const { return directory.File("errors.log"); }
    std::string ConfigurationPath() const { return directory.File("Wendrafil.conf"); }

    // `text` with "<id>" and "<pid>" replaced by what records of this thread say there: process and thread as
    // the new format shows them, the process as the old one does.
    // "<tid>" and "<run>" are what events say there.
    static std::string WithIds(std::string text);
    static std::string ReplaceAll(std::string text, const std::string& from, const std::string& to);

    const TemporaryDirectory directory;

private:
    std::map<std::string, std::string> settings;
    bool isConfigured = false;
    void* handle = nullptr;
    std::string directoryBefore;
};

// The built library as a file, and the targets of CMakeLists.txt by their names there.
inline constexpr char kLibraryPath[] = CKSCRIBE_LIBRARY;
inline std::string TargetNamed(const std::string& name) {
    return SCRIPTED_TARGET_DIRECTORY "/" + name + ".so";
}
