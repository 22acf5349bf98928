// Records go to the log, and the library starts and stops everything that prints.

#include <sys/stat.h>

#include "descriptors/command_descriptor.h"
#include "descriptors/descriptor_library.h"
#include "descriptors/scalar_descriptors.h"
#include "descriptors/value_descriptor.h"
#include "tests/descriptors/record_test.h"
#include "tests/logging_configuration_file.h"

using namespace ckscribe;

namespace {

class CaptureStreamTest : public RecordTest {
protected:
    CaptureStreamTest() { SetErrorFile(errors); }
    ~CaptureStreamTest() override { AbstractDescriptor::CloseCaptureStream(); }

    void SetErrorFile(const std::string& path) { file.Write("Error = " + path + ";\n"); }

    static void Open(const std::string& path) {
        AbstractDescriptor::OpenCaptureStream(reinterpret_cast<const unsigned char*>(path.c_str()));
    }

    static bool IsOpen() {
        EXPECT_EQ(AbstractDescriptor::isStreamOpen.load() != 0, AbstractDescriptor::fpCaptureStream.IsOpen());
        return AbstractDescriptor::isStreamOpen.load() == 1;
    }

    // Returns the text of the only entry of the error file, without its time.
    std::string Error() const {
        const std::string text = FileText(errors);
        const std::size_t stamp = text.find("]:  ");
        return stamp == text.npos ? text : text.substr(stamp + 4);
    }

    LoggingConfigurationFile file;
    const std::string log = file.directory.File("log");
    const std::string errors = file.directory.File("errors");
};

TEST_F(CaptureStreamTest, NoLogIsOpen_CaptureWritesNothing) {
    EXPECT_FALSE(IsOpen());
    CommandDescriptor(kLogout, CommandPhase::kStart, 0).Capture();
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(FileText(errors), "");
}

TEST_F(CaptureStreamTest, CaptureReturns_RecordIsInTheFile) {
    UseNewFormat();
    Open(log);
    EXPECT_TRUE(IsOpen());
    CommandDescriptor command(kLogout, CommandPhase::kStart, 0);
    command.AddDescriptor(new SessionHandleDescriptor(5));
    command.Capture();
    EXPECT_EQ(FileText(log), "\n\n10:15:30 01234-567:STRTLogout {Sesn=5 }");
    CommandDescriptor(kLogout, CommandPhase::kEnd, 0).Capture();
    EXPECT_EQ(FileText(log),
              "\n\n10:15:30 01234-567:STRTLogout {Sesn=5 }"
              "\n10:15:30 01234-567:FINILogout CKR_OK12345clks {}");
}

TEST_F(CaptureStreamTest, DescriptorIsNoCommand_CaptureWritesItsText) {
    UseOldFormat();
    Open(log);
    SessionHandleDescriptor(5).Capture();
    EXPECT_EQ(FileText(log), "\nSessionHandle(0x5)");
}

TEST_F(CaptureStreamTest, LargeAndSmallRecords_FollowEachOtherWhole) {
    UseNewFormat();
    Open(log);
    std::string expected;
    for (const std::size_t size : {10U, 1'500'000U, 20U, 100'000U, 0U, 30U}) {
        const std::string bytes(size, 'x');
        ByteStringDescriptor(bytes.data(), size, "v=").Capture();
        expected += "v=\"" + (size == 0 ? "<null>" : bytes) + "\"";
        EXPECT_EQ(FileText(log), expected);
    }
}

// Printing this descriptor makes another record.
class Interrupted : public AbstractDescriptor {
public:
    void PrintParameters(RecordText& out, int) const override {
        out.Append("(outer begins,");
        SessionHandleDescriptor(6).Capture();
        out.Append("outer ends)");
    }
};

TEST_F(CaptureStreamTest, PrintingMakesAnotherRecord_BothRecordsAreWhole) {
    UseNewFormat();
    Open(log);
    for (const char* expected :
         {"Sesn=6Unknown(outer begins,outer ends)",
          "Sesn=6Unknown(outer begins,outer ends)Sesn=6Unknown(outer begins,outer ends)"}) {
        Interrupted().Capture();
        EXPECT_EQ(FileText(log), expected);
    }
}

TEST_F(CaptureStreamTest, LogExists_RecordIsAppended) {
    std::ofstream(log) << "before";
    Open(log);
    UseNewFormat();
    SessionHandleDescriptor(5).Capture();
    EXPECT_EQ(FileText(log), "beforeSesn=5");
}

TEST_F(CaptureStreamTest, AnotherLogIsOpened_RecordsGoOnlyThere) {
    const std::string second = file.directory.File("second");
    UseNewFormat();
    Open(log);
    SessionHandleDescriptor(5).Capture();
    Open(second);
    SessionHandleDescriptor(6).Capture();
    EXPECT_EQ(FileText(log), "Sesn=5");
    EXPECT_EQ(FileText(second), "Sesn=6");
    AbstractDescriptor::CloseCaptureStream();
    EXPECT_FALSE(IsOpen());
    SessionHandleDescriptor(7).Capture();
    EXPECT_EQ(FileText(second), "Sesn=6");
}

TEST_F(CaptureStreamTest, LogCannotBeOpened_ErrorFileSaysWhich) {
    Open(log);
    const std::string missing = file.directory.File("missing/log");
    Open(missing);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Error(), "Could not open capture file " + missing + ".");
    SessionHandleDescriptor(5).Capture();
    EXPECT_EQ(FileText(log), "");
}

TEST_F(CaptureStreamTest, LogNameIsEmpty_NoLogIsOpened) {
    Open("");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Error(), "Could not open capture file .");
}

TEST_F(CaptureStreamTest, LogNameIsLong_ErrorFileHasAllOfIt) {
    const std::string name = std::string("/").append(498, 'n');
    Open(name);
    EXPECT_EQ(Error(), "Could not open capture file " + name + ".");
}

TEST_F(CaptureStreamTest, DescriptorsSurviveWithoutALog_ErrorFileSaysHowMany) {
    const AbstractDescriptor first;
    const AbstractDescriptor second;
    AbstractDescriptor::TerminateClass();
    EXPECT_EQ(Error(), "Abstract Descriptor has 2 instance(s) surviving the class.");
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 2U);
}

TEST_F(CaptureStreamTest, DescriptorsSurviveAnOpenLog_NothingIsReported) {
    Open(log);
    {
        const AbstractDescriptor first;
        const AbstractDescriptor second;
        DescriptorLibrary::Terminate();
        EXPECT_EQ(FileText(errors), "");
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
        EXPECT_FALSE(IsOpen());
    }
    AbstractDescriptor::uInstanceCount = 0;
}

TEST_F(CaptureStreamTest, NoDescriptorSurvives_NothingIsReported) {
    AbstractDescriptor::TerminateClass();
    TerminateDescriptorLibrary();
    EXPECT_EQ(FileText(errors), "");
}

TEST_F(CaptureStreamTest, LibraryStarts_InstanceCountIsZeroAndNoLogIsOpen) {
    Open(log);
    {
        const AbstractDescriptor survivor;
        DescriptorLibrary::Initialize();
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
    }
    EXPECT_FALSE(IsOpen());
    AbstractDescriptor::uInstanceCount = 0;
}

TEST_F(CaptureStreamTest, LogIsNamed_LibraryOpensThatLog) {
    DescriptorLibrary::CaptureStream(reinterpret_cast<const unsigned char*>(log.c_str()));
    EXPECT_TRUE(IsOpen());
    AbstractDescriptor::CloseCaptureStream();
    EXPECT_FALSE(IsOpen());
    UseNewFormat();
    Open(log);
    SessionHandleDescriptor(5).Capture();
    EXPECT_EQ(FileText(log), "Sesn=5");
}

// ---- The configuration ------------------------------------------------------------------------------------

class InitializeTest : public CaptureStreamTest {
protected:
    void Initialize(const std::string& lines) {
        file.Write("Error = " + errors + ";\n" + lines);
        InitializeDescriptorLibrary();
    }
};

TEST_F(InitializeTest, KeysAreSet_LibraryUsesEverySetting) {
    Initialize("NewFormat = 1;\nEnabled = 1;\nLoggingLevel = ADMIN;\nFile = " + log + ";\n");
    EXPECT_TRUE(UseNewLogFormat());
    EXPECT_EQ(ckscribe::LevelInForce(), 3U);
    EXPECT_TRUE(IsOpen());
    SessionHandleDescriptor(5).Capture();
    EXPECT_EQ(FileText(log), "Sesn=5");
}

TEST_F(InitializeTest, KeysAreAbsent_NoLogIsOpenedAndDefaultsHold) {
    bUseNewLogFormat.store(1);
    uLoggingLevel.store(1);
    Initialize("");
    EXPECT_FALSE(UseNewLogFormat());
    EXPECT_EQ(ckscribe::LevelInForce(), 4U);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(FileText(errors), "");
}

TEST_F(InitializeTest, LogIsDisabled_NoFileIsCreated) {
    Initialize("Enabled = 0;\nNewFormat = 1;\nLoggingLevel = DESTROY;\nFile = " + log + ";\n");
    EXPECT_FALSE(IsOpen());
    EXPECT_TRUE(UseNewLogFormat());
    EXPECT_EQ(ckscribe::LevelInForce(), 1U);
    struct stat status;
    EXPECT_NE(stat(log.c_str(), &status), 0);
}

TEST_F(InitializeTest, LogWasOpenAndIsDisabled_LogIsClosed) {
    Initialize("Enabled = 1;\nFile = " + log + ";\n");
    EXPECT_TRUE(IsOpen());
    Initialize("Enabled = 0;\nFile = " + log + ";\n");
    EXPECT_FALSE(IsOpen());
}

TEST_F(InitializeTest, SwitchIsAnyNumberButZero_SettingIsOn) {
    Initialize("Enabled = 7;\nNewFormat = -1;\nFile = " + log + ";\n");
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(UseNewLogFormat());
    Initialize("Enabled = yes;\nNewFormat = true;\nFile = " + log + ";\n");
    EXPECT_FALSE(IsOpen());
    EXPECT_FALSE(UseNewLogFormat());
}

TEST_F(InitializeTest, LogCannotBeOpened_ErrorIsReportedAndOtherSettingsHold) {
    Initialize("Enabled = 1;\nNewFormat = 1;\nLoggingLevel = MODIFY;\nFile = /nowhere/at/all;\n");
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Error(), "Could not open capture file /nowhere/at/all.");
    EXPECT_TRUE(UseNewLogFormat());
    EXPECT_EQ(ckscribe::LevelInForce(), 2U);
}

}  // namespace
