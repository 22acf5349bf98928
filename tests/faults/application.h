// Each test has an application of its own: a configuration, a log, a target, and processes that may die.
//
// Only child processes load the library. Whatever a test does to its process (limits, signals, rights,
// threads that never end) ends with the child. An alarm ends a child that hangs.
#pragma once

#include <gtest/gtest.h>
#include <p11-kit/pkcs11.h>

#include <atomic>
#include <functional>
#include <map>
#include <string>

#include "tests/calls/scripted_target.h"
#include "tests/temporary_directory.h"

// Every function of the target calls this. It runs on the thread that calls, inside the target, and returns
// the call's result. If it is null, as at first, the result is CKR_OK.
using TargetAnswer = CK_RV(const char* function, const TargetWord* arguments, std::size_t count);
extern std::atomic<TargetAnswer*> targetAnswer;

// The target's constructor and destructor call these. Null means nothing.
extern std::atomic<void (*)()> onTargetLoaded;
extern std::atomic<void (*)()> onTargetUnloaded;

// A Library is the library as an application loads it. The constructor aborts the process if the library
// cannot be loaded.
class Library {
public:
    explicit Library(const char* path = CKSCRIBE_LIBRARY);
    // Unloads the library.
    void Close();

    // Returns any exported function by its name, or null if there is none.
    void* Address(const char* name) const;
    template <class Function>
    Function* Exported(const char* name) const {
        return reinterpret_cast<Function*>(Address(name));
    }
    void Finalize() const { Exported<void()>("CkLogSpecialFinalize")(); }

    CK_FUNCTION_LIST* operator->() { return &api; }

private:
    void* handle;
    CK_FUNCTION_LIST api = {};
};

// Returns whether the tests are about the events file. The environment variable CKSCRIBE_TESTED_FILE is
// "events" then. In such tests the library writes events into the file that a test takes for the log, and
// writes no text log. ParseLog reads either.
bool AreEventsTested();

class FaultsTest : public testing::Test {
protected:
    // A child may take this many seconds. They are more than enough under any sanitizer.
    static constexpr unsigned kPatience = 540;

    FaultsTest();

    // Set and Unset change the entries of section "CkLog2". At first the entries are "LibUNIX64" (the
    // scripted target), "Enabled" 1, "NewFormat" 1, "File" LogPath() and "Error" ErrorPath(). Each change is
    // written to the configuration file.
    void Set(const std::string& key, const std::string& value);
    void Unset(const std::string& key);
    void WriteConfigurationFile(const std::string& text) const;
    std::string ConfigurationText() const;

    std::string LogPath() const { return directory.File("calls.log"); }
    // Returns the name that the error file gives to the tested file.
    static std::string KindOfFile() { return AreEventsTested() ? "events file" : "capture file"; }

    std::string ErrorPath() const { return directory.File("errors.log"); }
    std::string ConfigurationPath() const { return directory.File("Wendrafil.conf"); }
    std::string Log() const { return Contents(LogPath()); }
    std::string Errors() const { return Contents(ErrorPath()); }

    // Returns a whole file. A file that does not exist is empty.
    static std::string Contents(const std::string& path);

    // Runs `body` in a child process and gives the status that waitpid gives. The child has the status 0 when
    // `body` returns and none of its expectations failed.
    static int StatusOf(const std::function<void()>& body);
    static testing::AssertionResult Survives(const std::function<void()>& body);

    TemporaryDirectory directory;

private:
    std::map<std::string, std::string> settings;
};

// Lets a child die without a core file.
void LeaveNoCore();

// Makes a child an ordinary user. From here on the modes of files apply to it.
void GiveUpRightsOfRoot();

// Says how a child ended, for messages.
std::string Ending(int status);
