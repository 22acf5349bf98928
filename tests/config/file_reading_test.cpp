#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

#include "config/file_text.h"
#include "tests/config/configuration_test.h"

namespace {

class FileReadingTest : public ConfigurationTest {
protected:
    // Reads the file and returns its text. If reading fails, checks that nothing is left to free, and returns
    // "(failed)".
    std::string Contents(unsigned long expectedSize) const {
        char* contents = nullptr;
        unsigned long size = 4711;
        const int result = store.ReadConfigurationFile(path.c_str(), &contents, &size);
        const std::unique_ptr<char[]> owned(contents);
        EXPECT_EQ(expectedSize, size);
        if (result == 1) return contents;
        EXPECT_EQ(0, result);
        EXPECT_EQ(nullptr, contents);
        return "(failed)";
    }
};

TEST_F(FileReadingTest, FileIsRead_TextIsWhole) {
    Write("first\nsecond");
    EXPECT_EQ("first\nsecond", Contents(12));
    Write("x");
    EXPECT_EQ("x", Contents(1));
}

TEST_F(FileReadingTest, FileHoldsBytesOfEveryValue_AllAreRead) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
    Write(bytes);
    char* contents = nullptr;
    unsigned long size = 0;
    ASSERT_EQ(1, store.ReadConfigurationFile(path.c_str(), &contents, &size));
    const std::unique_ptr<char[]> owned(contents);
    ASSERT_EQ(256UL, size);
    EXPECT_EQ(bytes + '\0', std::string(contents, 257));
}

TEST_F(FileReadingTest, ArgumentsAreNull_ReadingFails) {
    Write("x");
    char* contents = nullptr;
    unsigned long size = 0;
    EXPECT_EQ(0, store.ReadConfigurationFile(nullptr, &contents, &size));
    EXPECT_EQ(0, store.ReadConfigurationFile(path.c_str(), nullptr, &size));
    EXPECT_EQ(0, store.ReadConfigurationFile(path.c_str(), &contents, nullptr));
    EXPECT_EQ(nullptr, contents);
}

TEST_F(FileReadingTest, FileIsMissing_ReadingFails) { EXPECT_EQ("(failed)", Contents(0)); }

TEST_F(FileReadingTest, FileIsEmpty_ReadingFails) {
    Write("");
    EXPECT_EQ("(failed)", Contents(0));
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
}

TEST_F(FileReadingTest, PipeReadsAsEmptyAtOnce) {
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    EXPECT_EQ("(failed)", Contents(0));
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    EXPECT_EQ(1, store.TestR());
    EXPECT_EQ(1, store.TestRW());
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", "V"));
}

TEST_F(FileReadingTest, DeviceReadsAsEmpty) {
    path = "/dev/zero";
    EXPECT_EQ("(failed)", Contents(0));
}

TEST_F(FileReadingTest, DirectoryHoldsNoKey) {
    ASSERT_EQ(0, mkdir(path.c_str(), 0700));
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    EXPECT_EQ(1, store.TestR());
    EXPECT_EQ(0, store.TestRW());
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", "V"));
}

TEST_F(FileReadingTest, TextEndsAtANul) {
    Write(std::string("Misc = {\n A = 1;\n\0 Key = V;\n}\n", 31));
    EXPECT_EQ("1", Lookup("Misc", "A"));
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
}

// The store asks for 9 of 8 GiB and 9 bytes: it uses the lower 32 bits of the size.
TEST_F(FileReadingTest, HugeFileIsReadInPart) {
    Write(OneEntry("Misc", "Key", "V"));
    ASSERT_EQ(0, truncate(path.c_str(), (8L << 30) + 9));
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
    EXPECT_EQ(0, store.SetConfigurationInfo("Misc", "Key", "W"))
        << "a text that is not whole is not written back";
    struct stat status;
    ASSERT_EQ(0, stat(path.c_str(), &status));
    EXPECT_EQ((8L << 30) + 9, status.st_size);
}

TEST_F(FileReadingTest, FileIsLargerThanMemory_ReadingFails) {
    Write("x");
    constexpr long kSize = 1L << 43;
    ASSERT_EQ(0, truncate(path.c_str(), kSize)) << "the file system has no files of 8 TiB";
    ckscribe::FileText file;
    EXPECT_FALSE(file.Read(path.c_str()));
    EXPECT_EQ("(none)", Lookup("Misc", "Key"));
}

TEST_F(FileReadingTest, OpenedFileIsNotInherited) {
    Write("x");
    const int file = ckscribe::OpenFile(path.c_str(), O_RDONLY);
    ASSERT_LE(0, file);
    EXPECT_EQ(FD_CLOEXEC, fcntl(file, F_GETFD) & FD_CLOEXEC);
    EXPECT_EQ(O_NONBLOCK, fcntl(file, F_GETFL) & O_NONBLOCK);
    close(file);
}

TEST_F(FileReadingTest, NoFileStaysOpen) {
    Write(OneEntry("Misc", "Key", "V"));
    const int before = ckscribe::OpenFile(path.c_str(), O_RDONLY);
    close(before);
    Lookup("Misc", "Key");
    store.TestR();
    store.TestRW();
    store.SetConfigurationInfo("Misc", "Key", "W");
    Write("");
    Lookup("Misc", "Key");
    const int after = ckscribe::OpenFile(path.c_str(), O_RDONLY);
    close(after);
    EXPECT_EQ(before, after);
}

TEST_F(FileReadingTest, TestRAndTestRW_SayHowTheFileCanBeOpened) {
    EXPECT_EQ(0, store.TestR());
    EXPECT_EQ(0, store.TestRW());
    Write("x");
    EXPECT_EQ(1, store.TestR());
    EXPECT_EQ(1, store.TestRW());
}

TEST_F(FileReadingTest, StoreIsNotTheFile_TestRAndTestRWSucceed) {
    for (const int type : {1, 2, -1}) {
        WendrafilConfiguration::SetLibraryType(type);
        EXPECT_EQ(type, WendrafilConfiguration::GetLibraryType());
        EXPECT_EQ(1, store.TestR());
        EXPECT_EQ(1, store.TestRW());
    }
}

TEST_F(FileReadingTest, DumpFile_WritesTheTextToTheStream) {
    char dumped[64] = "";
    FILE* stream = fmemopen(dumped, sizeof dumped, "w");
    EXPECT_EQ(0, store.DumpFile(stream));
    Write("Misc = {\n%s;\n}");
    EXPECT_EQ(1, store.DumpFile(stream));
    fclose(stream);
    EXPECT_STREQ("Misc = {\n%s;\n}", dumped);
}

TEST_F(FileReadingTest, LookupReadsTheFileAnewEachTime) {
    Write(OneEntry("Misc", "Key", "1"));
    EXPECT_EQ("1", Lookup("Misc", "Key"));
    Write(OneEntry("Misc", "Key", "2"));
    EXPECT_EQ("2", Lookup("Misc", "Key"));
}

TEST_F(FileReadingTest, ValueIsCutToTheBuffer) {
    Write(OneEntry("Misc", "Key", "abcdef"));
    const struct {
        int size;
        const char* value;
    } cases[] = {{1, ""}, {2, "a"}, {4, "abc"}, {6, "abcde"}, {7, "abcdef"}, {8, "abcdef"}, {-1, "abcdef"}};
    for (const auto& c : cases) {
        char value[16];
        std::memset(value, 'x', sizeof value);
        EXPECT_EQ(1, store.GetConfigurationEntry("Misc", "Key", value, c.size));
        EXPECT_STREQ(c.value, value);
        EXPECT_EQ('x', value[std::strlen(c.value) + 1]);
    }
}

TEST_F(FileReadingTest, BufferOfNoCharactersStaysAsItIs) {
    Write(OneEntry("Misc", "Key", "abcdef"));
    char value[] = "x";
    EXPECT_EQ(1, store.GetConfigurationEntry("Misc", "Key", value, 0));
    EXPECT_STREQ("x", value);
}

TEST_F(FileReadingTest, ArgumentsOfALookupAreNull_NothingIsFound) {
    Write(OneEntry("Misc", "Key", "V"));
    char value[] = "untouched";
    EXPECT_EQ(0, store.GetConfigurationEntry(nullptr, "Key", value, sizeof value));
    EXPECT_EQ(0, store.GetConfigurationEntry("Misc", nullptr, value, sizeof value));
    EXPECT_EQ(0, store.GetConfigurationEntry("Misc", "Key", nullptr, sizeof value));
    EXPECT_STREQ("untouched", value);
}

TEST_F(FileReadingTest, OnlyTheFileStoreFindsAnything) {
    Write(OneEntry("Misc", "Key", "V"));
    for (const int type : {0, 1, 2, -1}) {
        WendrafilConfiguration::SetLibraryType(type);
        char value[10] = "untouched";
        EXPECT_EQ(type == 0, store.GetConfigurationInfo("Misc", "Key", value, sizeof value));
        EXPECT_EQ(type == 0, store.GetEntry("Misc", "Key", value, sizeof value));
        EXPECT_STREQ(type == 0 ? "V" : "untouched", value);
        EXPECT_EQ(1, store.GetConfigurationEntry("Misc", "Key", value, sizeof value));
    }
}

TEST_F(FileReadingTest, GetEntryCutsToItsBuffer) {
    Write(OneEntry("Misc", "Key", "abcdef"));
    char value[8] = "xxxxxxx";
    EXPECT_EQ(1, store.GetEntry("Misc", "Key", value, 4UL));
    EXPECT_STREQ("abc", value);
}

TEST_F(FileReadingTest, RegistryHoldsNothing) {
    Write(OneEntry("Misc", "Key", "V"));
    char value[] = "untouched";
    EXPECT_EQ(0, store.GetRegistryEntry("Misc", "Key", value, sizeof value));
    EXPECT_STREQ("untouched", value);
    EXPECT_EQ(0, store.SetRegistryEntry("Misc", "Key", "W", 0));
    EXPECT_EQ(OneEntry("Misc", "Key", "V"), Text());
}

TEST_F(FileReadingTest, ServerSectionIsCopiedWhenItFits) {
    char name[64];
    std::memset(name, 'x', sizeof name);
    EXPECT_EQ(0, WendrafilConfiguration::GetServerSection(nullptr, 64));
    EXPECT_EQ(0, WendrafilConfiguration::GetServerSection(name, 12));
    EXPECT_EQ('x', name[0]);
    EXPECT_EQ(1, WendrafilConfiguration::GetServerSection(name, 13));
    EXPECT_STREQ("OrmaSA Serve", name);
    EXPECT_EQ('x', name[13]);
    EXPECT_EQ(1, WendrafilConfiguration::GetServerSection(name, 14));
    EXPECT_STREQ("OrmaSA Server", name);
}

TEST_F(FileReadingTest, ServerSectionKeeps63Characters) {
    char name[65];
    EXPECT_EQ(0, WendrafilConfiguration::SetServerSection(nullptr));
    for (const size_t length : {0U, 62U, 63U, 64U, 100U}) {
        EXPECT_EQ(1, WendrafilConfiguration::SetServerSection(std::string(length, 's').c_str()));
        EXPECT_EQ(1, WendrafilConfiguration::GetServerSection(name, sizeof name));
        EXPECT_EQ(std::string(std::min<size_t>(length, 63), 's'), name);
    }
}

TEST_F(FileReadingTest, NamesOfSectionsAndStc_AreConstant) {
    EXPECT_STREQ("LBLib2", WendrafilConfiguration::GetLBLibSectionName());
    EXPECT_STREQ("Session", WendrafilConfiguration::GetSessionSectionName());
    EXPECT_EQ(1, WendrafilConfiguration::IsSTCEnabled());
}

// A derived class relies on these promises.
class DerivedStore : public WendrafilConfiguration {
public:
    void ExpectFreshState() {
        EXPECT_EQ(0U, loggingMask);
        EXPECT_EQ(0U, reqToCheckConfigFile);
        for (const auto* buffer :
             {&libraryFileName, &ckLogLibraryFileName, &lbLibLibraryFileName, &logFileName, &errorFileName}) {
            EXPECT_EQ(500U, sizeof *buffer);
            for (const char c : *buffer) EXPECT_EQ('\0', c);
        }
    }
};

TEST_F(FileReadingTest, FreshInstance_ResultBuffersAndMaskAreEmpty) {
    alignas(DerivedStore) unsigned char memory[sizeof(DerivedStore)];
    std::memset(memory, 0xA5, sizeof memory);
    DerivedStore* fresh = new (memory) DerivedStore;
    fresh->ExpectFreshState();
    fresh->~DerivedStore();
}

// No lookup shares data with another lookup.
TEST_F(FileReadingTest, LookupsOnOneInstanceMayRunAtTheSameTime) {
    Write("A = {\n Key = 1;\n}\nB = {\n Key = 2;\n}\n");
    std::vector<std::thread> threads;
    for (const char* section : {"A", "B", "A", "B"}) {
        threads.emplace_back([this, section] {
            for (int i = 0; i < 500; ++i) EXPECT_EQ(section[0] == 'A' ? "1" : "2", Lookup(section, "Key"));
        });
    }
    for (std::thread& thread : threads) thread.join();
}

static_assert(std::has_virtual_destructor_v<WendrafilConfiguration>);

}  // namespace
