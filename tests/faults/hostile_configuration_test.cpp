// A configuration file that is not what it should be: nothing crashes or hangs, what stands in it counts, and
// what does not has its default.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"
#include "tests/faults/undisturbed_calls.h"

namespace {

// More than pass between two looks at the file; each asks twice.
constexpr int kCallsBetweenLooks = 251;

constexpr int kGibibyte = 1 << 30;

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// Several copies of a byte.
std::string Bytes(int byte, std::size_t count) { return std::string(count, static_cast<char>(byte)); }

// ---- Files in which nothing stands ------------------------------------------------------------------------

struct Damage {
    const char* name;
    // Makes something of the file at `path`, which exists, in a child process.
    void (*make)(const std::string& path);

    friend void PrintTo(const Damage& damage, std::ostream* stream) { *stream << damage.name; }
};

void MakeUnreadable(const std::string& path) {
    chmod(std::filesystem::path(path).parent_path().c_str(), 0777);
    chmod(path.c_str(), 0);
    GiveUpRightsOfRoot();
}

const Damage kDamages[] = {
    {"Missing", [](const std::string& path) { unlink(path.c_str()); }},
    {"Empty", [](const std::string& path) { WriteBytes(path, ""); }},
    {"Directory",
     [](const std::string& path) {
         unlink(path.c_str());
         mkdir(path.c_str(), 0700);
     }},
    {"Unreadable", MakeUnreadable},
    {"Fifo",
     [](const std::string& path) {
         unlink(path.c_str());
         mkfifo(path.c_str(), 0600);
     }},
    {"EndlessDevice",
     [](const std::string& path) {
         unlink(path.c_str());
         std::filesystem::create_symlink("/dev/zero", path);
     }},
    {"LinkToItself",
     [](const std::string& path) {
         unlink(path.c_str());
         std::filesystem::create_symlink(path, path);
     }},
    {"InAMissingDirectory",
     [](const std::string& path) {
         const std::string directory = std::filesystem::path(path).parent_path();
         std::filesystem::rename(directory, directory + ".gone");
     }},
    {"NulsOnly", [](const std::string& path) { WriteBytes(path, Bytes(0, 1'000'000)); }},
    {"NulInFront",
     [](const std::string& path) {
         std::ifstream file(path, std::ios::binary);
         const std::string text{std::istreambuf_iterator<char>(file), {}};
         WriteBytes(path, '\0' + text);
     }},
    {"SectionOfOtherName",
     [](const std::string& path) { WriteBytes(path, "CkLog = {\n LoggingMask = X;\n}\n"); }},
    {"SectionThatEndsAtOnce",
     [](const std::string& path) { WriteBytes(path, "CkLog2 = {}\n LoggingMask = X;\n"); }},
    {"SectionWithoutAnything", [](const std::string& path) { WriteBytes(path, "CkLog2 = {"); }},
    {"HeaderAlone", [](const std::string& path) { WriteBytes(path, "CkLog2 ="); }},
    {"KeyAlone", [](const std::string& path) { WriteBytes(path, "CkLog2 = {\n LoggingMask "); }},
};

class DamagedConfiguration : public FaultsTest, public testing::WithParamInterface<Damage> {
protected:
    DamagedConfiguration() { Set("LoggingMask", "MISC_FUNC"); }
    ~DamagedConfiguration() override {
        std::error_code notGone;
        std::filesystem::rename(directory.Path() + ".gone", directory.Path(), notGone);
    }
};

TEST_P(DamagedConfiguration, AtTheStartMeansTheDefaults) {
    const std::string kElsewhere = directory.File("elsewhere");
    std::filesystem::create_directory(kElsewhere);
    EXPECT_TRUE(Survives([&] {
        ASSERT_EQ(chdir(kElsewhere.c_str()), 0);
        Library library;
        GetParam().make(ConfigurationPath());
        for (CK_ULONG i = 0; i < kCallsBetweenLooks; ++i) {
            EXPECT_EQ(library->C_Logout(i), CKR_FUNCTION_NOT_SUPPORTED);
        }
        EXPECT_TRUE(std::filesystem::is_empty(".")) << "logging is off";
    }));
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Errors(), "");
}

TEST_P(DamagedConfiguration, LaterMeansTheDefaultMask) {
    EXPECT_TRUE(Survives([&] {
        Library library;
        library->C_Logout(1);
        GetParam().make(ConfigurationPath());
        ExpectCallsGoOn(library, kCallsBetweenLooks);
        library->C_Logout(2);
    }));
    std::error_code notGone;
    std::filesystem::rename(directory.Path() + ".gone", directory.Path(), notGone);
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.remainder, "");
    ASSERT_GE(log.records.size(), 2U);
    const LogRecord& start = log.records[log.records.size() - 2];
    EXPECT_EQ(start.function, "Logout");
    EXPECT_EQ(start.FirstNumber(), 2U);
    // Nothing was logged before the file was looked at again.
    EXPECT_GT(log.records[0].FirstNumber(), 100U);
}

INSTANTIATE_TEST_SUITE_P(, DamagedConfiguration, testing::ValuesIn(kDamages),
                         [](const testing::TestParamInfo<Damage>& info) { return info.param.name; });

// ---- Files in which something stands ----------------------------------------------------------------------

class HostileConfiguration : public FaultsTest {
protected:
    HostileConfiguration() { Set("LoggingMask", "MISC_FUNC"); }

    // Starts with the file as it is, and expects that every value of the fixture counts.
    void ExpectThatTheValuesStand() {
        EXPECT_TRUE(Survives([] {
            Library library;
            ExpectCallsGoOn(library, 2);
            library->C_GenerateRandom(7, nullptr, 0);
        }));
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        ASSERT_EQ(log.records.size(), 2U);
        EXPECT_EQ(log.records[0].function, "GenerateRandom");
        EXPECT_NE(log.records[0].thread, "") << "the new format";
    }

    // The fixture's text without its last line, which closes the section.
    std::string OpenText() const {
        const std::string text = ConfigurationText();
        return text.substr(0, text.rfind('}'));
    }

    std::string TextInOneLine() const {
        std::string text = ConfigurationText();
        std::replace(text.begin(), text.end(), '\n', ' ');
        return text;
    }
};

TEST_F(HostileConfiguration, WithoutLineEnds) {
    WriteConfigurationFile(TextInOneLine());
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, WithoutClosingBrace) {
    WriteConfigurationFile(OpenText());
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, WithLineEndsOfOtherSystems) {
    std::string text = ConfigurationText();
    std::replace(text.begin(), text.end(), '\n', '\r');
    WriteConfigurationFile(text);
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, OfAGibibyteInOneLine) {
    const std::string filling = Bytes('x', std::size_t{1} << 20);
    const std::string text = TextInOneLine();
    {
        std::ofstream file(ConfigurationPath(), std::ios::binary);
        for (std::size_t size = 0; size < kGibibyte / 2; size += filling.size()) file << filling;
        file << ' ' << text.substr(0, text.rfind('}'));
        for (std::size_t size = 0; size < kGibibyte / 2; size += filling.size()) file << filling;
    }
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, EndsAtANul) {
    WriteConfigurationFile(OpenText() + '\0' + "   LoggingLevel = DESTROY;\n}\n");
    ExpectThatTheValuesStand();
}

// Every byte in front of a section, in place of an entry, and in values. A log has any name that a value may
// have.
TEST_F(HostileConfiguration, HoldsEveryByteValue) {
    const std::string kBeginning = "CkLog2 = {\n   LibUNIX64 = " SCRIPTED_TARGET ";\n";
    const std::string kCannotBeInAName = std::string("\r\n;}/") + '\0';
    EXPECT_TRUE(Survives([&] {
        ASSERT_EQ(chdir(directory.Path().c_str()), 0);
        Library library;
        for (int byte = 0; byte < 256; ++byte) {
            const std::string bytes = Bytes(byte, 300);
            WriteConfigurationFile(bytes + ConfigurationText());
            const CK_RV result = library->C_Logout(1);
            EXPECT_TRUE(result == CKR_OK || result == CKR_FUNCTION_NOT_SUPPORTED) << byte;
            library.Finalize();

            const std::string log = directory.File("log" + Bytes(byte, 1) + ".txt");
            WriteConfigurationFile(kBeginning + bytes + " = " + bytes + "\n   LoggingMask = MISC_FUNC" +
                                   bytes + "\n   LoggingLevel = " + bytes + "\n   NewFormat = 1" + bytes +
                                   "\n   Enabled = 1" + bytes + "\n   File = " + log + "\n");
            ExpectCallsGoOn(library, 1);
            library.Finalize();
            if (kCannotBeInAName.find(static_cast<char>(byte)) != std::string::npos) continue;
            EXPECT_TRUE(std::filesystem::exists(log)) << byte;
        }
    }));
}

TEST_F(HostileConfiguration, HoldsValuesOfEveryLength) {
    EXPECT_TRUE(Survives([this] {
        ASSERT_EQ(chdir(directory.Path().c_str()), 0);
        Library library;
        for (const std::size_t length :
             {1U, 198U, 199U, 200U, 201U, 498U, 499U, 500U, 501U, 5000U, 100000U}) {
            for (const char* const key :
                 {"LoggingMask", "LoggingLevel", "NewFormat", "Enabled", "File", "Error"}) {
                Set("File", directory.File("missing/calls.log"));
                Set(key, std::string(length, '1'));
                ExpectCallsGoOn(library, 1);
                library.Finalize();
                Unset(key);
            }
        }
    }));
}

}  // namespace
