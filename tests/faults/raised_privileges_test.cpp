// A process with rights that its caller lacks reads the configuration file under /etc; every other process
// reads the one that the environment names.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#include "tests/faults/application.h"

#ifdef __linux__
#include <linux/capability.h>
#include <sys/xattr.h>
#endif

namespace {

constexpr uid_t kRoot = 0;
constexpr uid_t kNobody = 65534;
constexpr uid_t kDaemon = 1;

constexpr mode_t kOrdinary = 0755;
constexpr mode_t kSetUserId = 04755;
constexpr mode_t kSetGroupId = 02755;

const char kEtc[] = "/etc/Wendrafil.conf";

class RaisedPrivileges : public testing::Test {
protected:
    RaisedPrivileges() {
        EXPECT_EQ(geteuid(), kRoot) << "only root can give programs to other users and become one";
        chmod(directory.Path().c_str(), 0755);
        // Every user can read the copies here.
        std::filesystem::copy_file(RAISED_PRIVILEGES_PROBE, probe);
        std::filesystem::copy_file(CKSCRIBE_LIBRARY, library);
        std::filesystem::create_directory(callersDirectory);
        chmod(callersDirectory.c_str(), 0777);
        std::ofstream(callersDirectory + "/Wendrafil.conf")
            << "CkLog2 = {\n   LibUNIX64 = none;\n   Enabled = " << (AreEventsTested() ? "0" : "1")
            << ";\n   " << (AreEventsTested() ? "Events" : "File") << " = " << callersLog << ";\n}\n";
        setenv("WendrafilConfigurationPath", callersDirectory.c_str(), 1);
    }

    void GiveProbeTo(uid_t owner, mode_t mode) const {
        ASSERT_EQ(chown(probe.c_str(), owner, owner), 0);
        ASSERT_EQ(chmod(probe.c_str(), mode), 0);
    }

    struct Run {
        bool isSecure = false;
        std::set<std::string> files;  // the configuration files that were opened
        bool madeCallersLog = false;
    };

    // Runs the probe as a program that `caller` starts.
    Run RunBy(uid_t caller, const char* argument = nullptr) const {
        SearchAndRemove(callersLog);
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        if (child == 0) {
            dup2(ends[1], 1);
            close(ends[0]);
            close(ends[1]);
            if (setgid(caller) == 0 && setuid(caller) == 0) {
                execl(probe.c_str(), probe.c_str(), library.c_str(), argument, nullptr);
            }
            _exit(99);
        }
        close(ends[1]);
        FILE* const output = fdopen(ends[0], "r");
        Run run;
        char line[600];
        if (fgets(line, sizeof line, output) != nullptr) run.isSecure = line[0] == '1';
        while (fgets(line, sizeof line, output) != nullptr) {
            const std::string path(line, std::string_view(line).find('\n'));
            if (path.ends_with("/Wendrafil.conf")) run.files.insert(path);
        }
        std::fclose(output);
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
        run.madeCallersLog = std::filesystem::exists(callersLog);
        return run;
    }

    void ExpectThatItBelieves(const Run& run) const {
        EXPECT_FALSE(run.isSecure);
        EXPECT_EQ(run.files, std::set<std::string>{callersDirectory + "/Wendrafil.conf"});
        EXPECT_TRUE(run.madeCallersLog);
    }

    static void ExpectThatItDoesNotBelieve(const Run& run) {
        EXPECT_TRUE(run.isSecure) << "the file system does not give programs rights";
        EXPECT_EQ(run.files, std::set<std::string>{kEtc});
        EXPECT_FALSE(run.madeCallersLog);
    }

    TemporaryDirectory directory;
    const std::string probe = directory.File("probe");
    const std::string library = directory.File("libckscribe.so");
    const std::string callersDirectory = directory.File("caller");
    const std::string callersLog = callersDirectory + "/calls.log";
};

TEST_F(RaisedPrivileges, OrdinaryProgram_BelievesTheEnvironment) {
    for (const uid_t caller : {kRoot, kNobody}) {
        for (const uid_t owner : {kRoot, kNobody, kDaemon}) {
            GiveProbeTo(owner, kOrdinary);
            ExpectThatItBelieves(RunBy(caller));
        }
    }
}

TEST_F(RaisedPrivileges, SetUserIdProgramOfTheCaller_BelievesTheEnvironment) {
    GiveProbeTo(kNobody, kSetUserId);
    ExpectThatItBelieves(RunBy(kNobody));
    GiveProbeTo(kNobody, kSetGroupId);
    ExpectThatItBelieves(RunBy(kNobody));
}

TEST_F(RaisedPrivileges, SetUserIdProgram_DoesNotBelieveTheEnvironment) {
    GiveProbeTo(kRoot, kSetUserId);
    ExpectThatItDoesNotBelieve(RunBy(kNobody));
    GiveProbeTo(kDaemon, kSetUserId);
    ExpectThatItDoesNotBelieve(RunBy(kNobody));
    ExpectThatItDoesNotBelieve(RunBy(kRoot));
}

TEST_F(RaisedPrivileges, SetGroupIdProgram_DoesNotBelieveTheEnvironment) {
    GiveProbeTo(kDaemon, kSetGroupId);
    ExpectThatItDoesNotBelieve(RunBy(kNobody));
    ExpectThatItDoesNotBelieve(RunBy(kRoot));
}

TEST_F(RaisedPrivileges, SetUserIdProgramThatGaveUpItsRights_DoesNotBelieveTheEnvironment) {
    GiveProbeTo(kRoot, kSetUserId);
    ExpectThatItDoesNotBelieve(RunBy(kNobody, "drop"));
}

#ifdef __linux__
TEST_F(RaisedPrivileges, ProgramWithCapabilities_DoesNotBelieveTheEnvironment) {
    GiveProbeTo(kRoot, kOrdinary);
    vfs_cap_data capabilities = {};
    capabilities.magic_etc = VFS_CAP_REVISION_2 | VFS_CAP_FLAGS_EFFECTIVE;
    capabilities.data[0].permitted = 1U << CAP_NET_BIND_SERVICE;
    ASSERT_EQ(setxattr(probe.c_str(), "security.capability", &capabilities, sizeof capabilities, 0), 0);
    ExpectThatItDoesNotBelieve(RunBy(kNobody));
}
#endif

}  // namespace
