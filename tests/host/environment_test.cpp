#include "host/environment.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/temporary_directory.h"

namespace ckscribe {
namespace {

constexpr uid_t kNobody = 65534;

class EnvironmentTest : public testing::Test {
protected:
    EnvironmentTest() {
        unsetenv("CkscribeUnset");
        setenv("CkscribeSet", "the value", 1);
        setenv("CkscribeEmpty", "", 1);
    }

    // Returns what the probe prints if it is run as a program with this owner and mode.
    std::string Probed(uid_t owner, mode_t mode, const std::string& name) const {
        std::filesystem::copy_file(ENVIRONMENT_PROBE, probe,
                                   std::filesystem::copy_options::overwrite_existing);
        EXPECT_EQ(0, chown(probe.c_str(), owner, static_cast<gid_t>(-1)));
        EXPECT_EQ(0, chmod(probe.c_str(), mode));
        FILE* stream = popen((probe + " " + name).c_str(), "r");
        char line[64] = "";
        EXPECT_NE(nullptr, fgets(line, sizeof line, stream));
        EXPECT_EQ(0, pclose(stream));
        return line;
    }

    TemporaryDirectory directory;
    std::string probe = directory.File("probe");
};

TEST_F(EnvironmentTest, OrdinaryProcess_VariablesHaveTheirValues) {
    EXPECT_STREQ("the value", TrustedEnvironment("CkscribeSet"));
    EXPECT_STREQ("", TrustedEnvironment("CkscribeEmpty"));
    EXPECT_EQ(nullptr, TrustedEnvironment("CkscribeUnset"));
}

TEST_F(EnvironmentTest, ProgramOfItsCaller_BelievesTheEnvironment) {
    EXPECT_EQ("the value\n", Probed(geteuid(), 0755, "CkscribeSet"));
    EXPECT_EQ("(none)\n", Probed(geteuid(), 0755, "CkscribeUnset"));
}

TEST_F(EnvironmentTest, SetUserIdProgram_DoesNotBelieveTheEnvironment) {
    ASSERT_EQ(0U, geteuid()) << "only root can give a program to another user";
    EXPECT_EQ("the value\n", Probed(kNobody, 0755, "CkscribeSet"));
    EXPECT_EQ("(none)\n", Probed(kNobody, 04755, "CkscribeSet"));
}

}  // namespace
}  // namespace ckscribe
