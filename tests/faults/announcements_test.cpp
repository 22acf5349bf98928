// A target lacks functions, and the library says so on the application's standard output. These tests vary
// what the output is.

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <fstream>

#include "tests/faults/application.h"

namespace {

class Announcements : public FaultsTest {
protected:
    Announcements() { Set("LibUNIX64", TARGET_WITHOUT_FUNCTIONS); }

    std::string OutputPath() const { return directory.File("stdout"); }

    static void BecomesStandardOutput(int descriptor) {
        std::fflush(stdout);
        ASSERT_EQ(dup2(descriptor, STDOUT_FILENO), STDOUT_FILENO);
    }
    void OutputGoesToFile() const {
        BecomesStandardOutput(open(OutputPath().c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600));
    }

    // Makes the first call, and expects it to come back.
    static void Call() {
        Library library;
        EXPECT_EQ(library->C_Logout(1), CKR_FUNCTION_NOT_SUPPORTED);
        EXPECT_EQ(std::fflush(stdout), 0) << "something was left for the application to write";
    }

    std::string OutputOfACall() {
        EXPECT_TRUE(Survives([this] {
            OutputGoesToFile();
            Call();
        }));
        const std::string output = Contents(OutputPath());
        EXPECT_EQ(output.substr(0, output.find('\n')), "Failed to load function 'C_Initialize'.");
        EXPECT_TRUE(output.ends_with('\n'));
        unlink(OutputPath().c_str());
        return output;
    }
};

TEST_F(Announcements, NobodyReadsStandardOutput_NoSignalIsRaised) {
    EXPECT_TRUE(Survives([] {
        std::signal(SIGPIPE, SIG_DFL);
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        BecomesStandardOutput(ends[1]);
        close(ends[0]);
        Call();
    }));
}

TEST_F(Announcements, StandardOutputIsAFullPipe_StartDoesNotWait) {
    EXPECT_TRUE(Survives([] {
        int ends[2];
        ASSERT_EQ(pipe2(ends, O_NONBLOCK), 0);
        const std::string fill(4096, 'f');
        std::size_t size = 0;
        for (ssize_t written; (written = write(ends[1], fill.data(), fill.size())) > 0;)
            size += static_cast<std::size_t>(written);
        ASSERT_EQ(fcntl(ends[1], F_SETFL, 0), 0);
        BecomesStandardOutput(ends[1]);
        Call();
        std::string taken;
        char bytes[4096];
        for (ssize_t count; (count = read(ends[0], bytes, sizeof bytes)) > 0;)
            taken.append(bytes, static_cast<std::size_t>(count));
        EXPECT_EQ(taken, std::string(size, 'f'));
    }));
}

TEST_F(Announcements, StandardOutputIsAFileAtItsLimit_NoSignalIsRaised) {
    std::ofstream(OutputPath()) << std::string(100, 'o');
    EXPECT_TRUE(Survives([this] {
        OutputGoesToFile();
        std::signal(SIGXFSZ, SIG_DFL);
        const rlimit limit = {100, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &limit);
        Call();
        const rlimit none = {RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &none);
    }));
    EXPECT_EQ(Contents(OutputPath()), std::string(100, 'o'));
}

TEST_F(Announcements, NoStandardOutput_NothingIsAnnounced) {
    EXPECT_TRUE(Survives([this] {
        std::fflush(stdout);
        close(STDOUT_FILENO);
        Call();
        const int own = open(OutputPath().c_str(), O_WRONLY | O_CREAT | O_APPEND, 0600);
        EXPECT_EQ(own, STDOUT_FILENO);
        Library library;
        library->C_Logout(1);
    }));
    EXPECT_EQ(Contents(OutputPath()), "");
}

TEST_F(Announcements, ChildIsForked_AnnouncementsAreNotRepeated) {
    const std::string once = OutputOfACall();
    EXPECT_TRUE(Survives([this] {
        OutputGoesToFile();
        Library library;
        library->C_Logout(1);
        const pid_t child = fork();
        if (child == 0) std::exit(0);  // writes what is in its buffers
        waitpid(child, nullptr, 0);
    }));
    EXPECT_EQ(Contents(OutputPath()), once);
}

}  // namespace
