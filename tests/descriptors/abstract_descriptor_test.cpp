#include "tests/descriptors/record_test.h"

using namespace ckscribe;

namespace {

// A Sample has any type and its own value.
class Sample : public AbstractDescriptor {
public:
    explicit Sample(int type, const char* name = nullptr, const char* value = "<value>")
        : AbstractDescriptor(name), type(type), value(value) {}
    int Type() const override { return type; }
    void PrintParameters(RecordText& out, int) const override { out.Append(value); }

private:
    int type;
    const char* value;
};

using AbstractDescriptorTest = RecordTest;

TEST_F(AbstractDescriptorTest, DescriptorLives_InstanceCountIncludesIt) {
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
    {
        const AbstractDescriptor first;
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 1U);
        const Sample second(5);
        EXPECT_EQ(AbstractDescriptor::uInstanceCount, 2U);
    }
    EXPECT_EQ(AbstractDescriptor::uInstanceCount, 0U);
}

TEST_F(AbstractDescriptorTest, NameIsLong_DescriptorKeepsItsFirst32Characters) {
    EXPECT_STREQ(AbstractDescriptor().Name(), "");
    EXPECT_STREQ(AbstractDescriptor(nullptr).Name(), "");
    EXPECT_STREQ(AbstractDescriptor("").Name(), "");
    EXPECT_STREQ(AbstractDescriptor("PIN=").Name(), "PIN=");
    const std::string forty = "0123456789abcdefghijklmnopqrstuvwxyzABCD";
    for (const std::size_t length : {31U, 32U, 33U, 40U}) {
        EXPECT_EQ(AbstractDescriptor(forty.substr(0, length).c_str()).Name(),
                  forty.substr(0, std::min<std::size_t>(length, 32)));
    }
    EXPECT_EQ(New<Sample>(3, forty.c_str()), forty.substr(0, 32) + "<value>");
}

TEST_F(AbstractDescriptorTest, BaseDescriptor_PrintsOnlyItsLabel) {
    EXPECT_EQ(AbstractDescriptor().Type(), 0);
    EXPECT_EQ(Old<AbstractDescriptor>(), "\nUnknown");
    EXPECT_EQ(New<AbstractDescriptor>(), "Unknown");
    EXPECT_EQ(Old<AbstractDescriptor>("named"), "\nUnknown");
    EXPECT_EQ(New<AbstractDescriptor>("named"), "Unknown");
}

TEST_F(AbstractDescriptorTest, OldFormat_DescriptorBeginsANewIndentedLine) {
    UseOldFormat();
    const Sample sample(8);
    EXPECT_EQ(Printed(sample, 0), "\nSessionHandle<value>");
    EXPECT_EQ(Printed(sample, 3), "\n   SessionHandle<value>");
    EXPECT_EQ(Printed(sample, 12), "\n            SessionHandle<value>");
    EXPECT_EQ(Printed(sample, -3), "\nSessionHandle<value>");
    EXPECT_EQ(Printed(sample, 3, ";"), "\n   SessionHandle<value>;");
    EXPECT_EQ(Printed(sample, 0, ""), "\nSessionHandle<value>");
}

TEST_F(AbstractDescriptorTest, NewFormat_DescriptorBeginsNoNewLine) {
    UseNewFormat();
    const Sample sample(8);
    EXPECT_EQ(Printed(sample, 0), "Sesn=<value>");
    EXPECT_EQ(Printed(sample, 3), "Sesn=<value>");
    EXPECT_EQ(Printed(sample, 3, " "), "Sesn=<value> ");
}

TEST_F(AbstractDescriptorTest, TypeAndFormat_DecideTheLabel) {
    EXPECT_EQ(Old<Sample>(11, "tknPresent="), "\nByteBoolean<value>");
    EXPECT_EQ(New<Sample>(11, "tknPresent="), "tknPresent=<value>");
    EXPECT_EQ(New<Sample>(11), "<value>");
    EXPECT_EQ(New<Sample>(27, "ignored="), "Ptr=<value>");
    EXPECT_EQ(New<Sample>(25, "ignored="), "HAMember<value>");
    EXPECT_EQ(Old<Sample>(28, "ignored="), "\nUnknown<value>");
    EXPECT_EQ(New<Sample>(28, "ignored="), "Unknown<value>");
    EXPECT_EQ(New<Sample>(-1, "ignored="), "Unknown<value>");
}

TEST_F(AbstractDescriptorTest, FormatSettingIsNotZero_DescriptorPrintsTheNewFormat) {
    const Sample sample(8);
    for (const int flag : {1, 2, -1, 1 << 30}) {
        bUseNewLogFormat.store(flag);
        EXPECT_EQ(Printed(sample), "Sesn=<value>");
    }
}

// ---- RecordText -------------------------------------------------------------------------------------------

TEST(RecordText, TextInMemoryIsFlushed_ItStaysInMemory) {
    RecordText text;
    text.Append("one");
    text.Flush();
    text.Append("two");
    EXPECT_EQ(text.Text(), "onetwo");
}

TEST(RecordText, TextForAStream_IsWrittenAtEachFlushAndAtTheEnd) {
    char bytes[32] = {};
    std::FILE* const stream = fmemopen(bytes, sizeof bytes, "w");
    {
        RecordText text(stream);
        text.Append("one");
        EXPECT_STREQ(bytes, "");
        text.Flush();
        EXPECT_STREQ(bytes, "one");
        EXPECT_EQ(text.Text(), "");
        text.Append("two");
        EXPECT_STREQ(bytes, "one");
    }
    std::fflush(stream);
    EXPECT_STREQ(bytes, "onetwo");
    std::fclose(stream);
}

}  // namespace
