#include "front/dynamic_loading.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

class DynamicLoading : public testing::Test {
protected:
    void SetUp() override { dlerror(); }

    // Leaves the loader with a text of its own and returns it.
    static std::string FailToLoad() {
        EXPECT_EQ(dlopen("/nowhere/at/all.so", RTLD_NOW), nullptr);
        const std::string text = dlerror();
        EXPECT_EQ(dlopen("/nowhere/at/all.so", RTLD_NOW), nullptr);
        return text;
    }
};

TEST_F(DynamicLoading, LibraryExists_ItIsLoadedAndUnloaded) {
    void* handle = nullptr;
    ASSERT_EQ(LoadDynamicLibrary(TARGET_COMPLETE, &handle), 1);
    ASSERT_NE(handle, nullptr);
    EXPECT_NE(dlopen(TARGET_COMPLETE, RTLD_NOW | RTLD_NOLOAD), nullptr);
    EXPECT_EQ(UnloadDynamicLibrary(handle), 1);
    EXPECT_EQ(UnloadDynamicLibrary(handle), 1);  // what RTLD_NOLOAD counted
    EXPECT_EQ(dlopen(TARGET_COMPLETE, RTLD_NOW | RTLD_NOLOAD), nullptr);
}

TEST_F(DynamicLoading, LibraryIsMissing_HandleIsUntouched) {
    int mark;
    void* handle = &mark;
    EXPECT_EQ(LoadDynamicLibrary("/nowhere/at/all.so", &handle), 0);
    EXPECT_EQ(handle, &mark);
    EXPECT_EQ(LoadDynamicLibrary(nullptr, &handle), 0);
    EXPECT_EQ(handle, &mark);
    EXPECT_EQ(LoadDynamicLibrary(TARGET_COMPLETE, nullptr), 0);
}

TEST_F(DynamicLoading, FunctionExists_ItIsFoundByItsName) {
    void* handle = nullptr;
    ASSERT_EQ(LoadDynamicLibrary(TARGET_COMPLETE, &handle), 1);
    testing::internal::CaptureStdout();
    void* address = nullptr;
    EXPECT_EQ(LoadDynamicFunctionSilent(handle, "C_Sign", &address, 0), 1);
    EXPECT_EQ(address, dlsym(handle, "C_Sign"));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    UnloadDynamicLibrary(handle);
}

TEST_F(DynamicLoading, FunctionIsMissing_ItIsAnnouncedUnlessSilent) {
    void* handle = nullptr;
    ASSERT_EQ(LoadDynamicLibrary(TARGET_COMPLETE, &handle), 1);
    int mark;
    void* address = &mark;
    testing::internal::CaptureStdout();
    EXPECT_EQ(LoadDynamicFunctionSilent(handle, "C_Nothing", &address, 0), 0);
    EXPECT_EQ(address, nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Failed to load function 'C_Nothing'.\n");

    for (const unsigned silent : {1U, 2U, ~0U}) {
        address = &mark;
        testing::internal::CaptureStdout();
        EXPECT_EQ(LoadDynamicFunctionSilent(handle, "C_Nothing", &address, silent), 0);
        EXPECT_EQ(address, nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    }
    UnloadDynamicLibrary(handle);
}

TEST_F(DynamicLoading, ArgumentsAreNull_NothingIsFound) {
    int mark;
    void* address = &mark;
    EXPECT_EQ(LoadDynamicFunctionSilent(nullptr, nullptr, &address, 0), 0);
    EXPECT_EQ(address, &mark);
    EXPECT_EQ(LoadDynamicFunctionSilent(nullptr, "C_Sign", nullptr, 0), 0);
}

TEST_F(DynamicLoading, BufferIsLargeEnough_TextOfTheLoaderIsCopiedWhole) {
    const std::string text = FailToLoad();
    char buffer[300];
    std::memset(buffer, '#', sizeof buffer);
    std::size_t length = 0;
    EXPECT_EQ(RetrieveLastErrorString(buffer, sizeof buffer, &length), 1);
    EXPECT_EQ(length, text.size());
    EXPECT_STREQ(buffer, text.c_str());
}

TEST_F(DynamicLoading, NothingFailed_TextSaysSo) {
    char buffer[28];
    std::size_t length = 0;
    EXPECT_EQ(RetrieveLastErrorString(buffer, sizeof buffer, &length), 1);
    EXPECT_EQ(length, 27U);
    EXPECT_STREQ(buffer, "Error during dlerror() call");
}

TEST_F(DynamicLoading, BufferIsTooSmall_TextIsCutAndLengthCountsTheTerminator) {
    for (const std::size_t size : {1U, 2U, 10U, 26U, 27U}) {
        char buffer[40];
        std::memset(buffer, '#', sizeof buffer);
        std::size_t length = 0;
        EXPECT_EQ(RetrieveLastErrorString(buffer, size, &length), 1);
        EXPECT_EQ(length, size);
        EXPECT_EQ(std::string(buffer), std::string("Error during dlerror() call").substr(0, size - 1));
        EXPECT_EQ(buffer[size], '#');
    }
}

TEST_F(DynamicLoading, BufferHasNoRoomAtAll_BufferIsUntouched) {
    char buffer[] = "#";
    std::size_t length = 5;
    EXPECT_EQ(RetrieveLastErrorString(buffer, 0, &length), 1);
    EXPECT_EQ(length, 0U);
    EXPECT_STREQ(buffer, "#");
}

TEST_F(DynamicLoading, ArgumentsAreNull_NoTextIsCopied) {
    char buffer[10];
    std::size_t length = 5;
    EXPECT_EQ(RetrieveLastErrorString(nullptr, 10, &length), 0);
    EXPECT_EQ(RetrieveLastErrorString(buffer, sizeof buffer, nullptr), 0);
    EXPECT_EQ(length, 5U);
}

}  // namespace
