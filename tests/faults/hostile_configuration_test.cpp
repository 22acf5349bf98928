// A configuration file is not what it should be. Nothing crashes or hangs. What stands in the file counts,
// and everything else has its default.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/faults/application.h"
#include "tests/faults/log_records.h"
#include "tests/faults/undisturbed_calls.h"
#include "tests/file_text.h"

namespace {

// The library looks at the file again within this many calls. Each call asks for the mask twice.
constexpr int kCallsBetweenLooks = 251;

// A sanitized library reads a gibibyte for minutes.
constexpr std::size_t kHugeLine = std::size_t{CKSCRIBE_IS_SANITIZED ? 1 : 16} << 26;

void WriteBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// Returns several copies of a byte.
std::string Bytes(int byte, std::size_t count) { return std::string(count, static_cast<char>(byte)); }

// ---- Files in which nothing stands ------------------------------------------------------------------------

struct Damage {
    const char* name;
    bool leavesSomethingToRead;
    // `make` changes the file at `path`, which exists. It runs in a child process.
    void (*make)(const std::string& path);

    friend void PrintTo(const Damage& damage, std::ostream* stream) { *stream << damage.name; }
};

void MakeUnreadable(const std::string& path) {
    chmod(std::filesystem::path(path).parent_path().c_str(), 0777);
    chmod(path.c_str(), 0);
    GiveUpRightsOfRoot();
}

const Damage kDamages[] = {
    {"Missing", false, [](const std::string& path) { unlink(path.c_str()); }},
    {"Empty", false, [](const std::string& path) { WriteBytes(path, ""); }},
    {"Directory", false,
     [](const std::string& path) {
         unlink(path.c_str());
         mkdir(path.c_str(), 0700);
     }},
    {"Unreadable", false, MakeUnreadable},
    {"Fifo", false,
     [](const std::string& path) {
         unlink(path.c_str());
         mkfifo(path.c_str(), 0600);
     }},
    {"EndlessDevice", false,
     [](const std::string& path) {
         unlink(path.c_str());
         std::filesystem::create_symlink("/dev/zero", path);
     }},
    {"LinkToItself", false,
     [](const std::string& path) {
         unlink(path.c_str());
         std::filesystem::create_symlink(path, path);
     }},
    {"InAMissingDirectory", false,
     [](const std::string& path) {
         const std::string directory = std::filesystem::path(path).parent_path();
         std::filesystem::rename(directory, directory + ".gone");
     }},
    {"InAnotherRoot", false,
     [](const std::string& path) {
         const std::string directory = std::filesystem::path(path).parent_path();
         // Only root may change the root directory. Any other user loses the file instead.
         if (chroot(directory.c_str()) != 0) unlink(path.c_str());
     }},
    {"NulsOnly", true, [](const std::string& path) { WriteBytes(path, Bytes(0, 1'000'000)); }},
    {"NulInFront", true, [](const std::string& path) { WriteBytes(path, '\0' + FileText(path)); }},
    {"SectionOfOtherName", true,
     [](const std::string& path) { WriteBytes(path, "CkLog = {\n LoggingMask = X;\n}\n"); }},
    {"SectionThatEndsAtOnce", true,
     [](const std::string& path) { WriteBytes(path, "CkLog2 = {}\n LoggingMask = X;\n"); }},
    {"SectionWithoutAnything", true, [](const std::string& path) { WriteBytes(path, "CkLog2 = {"); }},
    {"HeaderAlone", true, [](const std::string& path) { WriteBytes(path, "CkLog2 ="); }},
    {"KeyAlone", true, [](const std::string& path) { WriteBytes(path, "CkLog2 = {\n LoggingMask "); }},
};

class DamagedConfiguration : public FaultsTest, public testing::WithParamInterface<Damage> {
protected:
    DamagedConfiguration() { Set("LoggingMask", "MISC_FUNC"); }
    ~DamagedConfiguration() override {
        std::error_code notGone;
        std::filesystem::rename(directory.Path() + ".gone", directory.Path(), notGone);
    }
};

TEST_P(DamagedConfiguration, FileDamagedAtTheStart_DefaultsCount) {
    const std::string kElsewhere = directory.File("elsewhere");
    std::filesystem::create_directory(kElsewhere);
    std::filesystem::permissions(kElsewhere, std::filesystem::perms::all);
    EXPECT_TRUE(Survives([&] {
        ASSERT_EQ(chdir(kElsewhere.c_str()), 0);
        Library library;
        GetParam().make(ConfigurationPath());
        for (CK_ULONG i = 0; i < kCallsBetweenLooks; ++i) {
            EXPECT_EQ(library->C_Logout(i), CKR_FUNCTION_NOT_SUPPORTED);
        }
        // Logging is off. The default target is not there; its line is all that the library writes.
        EXPECT_FALSE(std::filesystem::exists("log.txt"));
        const std::string errors = Contents("logerror.txt");
        EXPECT_EQ(errors.find('\n'), errors.rfind('\n'));
        EXPECT_NE(errors.find("Could not load target library /usr/lib/libmordavek2.so: "), errors.npos);
    }));
    EXPECT_EQ(Log(), "");
    EXPECT_EQ(Errors(), "");
}

// A file that can be read and lacks the key means every class. A file that cannot be read changes nothing.
TEST_P(DamagedConfiguration, FileDamagedLater_MaskWidensOnlyIfSomethingCanBeRead) {
    EXPECT_TRUE(Survives([&] {
        Library library;
        library->C_Logout(1);
        library->C_GenerateRandom(2, nullptr, 0);
        GetParam().make(ConfigurationPath());
        ExpectCallsGoOn(library, kCallsBetweenLooks);
        library->C_Logout(3);
        library->C_GenerateRandom(4, nullptr, 0);
    }));
    std::error_code notGone;
    std::filesystem::rename(directory.Path() + ".gone", directory.Path(), notGone);
    const ParsedLog log = ParseLog(Log());
    EXPECT_EQ(log.remainder, "");
    std::map<std::string, std::size_t> records;
    for (const LogRecord& record : log.records) ++records[record.function];
    EXPECT_EQ(records["GenerateRandom"], 4U);
    if (GetParam().leavesSomethingToRead) {
        EXPECT_GT(records["Logout"], 0U);
        EXPECT_GT(records["PerformSelfTest"], 0U);
    } else {
        EXPECT_EQ(records.size(), 1U);
    }
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

    // Returns the fixture's text without its last line, which closes the section.
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

TEST_F(HostileConfiguration, NoLineEnds_ValuesCount) {
    WriteConfigurationFile(TextInOneLine());
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, NoClosingBrace_ValuesCount) {
    WriteConfigurationFile(OpenText());
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, LineEndsOfOtherSystems_ValuesCount) {
    std::string text = ConfigurationText();
    std::replace(text.begin(), text.end(), '\n', '\r');
    WriteConfigurationFile(text);
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, LineIsHuge_ValuesCount) {
    const std::string filling = Bytes('x', std::size_t{1} << 20);
    const std::string text = TextInOneLine();
    {
        std::ofstream file(ConfigurationPath(), std::ios::binary);
        for (std::size_t size = 0; size < kHugeLine / 2; size += filling.size()) file << filling;
        file << ' ' << text.substr(0, text.rfind('}'));
        for (std::size_t size = 0; size < kHugeLine / 2; size += filling.size()) file << filling;
    }
    ExpectThatTheValuesStand();
}

TEST_F(HostileConfiguration, TextHoldsANul_TextEndsThere) {
    WriteConfigurationFile(OpenText() + '\0' + "   LoggingLevel = DESTROY;\n}\n");
    ExpectThatTheValuesStand();
}

// A section is found behind every byte after which a blank or the end of a line stands.
TEST_F(HostileConfiguration, EveryByteValueInFrontOfTheSection_ValuesCountAsFarAsTheyStand) {
    EXPECT_TRUE(Survives([&] {
        Library library;
        for (int byte = 0; byte < 256; ++byte) {
            WriteConfigurationFile(Bytes(byte, 300) + ConfigurationText());
            const bool isFound = byte == ' ' || byte == '\r' || byte == '\n';
            EXPECT_EQ(library->C_Logout(1), isFound ? CKR_OK : CKR_FUNCTION_NOT_SUPPORTED) << byte;
            library.Finalize();
        }
    }));
}

// Every byte stands in place of an entry and in values. A log may have any name that a value may have.
TEST_F(HostileConfiguration, EveryByteValueInTheSection_ValuesCountAsFarAsTheyStand) {
    const std::string kFile = AreEventsTested() ? "Events" : "File";
    const std::string kBeginning = "CkLog2 = {\n   LibUNIX64 = " SCRIPTED_TARGET ";\n";
    // These bytes end the section or the text. No entry behind them counts.
    const std::string kEndsEverything = std::string("}") + '\0';
    const std::string kEndsAValue = "\r\n;";
    const std::string kSeparatesClasses = " |";
    const auto isOneOf = [](const std::string& bytes, int byte) {
        return bytes.find(static_cast<char>(byte)) != std::string::npos;
    };
    EXPECT_TRUE(Survives([&] {
        ASSERT_EQ(chdir(directory.Path().c_str()), 0);
        Library library;
        for (int byte = 0; byte < 256; ++byte) {
            const std::string bytes = Bytes(byte, 300);
            const std::string log = directory.File("log" + Bytes(byte, 1) + ".txt");
            WriteConfigurationFile(kBeginning + bytes + " = " + bytes + "\n   LoggingMask = MISC_FUNC" +
                                   bytes + "\n   LoggingLevel = " + bytes + "\n   NewFormat = 1" + bytes +
                                   "\n   Enabled = " + (AreEventsTested() ? "0" : "1" + bytes) + "\n   " +
                                   kFile + " = " + log + "\n");
            ExpectCallsGoOn(library, 1);
            library->C_GenerateRandom(7, nullptr, 0);
            library.Finalize();

            const std::string found = isOneOf(kEndsAValue, byte) ? directory.File("log") : log;
            const bool isOpened = !isOneOf(kEndsEverything, byte) && byte != '/';
            EXPECT_EQ(std::filesystem::exists(found), isOpened) << byte;
            const bool isInMask = isOneOf(kEndsAValue + kSeparatesClasses, byte);
            const ParsedLog parsed = ParseLog(Contents(found));
            EXPECT_EQ(parsed.remainder, "") << byte;
            ASSERT_EQ(parsed.records.size(), isInMask ? 2U : 0U) << byte;
            if (isInMask) {
                EXPECT_EQ(parsed.records[0].function, "GenerateRandom") << byte;
                EXPECT_NE(parsed.records[0].thread, "") << "the new format, in spite of " << byte;
            }
            SearchAndRemove(found);
        }
    }));
}

TEST_F(HostileConfiguration, ValuesOfEveryLength_CallsGoOn) {
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

// ---- Values that are too long -----------------------------------------------------------------------------

class LongValue : public HostileConfiguration {
protected:
    static constexpr std::size_t kLongestPath = 499;
    static constexpr std::size_t kLongestWord = 199;

    // Returns a name of `length` characters for the same file.
    static std::string LongName(const std::string& path, std::size_t length) {
        const std::size_t slash = path.rfind('/');
        return path.substr(0, slash) + std::string(length - path.size(), '/') + path.substr(slash);
    }

    // Returns how many records a call of C_GenerateRandom has.
    std::size_t Records() {
        EXPECT_TRUE(Survives([] { Library()->C_GenerateRandom(7, nullptr, 0); }));
        const ParsedLog log = ParseLog(Log());
        EXPECT_EQ(log.remainder, "");
        isNewFormat = !log.records.empty() && !log.records[0].thread.empty();
        SearchAndRemove(LogPath());
        return log.records.size();
    }

    bool isNewFormat = false;
};

TEST_F(LongValue, LongPathOfTheLog_IsCut) {
    Set("File", LongName(LogPath(), kLongestPath));
    ExpectThatTheValuesStand();
    for (const std::size_t cut : {1U, 2U}) {
        const std::string path = LogPath();
        const std::string shorter = path.substr(0, path.size() - cut);
        Set("File", LongName(path, kLongestPath + cut));
        EXPECT_TRUE(Survives([] { ExpectCallsGoOn(Library(), 1); }));
        EXPECT_TRUE(std::filesystem::exists(shorter)) << cut;
    }
}

TEST_F(LongValue, LongPathOfTheErrorFile_IsCut) {
    Set("File", directory.File("missing/calls.log"));
    for (const std::size_t cut : {0U, 1U, 2U}) {
        const std::string path = ErrorPath();
        const std::string shorter = path.substr(0, path.size() - cut);
        Set("Error", LongName(path, kLongestPath + cut));
        EXPECT_TRUE(Survives([] { ExpectCallsGoOn(Library(), 1); }));
        EXPECT_NE(Contents(shorter), "") << cut;
    }
}

TEST_F(LongValue, LongPathOfTheTarget_IsCut) {
    Set("LibUNIX64", LongName(SCRIPTED_TARGET, kLongestPath));
    EXPECT_TRUE(Survives([] { EXPECT_EQ(Library()->C_Logout(1), CKR_OK); }));
    Set("LibUNIX64", LongName(SCRIPTED_TARGET, kLongestPath + 1));
    EXPECT_TRUE(Survives([] { EXPECT_EQ(Library()->C_Logout(1), CKR_FUNCTION_NOT_SUPPORTED); }));
}

TEST_F(LongValue, LongMask_IsCut) {
    const std::string name = "MISC_FUNC";
    Set("LoggingMask", std::string(kLongestWord - name.size(), '|') + name);
    EXPECT_EQ(Records(), 2U);
    Set("LoggingMask", std::string(kLongestWord + 1 - name.size(), '|') + name);
    EXPECT_EQ(Records(), 0U) << "a name that is cut is unknown";
    Set("LoggingMask", name + std::string(kLongestWord - name.size(), '|') + "UNKNOWN");
    EXPECT_EQ(Records(), 2U);
}

TEST_F(LongValue, LongNumber_IsCut) {
    const auto number = [](std::size_t length) { return std::string(length - 1, '0') + '1'; };
    Set("Enabled", number(kLongestWord));
    EXPECT_EQ(Records(), 2U);
    Set("Enabled", number(kLongestWord + 1));
    EXPECT_EQ(Records(), 0U);
    Set("Enabled", "1");
    Set("NewFormat", number(kLongestWord));
    EXPECT_EQ(Records(), 2U);
    EXPECT_TRUE(isNewFormat);
    Set("NewFormat", number(kLongestWord + 1));
    EXPECT_EQ(Records(), 2U);
    EXPECT_EQ(isNewFormat, AreEventsTested()) << "events have one form, which names the thread";
}

// A level is a whole word. A word longer than the longest level is none.
TEST_F(LongValue, LongLevel_IsNoLevel) {
    Set("LoggingLevel", "DESTROY");
    EXPECT_EQ(Records(), 0U);
    for (const std::size_t length : {kLongestWord, kLongestWord + 1}) {
        Set("LoggingLevel", "DESTROY" + std::string(length - 7, 'Y'));
        EXPECT_EQ(Records(), 2U) << length;
    }
}

}  // namespace
