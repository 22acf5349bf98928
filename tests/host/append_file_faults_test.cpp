// The system's write takes less than all, or fails. This program is linked with --wrap=write, so that the
// library's writes come to __wrap_write below.

#include <gtest/gtest.h>
#include <sys/types.h>

#include <cerrno>
#include <deque>
#include <string>

#include "host/append_file.h"
#include "tests/temporary_directory.h"

namespace {

struct Answer {
    ssize_t result;  // -1 with `error`, else at most so many characters are taken
    int error;
};

constexpr Answer Takes(ssize_t characters) { return {characters, 0}; }
constexpr Answer Fails(int error) { return {-1, error}; }

bool isScripted = false;
std::deque<Answer> script;  // when it has run out, every write takes all
bool isStuck = false;       // and when this is set, nothing any more
std::string taken;
int writes = 0;

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

}  // namespace
}  // namespace ckscribe
