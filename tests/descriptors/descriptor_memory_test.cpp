// What descriptors ask of memory and what they do without it. This program is linked with --wrap=realloc, so
// that lists of children grow through __wrap_realloc below, and brings an operator new of its own.

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <vector>

#include "descriptors/command_descriptor.h"
#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"
#include "tests/logging_configuration_file.h"

namespace {

bool isWatching = false;
bool isOutOfMemory = false;
std::vector<std::size_t> sizes;

}  // namespace

extern "C" void* __real_realloc(void* memory, std::size_t size);

extern "C" void* __wrap_realloc(void* memory, std::size_t size) {
    if (isOutOfMemory) return nullptr;
    if (isWatching) {
        isWatching = false;  // the vector's own growth is not of interest
        sizes.push_back(size);
        isWatching = true;
    }
    return __real_realloc(memory, size);
}

void* operator new[](std::size_t size) {
    void* const memory = isOutOfMemory ? nullptr : std::malloc(size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

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

TEST_F(DescriptorMemory, AListGrowsByEight) {
    DescriptorComposite composite;
    isWatching = true;
    for (unsigned i = 0; i < 25; ++i) composite.AddDescriptor(new SessionHandleDescriptor(i));
    isWatching = false;
    constexpr std::size_t kPointer = sizeof(AbstractDescriptor*);
    EXPECT_EQ(sizes, (std::vector<std::size_t>{8 * kPointer, 16 * kPointer, 24 * kPointer, 32 * kPointer}));
}

TEST_F(DescriptorMemory, AChildForWhichThereIsNoRoomIsGone) {
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

TEST_F(DescriptorMemory, AValueThatCannotBeCopiedIsNoValue) {
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

TEST_F(DescriptorMemory, ARecordThatCannotBePrintedIsNotWrittenAtAll) {
    LoggingConfigurationFile file;
    const std::string log = file.directory.File("log");
    AbstractDescriptor::ReleaseCapture();
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

}  // namespace
