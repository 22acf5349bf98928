#include "host/writable_memory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstring>
#include <string>

namespace ckscribe {
namespace {

const std::size_t pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));

const char constantBytes[] = "constant";

TEST(WritableMemory, OrdinaryMemory_IsWritableAndKeepsItsBytes) {
    std::string bytes(4096, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 31);
    const std::string before = bytes;
    EXPECT_TRUE(IsWritable(bytes.data(), bytes.size()));
    EXPECT_TRUE(IsWritable(bytes.data() + 1, 1));
    EXPECT_EQ(bytes, before);
}

TEST(WritableMemory, ConstantsAndNull_AreNotWritable) {
    EXPECT_FALSE(IsWritable(const_cast<char*>(constantBytes), sizeof constantBytes));
    EXPECT_FALSE(IsWritable(nullptr, 8));
    EXPECT_FALSE(IsWritable(reinterpret_cast<void*>(-8), 8));
    EXPECT_EQ(WritabilityOf(const_cast<char*>(constantBytes), sizeof constantBytes), Writability::kNo);
    EXPECT_EQ(WritabilityOf(nullptr, 8), Writability::kNo);
}

TEST(WritableMemory, OnePageOfTwoIsReadOnly_MemoryIsNotWritable) {
    char* const pages = static_cast<char*>(
        mmap(nullptr, 2 * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(pages, MAP_FAILED);
    std::memset(pages, 'a', 2 * pageSize);
    char* const across = pages + pageSize - 100;
    EXPECT_TRUE(IsWritable(across, 200));
    for (const int protection : {PROT_READ, PROT_NONE}) {
        ASSERT_EQ(mprotect(pages + pageSize, pageSize, protection), 0);
        EXPECT_FALSE(IsWritable(across, 200));
        EXPECT_FALSE(IsWritable(across, 101));
        EXPECT_TRUE(IsWritable(across, 100));
    }
    for (std::size_t i = 0; i < pageSize; ++i) ASSERT_EQ(pages[i], 'a') << i;
    munmap(pages, 2 * pageSize);
}

TEST(WritableMemory, IsWritable_LeavesNoFileOpen) {
    char byte = 'a';
    const int before = dup(0);
    close(before);
    EXPECT_TRUE(IsWritable(&byte, 1));
    EXPECT_FALSE(IsWritable(nullptr, 1));
    const int after = dup(0);
    close(after);
    EXPECT_EQ(after, before);
}

TEST(WritableMemoryDeathTest, NoFileCanBeOpened_WritabilityIsUnknownAndMemoryCountsAsNotWritable) {
    const auto ask = [] {
        const rlimit none = {0, 0};
        setrlimit(RLIMIT_NOFILE, &none);
        char byte = 'a';
        if (IsWritable(&byte, 1)) _exit(1);
        _exit(WritabilityOf(&byte, 1) == Writability::kUnknown ? 0 : 2);
    };
    EXPECT_EXIT(ask(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace ckscribe
