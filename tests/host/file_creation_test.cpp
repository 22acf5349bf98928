#include "host/file_creation.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>

#include "tests/temporary_directory.h"

using ckscribe::NewFilePermissions;
using ckscribe::OpenOrCreate;

namespace {

class FileCreation : public testing::Test {
protected:
    FileCreation() : umaskBefore(umask(027)) {}
    ~FileCreation() override { umask(umaskBefore); }

    // Opens the path, expects that to succeed, and returns the permissions that the file has then.
    mode_t PermissionsAfterOpening(NewFilePermissions permissions) const {
        const int descriptor = OpenOrCreate(path.c_str(), O_WRONLY | O_APPEND, permissions);
        EXPECT_GE(descriptor, 0);
        EXPECT_EQ(write(descriptor, "x", 1), 1);
        struct stat status = {};
        fstat(descriptor, &status);
        close(descriptor);
        return status.st_mode & 07777;
    }

    const TemporaryDirectory directory;
    const std::string path = directory.File("file");

private:
    const mode_t umaskBefore;
};

}  // namespace

TEST_F(FileCreation, PermissionsAreNotGiven_NewFileHas0666LessTheUmask) {
    EXPECT_EQ(PermissionsAfterOpening({}), 0640U);
}

TEST_F(FileCreation, PermissionsAreGiven_NewFileHasExactlyTheseWhateverTheUmask) {
    for (const mode_t mask : {0000U, 0027U, 0777U}) {
        umask(mask);
        for (const mode_t permissions : {0600U, 0666U, 0644U, 0777U, 0200U, 0U}) {
            EXPECT_EQ(PermissionsAfterOpening(permissions), permissions) << std::oct << mask;
            unlink(path.c_str());
        }
    }
}

TEST_F(FileCreation, FileExists_FileKeepsItsPermissions) {
    for (const NewFilePermissions permissions : {NewFilePermissions(), NewFilePermissions(0600)}) {
        close(open(path.c_str(), O_CREAT | O_WRONLY, 0));
        chmod(path.c_str(), 0751);
        EXPECT_EQ(PermissionsAfterOpening(permissions), 0751U);
        unlink(path.c_str());
    }
}

TEST_F(FileCreation, PathIsASymbolicLinkToNoFile_FileItNamesIsCreatedWithThePermissions) {
    std::filesystem::create_symlink(directory.File("elsewhere"), path);
    EXPECT_EQ(PermissionsAfterOpening(0666), 0666U);
    EXPECT_TRUE(std::filesystem::exists(directory.File("elsewhere")));
    EXPECT_TRUE(std::filesystem::is_symlink(path));
}

TEST_F(FileCreation, FileCannotBeCreated_ErrnoSaysWhy) {
    errno = 0;
    EXPECT_EQ(OpenOrCreate(directory.File("missing/file").c_str(), O_WRONLY, 0600), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(OpenOrCreate(directory.Path().c_str(), O_WRONLY, 0600), -1);
    EXPECT_EQ(errno, EISDIR);
}
