#include "host/file_size_limit.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "tests/temporary_directory.h"

namespace ckscribe {
namespace {

// Limits the test's own process. Nothing is written meanwhile.
class Limit {
public:
    explicit Limit(rlim_t size) {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit = {size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~Limit() { setrlimit(RLIMIT_FSIZE, &before); }
    Limit(const Limit&) = delete;
    Limit& operator=(const Limit&) = delete;

private:
    rlimit before;
};

class FileSizeLimit : public testing::Test {
protected:
    FileSizeLimit() { std::ofstream(path) << std::string(100, 'x'); }

    std::string_view Within(int flags, off_t place = 0) const {
        const int descriptor = open(path.c_str(), O_WRONLY | flags);
        lseek(descriptor, place, SEEK_SET);
        const std::string_view part = WithinFileSizeLimit(descriptor, "0123456789");
        close(descriptor);
        return part;
    }

    const TemporaryDirectory directory;
    const std::string path = directory.File("file");
};

TEST_F(FileSizeLimit, LimitIsSet_IsFileSizeLimitedSaysSo) {
    EXPECT_FALSE(IsFileSizeLimited());
    const Limit limit(1'000'000);
    EXPECT_TRUE(IsFileSizeLimited());
}

TEST_F(FileSizeLimit, LimitIsNotSet_WholeTextMayBeWritten) { EXPECT_EQ(Within(O_APPEND), "0123456789"); }

TEST_F(FileSizeLimit, DescriptorAppends_RoomCountsFromTheEndOfTheFile) {
    const struct {
        rlim_t limit;
        std::string_view part;
    } cases[] = {{0, ""},
                 {99, ""},
                 {100, ""},
                 {101, "0"},
                 {109, "012345678"},
                 {110, "0123456789"},
                 {111, "0123456789"}};
    for (const auto& each : cases) {
        const Limit limit(each.limit);
        EXPECT_EQ(Within(O_APPEND, 3), each.part) << each.limit;
    }
}

TEST_F(FileSizeLimit, DescriptorDoesNotAppend_RoomCountsFromItsPlace) {
    const Limit limit(50);
    EXPECT_EQ(Within(0, 38), "0123456789");
    EXPECT_EQ(Within(0, 43), "0123456");
    EXPECT_EQ(Within(0, 50), "");
    EXPECT_EQ(Within(0, 70), "");
}

TEST_F(FileSizeLimit, DescriptorIsNoFile_WholeTextMayBeWritten) {
    const Limit limit(0);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_EQ(WithinFileSizeLimit(ends[1], "0123456789"), "0123456789");
    EXPECT_EQ(WithinFileSizeLimit(-1, "0123456789"), "0123456789");
    close(ends[0]);
    close(ends[1]);
}

}  // namespace
}  // namespace ckscribe
