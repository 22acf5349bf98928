// `ckscribe check` speaks of the space that is left. statvfs answers as each test wants it to.

#include <gtest/gtest.h>
#include <sys/statvfs.h>

#include "tests/temporary_directory.h"
#include "tool/check/check_files.h"

namespace {

unsigned long blocksLeft = 0;
unsigned long blockCount = 0;

std::string ConfigurationText(const TemporaryDirectory& directory) {
    return "CkLog2 = {\n   Enabled = 1;\n   FileMode = 0600;\n   Error = ;\n   File = " +
           directory.File("log.txt") + ";\n}\n";
}

// Returns the findings about the key "File" that are not well.
std::vector<ckscribe::Finding> FindingsAboutLog() {
    const TemporaryDirectory directory;
    const std::string path = directory.File("Wendrafil.conf");
    const std::string text = ConfigurationText(directory);
    std::ofstream(path) << text;
    ckscribe::Setup setup(path, text);
    ckscribe::Findings findings;
    ckscribe::CheckFiles(setup, findings);
    std::vector<ckscribe::Finding> found;
    for (ckscribe::Finding finding : findings.All()) {
        if (finding.about != "File" || finding.level == ckscribe::Level::kOk) continue;
        const std::string log = directory.File("log.txt");
        finding.what.replace(finding.what.find(log), log.size(), "LOG");
        found.push_back(finding);
    }
    return found;
}

}  // namespace

extern "C" int __wrap_statvfs(const char*, struct statvfs* system) {
    *system = {};
    system->f_frsize = 4096;
    system->f_blocks = static_cast<fsblkcnt_t>(blockCount);
    // Only root may use the free blocks beyond f_bavail.
    system->f_bfree = 1000000;
    system->f_bavail = static_cast<fsblkcnt_t>(blocksLeft);
    return 0;
}

TEST(CheckSpace, FullFileSystem_IsWrong) {
    blockCount = 1000000;
    blocksLeft = 0;
    const auto found = FindingsAboutLog();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].level, ckscribe::Level::kWrong);
    EXPECT_EQ(found[0].line, 5);
    EXPECT_EQ(found[0].what, "There are 0 MiB free where LOG lies: records are lost.");
    EXPECT_EQ(found[0].remedy, "Make room, or name a file elsewhere.");
}

TEST(CheckSpace, FileSystemWithLessThan100MebibytesLeft_IsNoted) {
    blockCount = 1000000;
    blocksLeft = 100 * 256 - 1;
    const auto found = FindingsAboutLog();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].level, ckscribe::Level::kNote);
    EXPECT_EQ(found[0].what, "There are 99 MiB free where LOG lies.");
}

TEST(CheckSpace, FileSystemWith100MebibytesLeft_IsWell) {
    blockCount = 1000000;
    blocksLeft = 100 * 256;
    EXPECT_TRUE(FindingsAboutLog().empty());
}

TEST(CheckSpace, FileSystemThatCountsNoBlocks_IsNotTakenForAFullOne) {
    blockCount = 0;
    blocksLeft = 0;
    EXPECT_TRUE(FindingsAboutLog().empty());
}
