// The system's write takes less than all or fails, or its fstat fails. This program is linked with
// --wrap=write and --wrap=fstat. The library's calls therefore come to __wrap_write and __wrap_fstat below.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <deque>
#include <filesystem>
#include <string>
#include <utility>

#include "host/append_file.h"
#include "tests/temporary_directory.h"

namespace {

// `result` is -1 with `error`, or the most characters that the system takes.
struct Answer {
    ssize_t result;
    int error;
};

constexpr Answer Takes(ssize_t characters) { return {characters, 0}; }
constexpr Answer Fails(int error) { return {-1, error}; }

// When `script` has run out, a write takes all. If `isStuck` is set, it takes nothing any more.
bool isScripted = false;
std::deque<Answer> script;
bool isStuck = false;
std::string taken;
int writes = 0;

int fstatError = 0;  // of the next fstat; 0 for none

}  // namespace

extern "C" ssize_t __real_write(int descriptor, const void* bytes, size_t size);

extern "C" ssize_t __wrap_write(int descriptor, const void* bytes, size_t size) {
    if (!isScripted) return __real_write(descriptor, bytes, size);
    ++writes;
    size_t result = size;
    if (!script.empty() || isStuck) {
        const Answer answer = script.empty() ? Fails(EAGAIN) : script.front();
        if (!script.empty()) script.pop_front();
        if (answer.result < 0) {
            errno = answer.error;
            return -1;
        }
        result = std::min(size, static_cast<size_t>(answer.result));
    }
    taken.append(static_cast<const char*>(bytes), result);
    return static_cast<ssize_t>(result);
}

extern "C" int __real_fstat(int descriptor, struct stat* status);

extern "C" int __wrap_fstat(int descriptor, struct stat* status) {
    if (fstatError == 0) return __real_fstat(descriptor, status);
    errno = std::exchange(fstatError, 0);
    return -1;
}

namespace ckscribe {
namespace {

class AppendFileFaults : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(file.Open(directory.File("log").c_str())); }
    void TearDown() override { isScripted = false; }

    std::string Taken(std::deque<Answer> answers, const std::string& text) {
        script = std::move(answers);
        taken.clear();
        writes = 0;
        isScripted = true;
        file.Append(text);
        isScripted = false;
        return taken;
    }

    TemporaryDirectory directory;
    AppendFile file;
};

TEST_F(AppendFileFaults, TextFitsIntoOneWrite_OneWriteIsMade) {
    EXPECT_EQ(Taken({}, "a whole record"), "a whole record");
    EXPECT_EQ(writes, 1);
    EXPECT_EQ(Taken({}, std::string(100000, 'x')), std::string(100000, 'x'));
    EXPECT_EQ(writes, 1);
}

TEST_F(AppendFileFaults, WriteIsShort_RestIsWritten) {
    EXPECT_EQ(Taken({Takes(3)}, "abcdefgh"), "abcdefgh");
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(Taken({Takes(1), Takes(1), Takes(1), Takes(1), Takes(1)}, "abcdefgh"), "abcdefgh");
    EXPECT_EQ(writes, 6);
}

TEST_F(AppendFileFaults, WriteIsInterrupted_ItIsRepeated) {
    EXPECT_EQ(Taken({Fails(EINTR), Fails(EINTR), Fails(EINTR)}, "abc"), "abc");
    EXPECT_EQ(Taken({Takes(2), Fails(EINTR), Takes(3), Fails(EINTR)}, "abcdefgh"), "abcdefgh");
}

TEST_F(AppendFileFaults, WriteFails_TextIsDroppedAndTheNextOneIsWritten) {
    for (const int error : {ENOSPC, EIO, EFBIG, EDQUOT, EBADF, EPIPE}) {
        EXPECT_EQ(Taken({Fails(error), Fails(error)}, "lost"), "");
        EXPECT_LE(writes, 2);
        EXPECT_EQ(Taken({Takes(2), Fails(error), Fails(error)}, "cut off"), "cu");
        EXPECT_EQ(Taken({}, "next"), "next");
    }
}

TEST_F(AppendFileFaults, WriteTakesNothing_TextIsDropped) {
    EXPECT_EQ(Taken({Takes(0), Takes(0), Takes(0)}, "lost"), "");
    EXPECT_LE(writes, 2);
}

TEST_F(AppendFileFaults, NoRoom_OnlyARecordThatHasBegunWaits) {
    EXPECT_EQ(Taken({Fails(EAGAIN), Fails(EAGAIN)}, "lost"), "");
    EXPECT_LE(writes, 2);
    EXPECT_EQ(Taken({Takes(2), Takes(1), Fails(EAGAIN), Takes(1), Fails(EAGAIN)}, "abcdef"), "abcdef");
}

TEST_F(AppendFileFaults, ReaderIsSlow_BegunRecordWaitsAndIsWhole) {
    std::deque<Answer> slow = {Takes(1)};
    for (int i = 0; i < 50; ++i) slow.insert(slow.end(), {Takes(1), Fails(EAGAIN)});
    const std::string text(1000, 'x');
    EXPECT_EQ(Taken(slow, text), text);
    EXPECT_EQ(writes, 102);
}

TEST_F(AppendFileFaults, ReaderNeverReads_BegunRecordWaitsATenthOfASecondAtMost) {
    isStuck = true;
    EXPECT_EQ(Taken({Takes(1), Takes(2)}, "abcdef"), "abc");
    isStuck = false;
    EXPECT_EQ(Taken({}, "next"), "next");
}

TEST_F(AppendFileFaults, TextIsCut_FileEndsInPartUntilAWholeTextFollows) {
    Taken({Fails(ENOSPC), Fails(ENOSPC)}, "lost");
    EXPECT_FALSE(file.EndsInPart());
    Taken({Takes(2), Fails(ENOSPC)}, "cut off");
    EXPECT_TRUE(file.EndsInPart());
    Taken({Fails(ENOSPC), Fails(ENOSPC)}, "lost");
    EXPECT_TRUE(file.EndsInPart());
    Taken({}, "next");
    EXPECT_FALSE(file.EndsInPart());
    Taken({Takes(2), Takes(1)}, "whole in the end");
    EXPECT_FALSE(file.EndsInPart());
    Taken({Fails(ENOSPC), Takes(2), Fails(ENOSPC)}, "cut off");
    EXPECT_TRUE(file.EndsInPart());
    ASSERT_TRUE(file.Open(directory.File("log").c_str()));
    EXPECT_FALSE(file.EndsInPart());
}

// ---- The file cannot be looked at -----------------------------------------------------------------------

// Counts the open descriptors, also those with the high numbers that the library takes.
int OpenDescriptors() {
    int open = 0;
    for (int descriptor = 0; descriptor < 5000; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) >= 0) ++open;
    }
    return open;
}

// Such errors come from file servers and from disks; a descriptor that the host closed gives EBADF.
TEST_F(AppendFileFaults, FileCannotBeLookedAt_ItIsOpenedAgainAndTheOldDescriptorIsClosed) {
    const int before = OpenDescriptors();
    for (const int error : {ESTALE, EIO}) {
        usleep(20'000);  // the descriptor is looked at when the coarse clock has moved
        fstatError = error;
        EXPECT_TRUE(file.Append("a record\n"));
        EXPECT_EQ(fstatError, 0) << "nobody looked";
        EXPECT_EQ(OpenDescriptors(), before);
    }
    EXPECT_EQ(std::filesystem::file_size(directory.File("log")), 2 * 9U);
}

TEST_F(AppendFileFaults, FileCannotBeLookedAtWhenItIsClosed_DescriptorIsClosed) {
    const int before = OpenDescriptors();
    fstatError = ESTALE;
    file.Close();
    EXPECT_EQ(fstatError, 0) << "nobody looked";
    EXPECT_EQ(OpenDescriptors(), before - 1);
}

TEST_F(AppendFileFaults, FileCannotBeLookedAtWhenItIsClosed_NumberOfTheHostStaysOpen) {
    const int before = OpenDescriptors();
    fstatError = EBADF;
    file.Close();
    EXPECT_EQ(OpenDescriptors(), before);
}

}  // namespace
}  // namespace ckscribe
