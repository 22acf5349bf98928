// A signal interrupts a thread while a record is written, and the signal's handler makes a call. Here the
// write itself makes the call: thread sanitizers take no signal handler that allocates.

#include <dlfcn.h>
#include <unistd.h>

#include <utility>
#include <vector>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"

namespace {

Library* library = nullptr;
bool isCallDue = false;  // at the next write

}  // namespace

// The library's writes come to this function.
extern "C" __attribute__((visibility("default"))) ssize_t write(int descriptor, const void* bytes,
                                                                size_t size) {
    static const auto systemsWrite =
        reinterpret_cast<ssize_t (*)(int, const void*, size_t)>(dlsym(RTLD_NEXT, "write"));
    if (std::exchange(isCallDue, false)) (*library)->C_CloseSession(2);
    return systemsWrite(descriptor, bytes, size);
}

namespace {

class SignalHandlerCalls : public FaultsTest {};

TEST_F(SignalHandlerCalls, TextLogIsWritten_EachEventTellsItsOwnCall) {
    const std::string events = directory.File("events.jsonl");
    WriteConfigurationFile("CkLog2 = {\n LibUNIX64 = " SCRIPTED_TARGET
                           ";\n Enabled = 1;\n NewFormat = 1;\n File = " +
                           LogPath() + ";\n Events = " + events + ";\n}\n");
    EXPECT_TRUE(Survives([] {
        library = new Library;
        (*library)->C_Logout(1);
        isCallDue = true;
        (*library)->C_Logout(3);
        EXPECT_FALSE(isCallDue);
    }));
    const ParsedLog log = ParseLog(Contents(events));
    EXPECT_EQ(log.remainder, "");
    ASSERT_EQ(log.records.size(), 6U);
    std::vector<std::string> seen;
    for (const LogRecord& record : log.records)
        seen.push_back((record.isStart ? "start " : "end ") + record.function + record.children);
    const std::vector<std::string> expected = {"start Logout=1 ",  "end Logout",      "start CloseSession=2 ",
                                               "end CloseSession", "start Logout=3 ", "end Logout"};
    EXPECT_EQ(seen, expected);
}

}  // namespace
