// What DataDescriptor does when there is no memory. The linker leads the allocations of this program through
// the functions below (--wrap), so that a test can let one fail.

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "descriptors/data_descriptor.h"

namespace {

// How many more allocations succeed; negative: all of them.
int allocationsLeft = -1;

bool TakeAllocation() {
    if (allocationsLeft == 0) return false;
    if (allocationsLeft > 0) --allocationsLeft;
    return true;
}

}  // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);

void* __wrap_malloc(std::size_t size) { return TakeAllocation() ? __real_malloc(size) : nullptr; }

void* __wrap_realloc(void* block, std::size_t size) {
    return TakeAllocation() ? __real_realloc(block, size) : nullptr;
}
}

namespace {

class DataDescriptorWithoutMemory : public testing::Test {
protected:
    ~DataDescriptorWithoutMemory() override { allocationsLeft = -1; }

    std::string Data() const {
        std::string data(descriptor.GetDataSize(), '?');
        descriptor.GetData(data.data());
        return data;
    }

    DataDescriptor descriptor;
    DescriptorReport report;
};

TEST_F(DataDescriptorWithoutMemory, UseDataIsEmptyAndAMemoryError) {
    char first[] = "first", second[] = "second";
    descriptor.UseData(first, 5, report);
    allocationsLeft = 0;
    descriptor.UseData(second, 6, report);
    allocationsLeft = -1;
    EXPECT_EQ(Data(), "");
    EXPECT_EQ(report.memoryError, 1);
    EXPECT_EQ(report.parsingError, 0);
    descriptor.AddDataByte('x', report);
    EXPECT_EQ(Data(), "x");
}

TEST_F(DataDescriptorWithoutMemory, AddDataByteLeavesTheValueAndSetsBothErrors) {
    char eight[] = "12345678";
    descriptor.UseData(eight, 8, report);
    allocationsLeft = 0;
    EXPECT_FALSE(descriptor.AddDataByte('9', report));
    allocationsLeft = -1;
    EXPECT_EQ(Data(), "12345678");
    EXPECT_EQ(report.memoryError, 1);
    EXPECT_EQ(report.parsingError, 1);
    EXPECT_TRUE(descriptor.AddDataByte('9', report));
    EXPECT_EQ(Data(), "123456789");
}

TEST_F(DataDescriptorWithoutMemory, AddDataByteNeedsNoneUpToAMultipleOfEight) {
    char seven[] = "1234567";
    descriptor.UseData(seven, 7, report);
    allocationsLeft = 0;
    EXPECT_TRUE(descriptor.AddDataByte('8', report));
    EXPECT_EQ(report.errorOccurred(), 0);
    EXPECT_FALSE(descriptor.AddDataByte('9', report));
    allocationsLeft = -1;
    EXPECT_EQ(Data(), "12345678");
}

TEST_F(DataDescriptorWithoutMemory, TheFirstByteNeedsSome) {
    allocationsLeft = 0;
    EXPECT_FALSE(descriptor.AddDataByte('1', report));
    allocationsLeft = -1;
    EXPECT_EQ(Data(), "");
    EXPECT_EQ(report.memoryError, 1);
    EXPECT_EQ(report.parsingError, 1);
}

TEST_F(DataDescriptorWithoutMemory, ReadingEndsAtWhatFits) {
    char plain[] = "123456789abcdefghijk";
    char numeric[] = "3132333435363738396162";
    struct {
        int format;
        char* text;
        unsigned int length;
    } const cases[] = {{1, plain, 20}, {2, plain, 20}, {0, numeric, 22}};
    for (const auto& [format, text, length] : cases) {
        DescriptorReport fresh;
        descriptor.Reset();
        allocationsLeft = 1;
        descriptor.GetDataValueFromText(format, text, length, fresh);
        allocationsLeft = -1;
        EXPECT_EQ(Data(), "12345678") << format;
        EXPECT_EQ(fresh.memoryError, 1) << format;
        EXPECT_EQ(fresh.parsingError, 1) << format;
    }
}

}  // namespace
