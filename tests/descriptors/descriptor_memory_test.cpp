// These tests show how much descriptors take from the heap and what they do without it. This program is
// linked with --wrap for malloc and realloc, with which record texts grow, and for operator new. The
// functions named __wrap_ below replace them.

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <numeric>
#include <vector>

#include "descriptors/command_descriptor.h"
#include "descriptors/list_descriptors.h"
#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"
#include "tests/logging_configuration_file.h"

using namespace ckscribe;

namespace {

bool isWatching = false;
bool isOutOfMemory = false;
std::vector<std::size_t> sizes;

}  // namespace

extern "C" void* __real_malloc(std::size_t size);

extern "C" void* __wrap_malloc(std::size_t size) { return isOutOfMemory ? nullptr : __real_malloc(size); }

extern "C" void* __real_realloc(void* memory, std::size_t size);

extern "C" void* __wrap_realloc(void* memory, std::size_t size) {
    return isOutOfMemory ? nullptr : __real_realloc(memory, size);
}

// _Znwm is operator new.
extern "C" void* __real__Znwm(std::size_t size);

extern "C" void* __wrap__Znwm(std::size_t size) {
    if (isOutOfMemory) throw std::bad_alloc();
    if (isWatching) {
        isWatching = false;  // the vector's growth does not count
        sizes.push_back(size);
        isWatching = true;
    }
    return __real__Znwm(size);
}

namespace {

class DescriptorMemory : public testing::Test {
protected:
    DescriptorMemory() {
        AbstractDescriptor::uInstanceCount = 0;
        sizes.clear();
    }
    ~DescriptorMemory() override {
        isWatching = isOutOfMemory = false;
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
    }
};

// Returns the bytes that a list takes from the heap while it grows to this many handles. Growing copies what
// the list holds. Therefore the bytes also bound the time.
std::size_t BytesTakenByHandles(std::size_t count) {
    const std::vector<unsigned long> handles(count, 7);
    sizes.clear();
    isWatching = true;
    {
        const ObjectHandleListDescriptor list(handles.data(), count);
        EXPECT_EQ(list.ChildCount(), count);
    }
    isWatching = false;
    return std::accumulate(sizes.begin(), sizes.end(), std::size_t{0});
}

TEST_F(DescriptorMemory, ListOfChildrenIsFull_RoomDoubles) {
    std::vector<AbstractDescriptor*> children;
    for (unsigned i = 0; i < 33; ++i) children.push_back(new SessionHandleDescriptor(i));
    DescriptorComposite composite;
    isWatching = true;
    for (AbstractDescriptor* const child : children) composite.AddDescriptor(child);
    isWatching = false;
    constexpr std::size_t kPointer = sizeof(AbstractDescriptor*);
    EXPECT_EQ(sizes, (std::vector<std::size_t>{8 * kPointer, 16 * kPointer, 32 * kPointer, 64 * kPointer}));
}

TEST_F(DescriptorMemory, FourTimesTheHandlesCostAtMostFiveTimesTheMemory) {
    EXPECT_LE(BytesTakenByHandles(200000), 5 * BytesTakenByHandles(50000));
}

TEST_F(DescriptorMemory, NoMemoryForAChild_ChildIsDeleted) {
    DescriptorComposite composite;
    for (unsigned i = 0; i < 8; ++i) composite.AddDescriptor(new SessionHandleDescriptor(i));
    auto* const ninth = new SessionHandleDescriptor(8);
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 10U);
    isOutOfMemory = true;
    EXPECT_THROW(composite.AddDescriptor(ninth), std::bad_alloc);
    isOutOfMemory = false;
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 9U);
    EXPECT_EQ(composite.ChildCount(), 8U);
    composite.AddDescriptor(new SessionHandleDescriptor(9));
    EXPECT_EQ(composite.ChildCount(), 9U);
}

TEST_F(DescriptorMemory, NoMemoryForAValue_DescriptorHoldsNoValue) {
    bUseNewLogFormat.store(1);
    ValueDescriptor value("before", 6);
    isOutOfMemory = true;
    EXPECT_THROW(value.SetValue("after", 5), std::bad_alloc);
    EXPECT_THROW(ValueDescriptor("abc", 3), std::bad_alloc);
    isOutOfMemory = false;
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 1U);
    EXPECT_EQ(value.Length(), 0U);
    RecordText text;
    value.PrintDescription(text, 0, nullptr);
    EXPECT_EQ(text.Text(), "\"<null>\"");
    bUseNewLogFormat.store(0);
}

TEST_F(DescriptorMemory, NoMemoryForARecord_NothingIsWritten) {
    LoggingConfigurationFile file;
    const std::string log = file.directory.File("log");
    AbstractDescriptor::CloseCaptureStream();
    AbstractDescriptor::OpenCaptureStream(reinterpret_cast<const unsigned char*>(log.c_str()));
    bUseNewLogFormat.store(1);
    const ByteStringDescriptor large(std::string(5000, 'x').data(), 5000);
    SessionHandleDescriptor(5).Capture();
    isOutOfMemory = true;
    EXPECT_THROW(large.Capture(), std::bad_alloc);
    isOutOfMemory = false;
    EXPECT_EQ(FileText(log), "Sesn=5");
    SessionHandleDescriptor(6).Capture();
    EXPECT_EQ(FileText(log), "Sesn=5Sesn=6");
    AbstractDescriptor::uInstanceCount = 0;
    AbstractDescriptor::fpCaptureStream.Close();
    AbstractDescriptor::isStreamOpen.store(0);
    bUseNewLogFormat.store(0);
    AbstractDescriptor::uInstanceCount = 1;  // large
}

TEST_F(DescriptorMemory, ShortTree_TakesNothingFromTheHeap) {
    isOutOfMemory = true;
    for (int i = 0; i < 1000; ++i) {
        const TreeMemory memory;
        CommandDescriptor command(kSign, CommandPhase::kStart, 0);
        for (unsigned child = 0; child < 9; ++child)
            command.AddDescriptor(new SessionHandleDescriptor(child));
        command.AddDescriptor(new ByteStringDescriptor("abc", 3));
    }
    isOutOfMemory = false;
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
}

TEST_F(DescriptorMemory, TreeMemoryIsFull_MemoryComesFromTheHeap) {
    const TreeMemory memory;
    isWatching = true;
    void* const large = TreeMemory::Take(TreeMemory::kSize + 1);
    void* const all = TreeMemory::Take(TreeMemory::kSize);
    void* const more = TreeMemory::Take(1);
    isWatching = false;
    EXPECT_EQ(sizes, (std::vector<std::size_t>{TreeMemory::kSize + 1, 1}));
    std::memset(large, 1, TreeMemory::kSize + 1);
    std::memset(all, 2, TreeMemory::kSize);
    std::memset(more, 3, 1);
    TreeMemory::GiveBack(more, 1);
    TreeMemory::GiveBack(all, TreeMemory::kSize);
    TreeMemory::GiveBack(large, TreeMemory::kSize + 1);
    TreeMemory::GiveBack(nullptr, 0);
    isOutOfMemory = true;
    EXPECT_THROW(TreeMemory::Take(TreeMemory::kSize + 1), std::bad_alloc);
    EXPECT_THROW(TreeMemory::Take(static_cast<std::size_t>(-1)), std::bad_alloc);
    isOutOfMemory = false;
}

TEST_F(DescriptorMemory, PiecesOfTreeMemory_LieApartAndAreAligned) {
    const TreeMemory memory;
    std::byte* const first = static_cast<std::byte*>(TreeMemory::Take(1));
    std::byte* const second = static_cast<std::byte*>(TreeMemory::Take(33));
    std::byte* const third = static_cast<std::byte*>(TreeMemory::Take(8));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % alignof(std::max_align_t), 0U);
    EXPECT_EQ(second - first, 16);
    EXPECT_EQ(third - second, 48);
    TreeMemory::GiveBack(second, 33);  // not the last: its room stays taken
    EXPECT_EQ(static_cast<std::byte*>(TreeMemory::Take(1)) - third, 16);
}

TEST_F(DescriptorMemory, TreeMemoryIsNested_InnermostIsUsedUntilItEnds) {
    const TreeMemory outer;
    std::byte* const first = static_cast<std::byte*>(TreeMemory::Take(16));
    {
        const TreeMemory inner;
        std::byte* const between = static_cast<std::byte*>(TreeMemory::Take(16));
        EXPECT_TRUE(between + 16 <= first || between >= first + TreeMemory::kSize);
        TreeMemory::GiveBack(between, 16);
    }
    EXPECT_EQ(TreeMemory::Take(16), first + 16);
}

#ifndef NDEBUG
TEST(TreeMemoryDeathTest, MemoryThatIsNotItsOwnIsGivenBack_DebugBuildEnds) {
    const TreeMemory outer;
    void* const ofOuter = TreeMemory::Take(16);
    const TreeMemory inner;
    std::byte* const ofInner = static_cast<std::byte*>(TreeMemory::Take(16));
    EXPECT_DEATH(TreeMemory::GiveBack(ofOuter, 16), "IsHeldFurtherOut");
    EXPECT_DEATH(TreeMemory::GiveBack(ofInner, 17), "used");
    EXPECT_DEATH(TreeMemory::GiveBack(ofInner + 16, 1), "used");
}
#endif

}  // namespace
