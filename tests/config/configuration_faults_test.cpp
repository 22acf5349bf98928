// The system fails the store here: it has no memory, and reads and writes fail or are short. The linker
// replaces the calls of this program.

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <new>
#include <string>

#include "config/file_text.h"
#include "config/growing_text.h"
#include "tests/config/configuration_test.h"

namespace {

constexpr int kNever = -1;

struct Faults {
    int arraysUntilFailure = kNever;
    int allocationsUntilFailure = kNever;
    bool failsStatus = false;
    long readLimit = -1;    // the most that a read gives; -2 for an error
    long writeLimit = -1;   // the most that a write takes; -2 for an error
    int interruptions = 0;  // of the next writes
    int writes = 0;
} faults;

// Counts down to 0. Returns true at 0 and from then on.
bool IsDue(int* countdown) {
    if (*countdown == kNever) return false;
    if (*countdown == 0) return true;
    --*countdown;
    return false;
}

}  // namespace

void* operator new(std::size_t size) {
    void* const block = IsDue(&faults.allocationsUntilFailure) ? nullptr : std::malloc(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return IsDue(&faults.arraysUntilFailure) ? nullptr : std::malloc(size);
}

extern "C" {

int __real_fstat(int file, struct stat* status);
ssize_t __real_read(int file, void* buffer, size_t size);
ssize_t __real_write(int file, const void* buffer, size_t size);

int __wrap_fstat(int file, struct stat* status) {
    return faults.failsStatus ? -1 : __real_fstat(file, status);
}

ssize_t __wrap_read(int file, void* buffer, size_t size) {
    if (faults.readLimit == -2) return -1;
    const size_t most = static_cast<size_t>(faults.readLimit);
    return __real_read(file, buffer, faults.readLimit >= 0 && size > most ? most : size);
}

ssize_t __wrap_write(int file, const void* buffer, size_t size) {
    ++faults.writes;
    if (faults.interruptions > 0) {
        --faults.interruptions;
        errno = EINTR;
        return -1;
    }
    if (faults.writeLimit == -2) {
        errno = ENOSPC;
        return -1;
    }
    const size_t most = static_cast<size_t>(faults.writeLimit);
    return __real_write(file, buffer, faults.writeLimit >= 0 && size > most ? most : size);
}

}  // extern "C"

namespace {

class FaultsTest : public ConfigurationTest {
protected:
    FaultsTest() { Write(kText); }
    ~FaultsTest() override { faults = Faults(); }

    void ExpectEveryEditFailsAndNothingChanges() {
        EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", "new"));
        EXPECT_EQ(0, store.ClearConfigurationInfo("Misc", "Key"));
        EXPECT_EQ(0, store.ClearConfigurationInfo("Misc"));
        EXPECT_EQ(0, store.ReplaceConfigurationInfo("Misc", "x", 0));
        EXPECT_EQ(0, store.DeleteVirtualToken(0, false));
        EXPECT_EQ(0, store.RemoveVirtualTokenMember(0, "1", false));
        faults = Faults();
        EXPECT_EQ(kText, Text());
    }

    static constexpr char kText[] =
        "Misc = {\n   Key = old;\n}\n"
        "VirtualToken = {\n   VirtualToken00Label = zero;\n   VirtualToken00Members = 1,2;\n"
        "   VirtualToken01Label = one;\n}\n";
};

TEST_F(FaultsTest, MemoryForTheTextIsMissing_NothingIsFound) {
    faults.arraysUntilFailure = 0;
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    char* contents = nullptr;
    unsigned long size = 0;
    EXPECT_EQ(0, store.ReadConfigurationFile(path.c_str(), &contents, &size));
    EXPECT_EQ(nullptr, contents);
    EXPECT_EQ(0, store.DumpFile(stdout));
    EXPECT_STREQ("/usr/lib/libmordavek2.so", store.LibraryFileName());
    ExpectEveryEditFailsAndNothingChanges();
}

TEST_F(FaultsTest, MemoryForTheNewTextIsMissing_FileIsUntouched) {
    faults.allocationsUntilFailure = 0;
    ExpectEveryEditFailsAndNothingChanges();
}

TEST_F(FaultsTest, MemoryEndsInTheMiddleOfTheNewText_FileIsUntouched) {
    std::string text(kText);
    for (int i = 0; i < 1000; ++i) text += "# some line or other\n";
    Write(text);
    int successes = 0;
    for (int countdown = 0; successes == 0; ++countdown) {
        ASSERT_GT(100, countdown);
        faults.allocationsUntilFailure = countdown;
        successes += store.SetConfigurationInfo("Misc", "Key", "new");
        faults.allocationsUntilFailure = kNever;
        EXPECT_EQ(successes == 1 ? "new" : "old", Lookup("Misc", "Key"));
        EXPECT_EQ(text.size(), Text().size());
    }
}

TEST_F(FaultsTest, MemoryForTheTokensThatStayIsMissing_FileIsUntouched) {
    for (int countdown = 0; countdown < 2; ++countdown) {
        faults.allocationsUntilFailure = countdown;
        EXPECT_EQ(0, store.DeleteVirtualToken(1, false));
        faults.allocationsUntilFailure = kNever;
        EXPECT_EQ(kText, Text());
    }
}

TEST_F(FaultsTest, StatusOfFileFails_NothingIsFound) {
    faults.failsStatus = true;
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    ExpectEveryEditFailsAndNothingChanges();
}

TEST_F(FaultsTest, ReadFails_TextIsEmpty) {
    faults.readLimit = -2;
    ckscribe::FileText file;
    EXPECT_TRUE(file.Read(path.c_str()));
    EXPECT_STREQ("", file.text.get());
    EXPECT_EQ(sizeof kText - 1, file.size);
    EXPECT_FALSE(file.isWhole);
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    ExpectEveryEditFailsAndNothingChanges();
}

TEST_F(FaultsTest, ReadGivesNoByte_ReadingFails) {
    faults.readLimit = 0;
    ckscribe::FileText file;
    EXPECT_FALSE(file.Read(path.c_str()));
    EXPECT_EQ(nullptr, file.text);
    ExpectEveryEditFailsAndNothingChanges();
}

TEST_F(FaultsTest, ReadIsShort_TextEndsEarly) {
    faults.readLimit = 9;
    ckscribe::FileText file;
    EXPECT_TRUE(file.Read(path.c_str()));
    EXPECT_STREQ("Misc = {\n", file.text.get());
    EXPECT_FALSE(file.isWhole);
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    faults.readLimit = 20;
    EXPECT_EQ("ol", Lookup("Misc", "Key"));
    faults.readLimit = sizeof kText - 2;
    ExpectEveryEditFailsAndNothingChanges();
}

TEST_F(FaultsTest, WritesAreShortOrInterrupted_WholeFileIsWritten) {
    faults.writeLimit = 7;
    faults.interruptions = 2;
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", "new"));
    EXPECT_LT(10, faults.writes);
    std::string expected(kText);
    EXPECT_EQ(expected.replace(expected.find("old"), 3, "new"), Text());
}

// The file is truncated by then, and the store cannot undo that.
TEST_F(FaultsTest, WriteFails_WritingStopsAndResultIsSuccess) {
    faults.writeLimit = -2;
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", "new"));
    EXPECT_EQ(1, faults.writes);
    EXPECT_EQ("", Text());
}

TEST_F(FaultsTest, FileIsWritten_OneWriteTakesTheWholeText) {
    EXPECT_EQ(1, store.SetConfigurationInfo("Misc", "Key", "new"));
    EXPECT_EQ(1, faults.writes);
}

TEST(GrowingText, MemoryEnds_TextSoFarStays) {
    ckscribe::GrowingText text;
    text.Append("");
    EXPECT_TRUE(text.IsWhole());
    EXPECT_EQ("", text.View());
    text.Append("abc");
    const std::string more(100, 'x');
    faults.allocationsUntilFailure = 0;
    text.Append(more);
    faults.allocationsUntilFailure = kNever;
    EXPECT_FALSE(text.IsWhole());
    text.Append("d");
    EXPECT_FALSE(text.IsWhole());
    EXPECT_EQ("abc", text.View());
}

}  // namespace
