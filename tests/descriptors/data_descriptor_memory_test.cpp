// These tests show how DataDescriptor takes memory and what it does when there is none. The linker leads the
// allocations of this program through the functions below (--wrap). A test can let one of them fail.

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

#include "descriptors/data_descriptor.h"

namespace {

// This many more allocations succeed; if it is negative, all of them do.
int allocationsLeft = -1;

std::size_t lastSize = 0;

bool TakeAllocation(std::size_t size) {
    lastSize = size;
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

void* __wrap_malloc(std::size_t size) { return TakeAllocation(size) ? __real_malloc(size) : nullptr; }

void* __wrap_realloc(void* block, std::size_t size) {
    return TakeAllocation(size) ? __real_realloc(block, size) : nullptr;
}
}

namespace {

class DataDescriptorMemory : public testing::Test {
protected:
    ~DataDescriptorMemory() override { allocationsLeft = -1; }

    std::string Data() const {
        std::string data(descriptor.GetDataSize(), '?');
        descriptor.GetData(data.data());
        return data;
    }

    DataDescriptor descriptor;
    DescriptorReport report;
};

TEST_F(DataDescriptorMemory, NoMemoryForUseData_ValueIsEmptyAndMemoryErrorIsSet) {
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

TEST_F(DataDescriptorMemory, NoMemoryForAddDataByte_ValueStaysAndBothErrorsAreSet) {
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

TEST_F(DataDescriptorMemory, RoomIsLeft_AddDataByteAllocatesNothing) {
    char seven[] = "1234567";
    descriptor.UseData(seven, 7, report);
    allocationsLeft = 0;
    EXPECT_TRUE(descriptor.AddDataByte('8', report));
    EXPECT_EQ(report.errorOccurred(), 0);
    EXPECT_FALSE(descriptor.AddDataByte('9', report));
    allocationsLeft = -1;
    EXPECT_EQ(Data(), "12345678");
}

TEST_F(DataDescriptorMemory, ValueGrows_RoomIsAMultipleOfEight) {
    char bytes[] = "123456789abcdefgh";
    const std::size_t rooms[] = {8, 8, 16, 16, 24};
    const unsigned short lengths[] = {1, 8, 9, 16, 17};
    for (std::size_t i = 0; i < std::size(lengths); ++i) {
        descriptor.UseData(bytes, lengths[i], report);
        EXPECT_EQ(lastSize, rooms[i]) << lengths[i];
    }
    descriptor.UseData(bytes, 16, report);
    descriptor.AddDataByte('+', report);
    EXPECT_EQ(lastSize, 24u);
}

TEST_F(DataDescriptorMemory, NoMemoryForTheFirstByte_ValueStaysEmptyAndBothErrorsAreSet) {
    allocationsLeft = 0;
    EXPECT_FALSE(descriptor.AddDataByte('1', report));
    allocationsLeft = -1;
    EXPECT_EQ(Data(), "");
    EXPECT_EQ(report.memoryError, 1);
    EXPECT_EQ(report.parsingError, 1);
}

TEST_F(DataDescriptorMemory, MemoryEndsWhileReading_ValueHoldsTheBytesThatFit) {
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
