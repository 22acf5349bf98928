// Other processes create and remove the file between this process's tries. This program is linked with
// --wrap=open. The library's calls therefore come to __wrap_open below.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdarg>
#include <deque>
#include <functional>
#include <string>

#include "host/file_creation.h"
#include "tests/temporary_directory.h"

namespace {

std::deque<std::function<void()>> beforeOpens;  // what other processes do before each further open

}  // namespace

extern "C" int __real_open(const char* path, int flags, ...);

extern "C" int __wrap_open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
    va_end(more);
    if (!beforeOpens.empty()) {
        const std::function<void()> act = beforeOpens.front();
        beforeOpens.pop_front();
        act();
    }
    return __real_open(path, flags, mode);
}

namespace ckscribe {
namespace {

class FileCreationFaults : public testing::Test {
protected:
    void CreateAsAnother() const {
        close(__real_open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY, 0600));
        chmod(path.c_str(), 0751);
    }
    void RemoveAsAnother() const { unlink(path.c_str()); }

    // Opens the path, expects that to succeed, and returns the permissions that the file has then.
    mode_t PermissionsAfterOpening() const {
        const int descriptor = OpenOrCreate(path.c_str(), O_WRONLY | O_APPEND, 0640);
        EXPECT_GE(descriptor, 0);
        struct stat status = {};
        fstat(descriptor, &status);
        close(descriptor);
        EXPECT_TRUE(beforeOpens.empty()) << "fewer tries than expected";
        return status.st_mode & 07777;
    }

    const std::function<void()> nothing = [] {};
    const std::function<void()> create = [this] { CreateAsAnother(); };
    const std::function<void()> remove = [this] { RemoveAsAnother(); };
    const TemporaryDirectory directory;
    const std::string path = directory.File("file");
};

TEST_F(FileCreationFaults, AnotherProcessCreatesTheFileMeanwhile_FileKeepsItsPermissions) {
    beforeOpens = {nothing, create};
    EXPECT_EQ(PermissionsAfterOpening(), 0751U);
}

TEST_F(FileCreationFaults,
       AnotherProcessCreatesAndRemovesTheFile_FileIsCreatedWithThePermissionsThatAreAskedFor) {
    beforeOpens = {nothing, create, remove};
    EXPECT_EQ(PermissionsAfterOpening(), 0640U);
}

TEST_F(FileCreationFaults, OtherProcessesCreateAndRemoveTheFileAllTheTime_FileOfTheLastKeepsItsPermissions) {
    beforeOpens = {nothing, create, remove, create};
    EXPECT_EQ(PermissionsAfterOpening(), 0751U);
    RemoveAsAnother();
    beforeOpens = {nothing, create, remove, create, [this] {
                       RemoveAsAnother();
                       CreateAsAnother();
                   }};
    EXPECT_EQ(PermissionsAfterOpening(), 0751U);
}

}  // namespace
}  // namespace ckscribe
