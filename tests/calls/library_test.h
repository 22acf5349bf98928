// A LibraryTest is an application around the built library. Every test has a configuration, a log, and a
// target of its own.
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

    // Set and Unset change the entries of section "CkLog2"; WriteConfiguration writes them. At first the
    // entries are "LibUNIX64" (the scripted target), "Enabled" 1, "NewFormat" 1, "File" LogPath() and "Error"
    // ErrorPath().
    void Set(const std::string& key, const std::string& value) { settings.insert_or_assign(key, value); }
    void Unset(const std::string& key) { settings.erase(key); }
    void WriteConfiguration();

    // Loads the library, which then reads the configuration as it was written last. Writes the configuration
    // first if it was not written yet.
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

    // These are the standard functions, looked up by name (`api.C_Login(...)`). A test uses them only after
    // the library is loaded.
    CK_FUNCTION_LIST api = {};

    // Return whole files. A file that does not exist is empty.
    std::string Log() const { return Contents(LogPath()); }
    std::string Events() const { return Contents(EventsPath()); }
    std::string Errors() const { return Contents(ErrorPath()); }
    static std::string Contents(const std::string& path);
    static void WriteFile(const std::string& path, const std::string& text);
    void ClearLog() const;
    void ClearEvents() const;

    // Tests of many calls in turn use these. LogSince returns what was written into the log after it had this
    // size.
    std::size_t LogSize() const;
    std::string LogSince(std::size_t size) const;

    std::string LogPath() const { return directory.File("calls.log"); }
    std::string EventsPath() const { return directory.File("events.jsonl"); }
    std::string ErrorPath() const { return directory.File("errors.log"); }
    std::string ConfigurationPath() const { return directory.File("Wendrafil.conf"); }

    // Returns `text` with "<id>", "<pid>", "<tid>" and "<run>" replaced by what this thread's records and
    // events say there. "<id>" becomes process and thread as the new format shows them. "<pid>" becomes the
    // process as the old format shows it. "<tid>" and "<run>" become what events say.
    static std::string WithIds(std::string text);
    static std::string ReplaceAll(std::string text, const std::string& from, const std::string& to);

    const TemporaryDirectory directory;

private:
    std::map<std::string, std::string> settings;
    bool isConfigured = false;
    void* handle = nullptr;
    std::string directoryBefore;
};

// These are the paths of the built library and of the targets. CMakeLists.txt names the targets.
inline constexpr char kLibraryPath[] = CKSCRIBE_LIBRARY;
inline std::string TargetNamed(const std::string& name) {
    return SCRIPTED_TARGET_DIRECTORY "/" + name + ".so";
}
