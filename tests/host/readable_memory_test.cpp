#include "host/readable_memory.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace ckscribe {
namespace {

constexpr std::size_t kEverything = static_cast<std::size_t>(-1);

const std::size_t pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));

const void* At(std::uintptr_t address) { return reinterpret_cast<const void*>(address); }

// An IslandOfPages has pages that can be read and written, between two pages that cannot.
class IslandOfPages {
public:
    explicit IslandOfPages(std::size_t pages) : size((pages + 2) * pageSize) {
        all = static_cast<char*>(mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        if (all == MAP_FAILED) std::abort();
        if (mprotect(Begin(), pages * pageSize, PROT_READ | PROT_WRITE) != 0) std::abort();
    }
    ~IslandOfPages() { munmap(all, size); }
    IslandOfPages(const IslandOfPages&) = delete;
    IslandOfPages& operator=(const IslandOfPages&) = delete;

    char* Begin() { return all + pageSize; }
    char* End() { return all + size - pageSize; }

private:
    std::size_t size;
    char* all;
};

class ReadableMemory : public testing::Test {
protected:
    void SetUp() override { ForgetReadablePages(); }
};

TEST_F(ReadableMemory, OrdinaryMemory_IsReadableToItsLength) {
    const char text[100] = "abc";
    EXPECT_EQ(ReadableLength(text, 0), 0U);
    EXPECT_EQ(ReadableLength(text, 1), 1U);
    EXPECT_EQ(ReadableLength(text, sizeof text), sizeof text);
    EXPECT_EQ(ReadableLength("constant", 9), 9U);
}

TEST_F(ReadableMemory, NullAndItsNeighbours_AreNotReadable) {
    for (const std::uintptr_t address : {0U, 1U, 8U, 15U, 16U, 4095U}) {
        EXPECT_EQ(ReadableLength(At(address), 1), 0U) << address;
        EXPECT_EQ(ReadableLength(At(address), kEverything), 0U) << address;
    }
    EXPECT_EQ(ReadableLength(nullptr, 0), 0U);
}

TEST_F(ReadableMemory, AddressesThatNoPointerCanHave_AreNotReadable) {
    for (const std::uintptr_t address :
         {std::uintptr_t{0x0000800000000000}, std::uintptr_t{0x123456789ABCDEF0},
          std::uintptr_t{0x7FFFFFFFFFFFFFFF}, std::uintptr_t{0x8000000000000000},
          std::uintptr_t{0xFFFF7FFFFFFFFFFF}, std::uintptr_t{0xFFFFFFFF80000000}, UINTPTR_MAX - 4096,
          UINTPTR_MAX - 15, UINTPTR_MAX - 1, UINTPTR_MAX}) {
        EXPECT_EQ(ReadableLength(At(address), 1), 0U) << std::hex << address;
        EXPECT_EQ(ReadableLength(At(address), 16), 0U) << std::hex << address;
        EXPECT_EQ(ReadableLength(At(address), kEverything), 0U) << std::hex << address;
    }
}

TEST_F(ReadableMemory, PagesEnd_ReadableLengthEndsThere) {
    IslandOfPages island(3);
    for (std::size_t before = 1; before <= 3 * pageSize; before += 61) {
        const char* const begin = island.End() - before;
        EXPECT_EQ(ReadableLength(begin, before), before);
        EXPECT_EQ(ReadableLength(begin, before + 1), before);
        EXPECT_EQ(ReadableLength(begin, before + 100 * pageSize), before);
        EXPECT_EQ(ReadableLength(begin, kEverything), before);
        EXPECT_EQ(ReadableLength(begin, kEverything / 2), before);
        EXPECT_EQ(ReadableLength(begin, before - 1), before - 1);
    }
}

TEST_F(ReadableMemory, AddressBeforeThePages_IsNotReadable) {
    IslandOfPages island(1);
    EXPECT_EQ(ReadableLength(island.Begin() - 1, 2), 0U);
    EXPECT_EQ(ReadableLength(island.Begin() - pageSize, 3 * pageSize), 0U);
    EXPECT_EQ(ReadableLength(island.Begin(), 3 * pageSize), pageSize);
    EXPECT_EQ(ReadableLength(island.End(), 1), 0U);
}

TEST_F(ReadableMemory, ReadOnlyMemory_IsReadable) {
    IslandOfPages island(1);
    ASSERT_EQ(mprotect(island.Begin(), pageSize, PROT_READ), 0);
    EXPECT_EQ(ReadableLength(island.Begin() + 5, kEverything), pageSize - 5);
}

TEST_F(ReadableMemory, MappingBehindTheEndOfItsFile_IsNotReadable) {
    std::FILE* const file = std::tmpfile();
    ASSERT_NE(file, nullptr);
    ASSERT_EQ(ftruncate(fileno(file), 10), 0);
    void* const mapped = mmap(nullptr, 3 * pageSize, PROT_READ, MAP_SHARED, fileno(file), 0);
    ASSERT_NE(mapped, MAP_FAILED);
    EXPECT_EQ(ReadableLength(mapped, 3 * pageSize), pageSize);
    EXPECT_EQ(ReadableLength(static_cast<char*>(mapped) + pageSize, 1), 0U);
    munmap(mapped, 3 * pageSize);
    std::fclose(file);
}

TEST_F(ReadableMemory, PageIsUnmappedAndForgotten_ItIsNotReadable) {
    IslandOfPages island(1);
    EXPECT_EQ(ReadableLength(island.Begin(), 8), 8U);
    ASSERT_EQ(mprotect(island.Begin(), pageSize, PROT_NONE), 0);
    ForgetReadablePages();
    EXPECT_EQ(ReadableLength(island.Begin(), 8), 0U);
}

TEST_F(ReadableMemory, FurtherPageIsUnmapped_ItIsNotReadableEvenIfNotForgotten) {
    IslandOfPages island(2);
    EXPECT_EQ(ReadableLength(island.Begin(), 2 * pageSize), 2 * pageSize);
    EXPECT_EQ(ReadableLength(island.Begin() + pageSize, 1), 1U);  // remembers the second page
    ASSERT_EQ(mprotect(island.Begin() + pageSize, pageSize, PROT_NONE), 0);
    EXPECT_EQ(ReadableLength(island.Begin(), 2 * pageSize), pageSize);
}

TEST_F(ReadableMemory, MorePagesThanAreRemembered_EachIsReadable) {
    constexpr std::size_t kPages = 300;
    IslandOfPages island(kPages);
    for (int round = 0; round < 2; ++round) {
        for (std::size_t page = 0; page < kPages; ++page) {
            EXPECT_EQ(ReadableLength(island.Begin() + page * pageSize, 1), 1U);
        }
    }
}

TEST_F(ReadableMemory, ArrayEndsWithinAnElement_OnlyWholeElementsCount) {
    IslandOfPages island(1);
    struct Element {
        char bytes[24];
    };
    const auto* const array = reinterpret_cast<const Element*>(island.End() - 60);
    EXPECT_EQ(ReadableCount(array, 0), 0U);
    EXPECT_EQ(ReadableCount(array, 1), 1U);
    EXPECT_EQ(ReadableCount(array, 2), 2U);
    EXPECT_EQ(ReadableCount(array, 3), 2U);
    EXPECT_EQ(ReadableCount(array, kEverything), 2U);
    // 24 times this count is 8 when it wraps around.
    EXPECT_EQ(ReadableCount(array, kEverything / 24 + 1), 2U);
    EXPECT_EQ(ReadableCount(static_cast<const Element*>(nullptr), 5), 0U);
}

TEST_F(ReadableMemory, ObjectCannotBeReadWhole_NothingIsCopied) {
    IslandOfPages island(2);
    const unsigned long number = 0x1122334455667788;
    char* const across = island.Begin() + pageSize - 3;  // unaligned, on two pages
    std::memcpy(across, &number, sizeof number);
    unsigned long copy = 7;
    EXPECT_TRUE(CopyReadable(across, &copy, sizeof copy));
    EXPECT_EQ(copy, number);

    copy = 7;
    EXPECT_FALSE(CopyReadable(island.End() - 7, &copy, sizeof copy));
    EXPECT_FALSE(CopyReadable(nullptr, &copy, sizeof copy));
    EXPECT_FALSE(CopyReadable(At(UINTPTR_MAX - 3), &copy, sizeof copy));
    EXPECT_EQ(copy, 7U);
    EXPECT_TRUE(CopyReadable(island.End() - 8, &copy, sizeof copy));
    EXPECT_EQ(copy, 0U);
}

TEST_F(ReadableMemory, Text_EndsAtItsTerminatorOrWhereMemoryEnds) {
    EXPECT_EQ(ReadableTextLength(nullptr), 0U);
    EXPECT_EQ(ReadableTextLength(""), 0U);
    EXPECT_EQ(ReadableTextLength("abc"), 3U);
    EXPECT_EQ(ReadableTextLength(reinterpret_cast<const char*>(UINTPTR_MAX - 2)), 0U);

    IslandOfPages island(2);
    std::memset(island.Begin(), 'x', 2 * pageSize);
    EXPECT_EQ(ReadableTextLength(island.Begin()), 2 * pageSize);
    EXPECT_EQ(ReadableTextLength(island.Begin() + 1), 2 * pageSize - 1);
    EXPECT_EQ(ReadableTextLength(island.End() - 1), 1U);
    EXPECT_EQ(ReadableTextLength(island.End()), 0U);
    island.Begin()[pageSize] = '\0';
    EXPECT_EQ(ReadableTextLength(island.Begin() + 5), pageSize - 5);
    island.Begin()[pageSize - 1] = '\0';
    EXPECT_EQ(ReadableTextLength(island.Begin() + 5), pageSize - 6);
    island.End()[-1] = '\0';
    EXPECT_EQ(ReadableTextLength(island.Begin() + pageSize + 1), pageSize - 2);
}

}  // namespace
}  // namespace ckscribe
