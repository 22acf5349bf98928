// An application unloads the library and loads it again. Nothing of the library stays behind, and no record
// is lost.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <barrier>
#include <fstream>
#include <set>
#include <thread>

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"

// Searches for leaks. Only a build with the address sanitizer has this function.
extern "C" __attribute__((weak)) int __lsan_do_recoverable_leak_check();

namespace {

constexpr int kRounds = 100;
constexpr int kWarmUp = 10;

bool IsLoaded(const char* path) {
    void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

bool LeaksAreFound() {
    return __lsan_do_recoverable_leak_check != nullptr && __lsan_do_recoverable_leak_check() != 0;
}

int OpenDescriptors() {
    int count = 0;
    for (int descriptor = 0; descriptor < 2000; ++descriptor)
        count += fcntl(descriptor, F_GETFD) >= 0 ? 1 : 0;
    return count;
}

// A Memory says how much memory the process has. 0 stands for what the system or a sanitizer does not say.
struct Memory {
    std::size_t allocated = 0;
    int mappings = 0;
};

Memory MemoryInUse() {
    Memory memory;
#ifdef __GLIBC__
    const auto heap = mallinfo2();
    memory.allocated = heap.uordblks + heap.hblkhd;
#endif
    if (!CKSCRIBE_IS_SANITIZED) {
        std::ifstream maps("/proc/self/maps");
        for (std::string line; std::getline(maps, line);) ++memory.mappings;
    }
    return memory;
}

class Reloading : public FaultsTest {
protected:
    void ExpectWholeRecords(std::size_t count) const {
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        ASSERT_EQ(log.records.size(), count);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(log.records[i].isStart, i % 2 == 0);
            EXPECT_EQ(log.records[i].FirstNumber(), i % 2 == 0 ? i / 2 : 0);
        }
    }
};

std::atomic<int> targetLoads{0};

TEST_F(Reloading, LibraryIsLoadedAgainAndAgain_NothingOfItStays) {
    EXPECT_TRUE(Survives([] {
        onTargetLoaded = [] { ++targetLoads; };
        const int descriptorsBefore = OpenDescriptors();
        Memory memoryAfterWarmUp, memory;
        for (CK_ULONG round = 0; round < kRounds; ++round) {
            {
                Library library;
                EXPECT_EQ(library->C_Logout(round), CKR_OK);
                if (round % 3 == 0) library.Finalize();
                library.Close();
            }
            ASSERT_FALSE(IsLoaded(CKSCRIBE_LIBRARY));
            ASSERT_FALSE(IsLoaded(SCRIPTED_TARGET));
            memory = MemoryInUse();
            if (round == kWarmUp) memoryAfterWarmUp = memory;
        }
        EXPECT_EQ(targetLoads, kRounds);
        EXPECT_EQ(OpenDescriptors(), descriptorsBefore);
        EXPECT_EQ(memory.allocated, memoryAfterWarmUp.allocated);
        EXPECT_EQ(memory.mappings, memoryAfterWarmUp.mappings);
        EXPECT_FALSE(LeaksAreFound());
    }));
    ExpectWholeRecords(2 * kRounds);
}

// dlclose unloads the library even if dlopen put it into the program's scope. The target has no functions
// that the loader could bind to this library's. Such functions would hold the library.
TEST_F(Reloading, LibraryIsLoadedIntoTheScopeOfTheProgram_NothingOfItStays) {
    Set("LibUNIX64", TARGET_WITHOUT_FUNCTIONS);
    Set("Announce", "0");
    EXPECT_TRUE(Survives([] {
        const int descriptorsBefore = OpenDescriptors();
        for (CK_ULONG round = 0; round < 3; ++round) {
            void* const handle = dlopen(CKSCRIBE_LIBRARY, RTLD_NOW | RTLD_GLOBAL);
            ASSERT_NE(handle, nullptr);
            const auto logout = reinterpret_cast<CK_C_Logout>(dlsym(handle, "C_Logout"));
            EXPECT_EQ(logout(round), CKR_FUNCTION_NOT_SUPPORTED);
            dlclose(handle);
            ASSERT_FALSE(IsLoaded(CKSCRIBE_LIBRARY));
            ASSERT_FALSE(IsLoaded(TARGET_WITHOUT_FUNCTIONS));
        }
        EXPECT_EQ(OpenDescriptors(), descriptorsBefore);
        EXPECT_FALSE(LeaksAreFound());
    }));
    ExpectWholeRecords(6);
}

// Here the runtime's memory for exceptions belongs to the application. It is larger than all that one load
// changes.
TEST_F(Reloading, LibrarySharesTheRuntimeOfTheApplication_DlcloseLeavesTheMemoryOfTheRuntime) {
    EXPECT_TRUE(Survives([] {
        constexpr std::size_t kLessThanItsMemory = 50'000;
        const std::size_t before = MemoryInUse().allocated;
        for (CK_ULONG round = 0; round < 3; ++round) {
            Library library(LIBRARY_WITH_SHARED_RUNTIME);
            EXPECT_EQ(library->C_Logout(round), CKR_OK);
            library.Close();
            ASSERT_FALSE(IsLoaded(LIBRARY_WITH_SHARED_RUNTIME));
        }
        EXPECT_GE(MemoryInUse().allocated + kLessThanItsMemory, before);
    }));
    ExpectWholeRecords(6);
}

TEST_F(Reloading, NoCallIsMade_LibraryCanBeUnloaded) {
    EXPECT_TRUE(Survives([] {
        for (int round = 0; round < kRounds; ++round) {
            Library().Close();
            ASSERT_FALSE(IsLoaded(CKSCRIBE_LIBRARY));
        }
    }));
    EXPECT_EQ(Log(), "");
}

// The library's fork handlers go with it.
TEST_F(Reloading, LibraryIsUnloaded_ForkStillWorks) {
    EXPECT_TRUE(Survives([] {
        Library library;
        library->C_Logout(0);
        library.Close();
        const pid_t child = fork();
        if (child == 0) _exit(7);
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(WEXITSTATUS(status), 7) << Ending(status);
    }));
}

// The system has nothing of the library to call when a thread ends.
TEST_F(Reloading, LibraryIsUnloaded_ThreadThatCalledItCanEnd) {
    EXPECT_TRUE(Survives([] {
        Library library;
        std::barrier called(2), unloaded(2);
        std::thread caller([&] {
            library->C_Logout(0);
            called.arrive_and_wait();
            unloaded.arrive_and_wait();
        });
        called.arrive_and_wait();
        library.Close();
        unloaded.arrive_and_wait();
        caller.join();
    }));
    ExpectWholeRecords(2);
}

TEST_F(Reloading, EventsAreWritten_EachLoadHasARunOfItsOwn) {
    const std::string path = directory.File("events.jsonl");
    WriteConfigurationFile("CkLog2 = {\n LibUNIX64 = " SCRIPTED_TARGET ";\n Events = " + path + ";\n}\n");
    EXPECT_TRUE(Survives([] {
        for (int i = 0; i < kWarmUp; ++i) {
            Library library;
            library->C_Logout(1);
            library.Close();
            ASSERT_FALSE(IsLoaded(CKSCRIBE_LIBRARY));
        }
    }));
    const std::string events = Contents(path);
    std::multiset<std::string> runs;
    for (std::size_t at = 0; (at = events.find("\"run\":\"", at)) != events.npos; ++at)
        runs.insert(events.substr(at, events.find(',', at) - at));
    EXPECT_EQ(runs.size(), 2U * kWarmUp);
    EXPECT_EQ(std::set<std::string>(runs.begin(), runs.end()).size(), std::size_t{kWarmUp});
}

}  // namespace
