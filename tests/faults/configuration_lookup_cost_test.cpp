// A look-up in the configuration file costs one read of the file, and steps in proportion to the file's
// length, whatever it holds.
//
// The test counts the steps. config/entry_lookup.cpp is compiled into this program so that every run of
// straight code in it calls __sanitizer_cov_trace_pc below. The linker puts functions in front of the C
// library's own. They count the characters that the C library passes over.

#include <gtest/gtest.h>
#include <sys/types.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include "config/logging_configuration.h"
#include "tests/temporary_directory.h"

namespace {

std::size_t steps = 0;
std::size_t reads = 0;
std::size_t bytesAskedFor = 0;

}  // namespace

extern "C" {

void __sanitizer_cov_trace_pc() { ++steps; }

const char* __real_strstr(const char* text, const char* part);
const char* __real_strchr(const char* text, int character);
std::size_t __real_strcspn(const char* text, const char* characters);
ssize_t __real_read(int file, void* buffer, std::size_t size);

const char* __wrap_strstr(const char* text, const char* part) {
    const char* const found = __real_strstr(text, part);
    steps += found != nullptr ? static_cast<std::size_t>(found - text) : std::strlen(text);
    return found;
}

const char* __wrap_strchr(const char* text, int character) {
    const char* const found = __real_strchr(text, character);
    steps += found != nullptr ? static_cast<std::size_t>(found - text) : std::strlen(text);
    return found;
}

std::size_t __wrap_strcspn(const char* text, const char* characters) {
    const std::size_t length = __real_strcspn(text, characters);
    steps += length;
    return length;
}

ssize_t __wrap_read(int file, void* buffer, std::size_t size) {
    ++reads;
    bytesAskedFor += size;
    return __real_read(file, buffer, size);
}

}  // extern "C"

namespace {

constexpr std::size_t kLength = 10'000;
constexpr std::size_t kMostStepsPerCharacter = 10;

struct HostileText {
    std::string name;
    std::string before;
    std::string repeated;
    std::string after;

    friend void PrintTo(const HostileText& text, std::ostream* stream) { *stream << text.name; }

    // Returns `before`, then `repeated` up to `length` characters, then `after`.
    std::string OfLength(std::size_t length) const {
        std::string text = before;
        while (text.size() < length) text += repeated;
        return text + after;
    }
};

class ConfigurationLookupCost : public testing::TestWithParam<HostileText> {
protected:
    ConfigurationLookupCost() { setenv("WendrafilConfigurationPath", directory.Path().c_str(), 1); }

    void Write(std::size_t length) const {
        std::ofstream(directory.File("Wendrafil.conf"), std::ios::binary) << GetParam().OfLength(length);
    }

    std::size_t StepsOfLookup(std::size_t length) const {
        Write(length);
        CkLogConfig store;
        steps = 0;
        store.GetLoggingMask();
        return steps;
    }

    TemporaryDirectory directory;
};

// If the cost is in proportion to the length, every doubling of the length doubles what the last one added.
// If it grew with the square, it would be four times as much.
TEST_P(ConfigurationLookupCost, FileGrows_CostGrowsWithItsLength) {
    const std::size_t cost = StepsOfLookup(kLength);
    const std::size_t costOfTwice = StepsOfLookup(2 * kLength);
    const std::size_t costOfFourTimes = StepsOfLookup(4 * kLength);
    EXPECT_GT(cost, 0U);
    EXPECT_LE(costOfFourTimes - costOfTwice, 2 * (costOfTwice - cost) + kLength / 10);
    EXPECT_LE(costOfFourTimes, kMostStepsPerCharacter * 4 * kLength);
}

TEST_P(ConfigurationLookupCost, OneLookup_ReadsTheFileOnce) {
    Write(kLength);
    CkLogConfig store;
    reads = 0;
    bytesAskedFor = 0;
    store.GetLoggingMask();
    EXPECT_EQ(reads, 1U);
    EXPECT_EQ(bytesAskedFor, std::filesystem::file_size(directory.File("Wendrafil.conf")));
}

const HostileText kTexts[] = {
    {"Letters", "", "x", ""},
    {"LineEnds", "", "\n", ""},
    {"Spaces", "", " ", ""},
    {"OpeningBraces", "", "{", ""},
    {"EqualsSigns", "", "=", ""},
    {"ByteValues", "", "\x01\x7F\x80\xFF", ""},
    {"SectionNames", "", "CkLog2 ", ""},
    {"SectionNamesWithoutEnd", "", "CkLog2", ""},
    {"BeginningsOfSectionNames", "", "CkLog", ""},
    {"HeadersWithoutBrace", "", "CkLog2 = ", ""},
    {"HeaderFollowedBySpace", "CkLog2 = ", " \n", ""},
    {"HeaderWithoutEquals", "CkLog2", " \n", ""},
    {"HeadersFollowedBySpace", "", "CkLog2                                ", ""},
    {"SectionsThatAreEmpty", "", "CkLog2 = {}\n", ""},
    {"SectionsThatNeverEnd", "", "CkLog2 = {\n", ""},
    {"SectionThatNeverEnds", "CkLog2 = {\n", "x", ""},
    {"KeysOfOtherNames", "CkLog2 = {\n", "LoggingMasks = 1;\n", "}"},
    {"KeysWithoutEquals", "CkLog2 = {\n", " LoggingMask", "}"},
    {"KeysWithoutValue", "CkLog2 = {\n", "LoggingMask ;", "}"},
    {"KeyFollowedBySpaces", "CkLog2 = {\n LoggingMask", " ", "}"},
    {"KeysFollowedBySpaces", "CkLog2 = {\n", " LoggingMask                                ", "}"},
    {"BeginningsOfKeys", "CkLog2 = {\n", "LoggingLoggingMas ", "}"},
    {"ValueThatNeverEnds", "CkLog2 = {\n LoggingMask = ", "x", ""},
    {"ValueOfSpaces", "CkLog2 = {\n LoggingMask = ", " ", ""},
    {"ManyNamesInAValue", "CkLog2 = {\n LoggingMask = ", "DIGEST_FUNC|", ""},
};

INSTANTIATE_TEST_SUITE_P(, ConfigurationLookupCost, testing::ValuesIn(kTexts),
                         [](const testing::TestParamInfo<HostileText>& info) { return info.param.name; });

}  // namespace
