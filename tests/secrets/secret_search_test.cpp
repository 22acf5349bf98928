#include "tests/secrets/secret_search.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <set>

#include "tests/secrets/planted_secret.h"
#include "tests/temporary_directory.h"

namespace {

// Returns "number" etc. for a secret that is found at any offset, or "" for none.
std::string FormIn(std::string_view written, std::size_t leastInDigits = kLeastPart) {
    const auto found = FindSecret(written, leastInDigits);
    return found ? found->form : "";
}

}  // namespace

TEST(PlantedSecret, SecretsOfDifferentNumbers_Differ) {
    std::set<std::string> secrets;
    for (std::size_t number = 0; number < 20000; ++number) {
        const std::string secret = PlantedSecret(number);
        EXPECT_GE(secret.size(), 16u);
        EXPECT_LE(secret.size(), 24u);
        EXPECT_TRUE(secrets.insert(secret).second) << number;
    }
}

TEST(PlantedSecret, AnyFourBytesOfASecret_AreFound) {
    for (std::size_t number = 0; number < 2000; ++number) {
        const std::string secret = PlantedSecret(number);
        for (std::size_t i = 0; i + 4 <= secret.size(); ++i)
            EXPECT_EQ("text", FormIn("PIN=\"" + secret.substr(i, 4) + "\"")) << number;
    }
}

TEST(FindSecret, RecordsWithoutASecret_FindsNothing) {
    EXPECT_EQ("", FormIn(""));
    EXPECT_EQ("", FormIn("\n\n10:15:30 01234-567:STRTLogin {Sesn=81 User=1 PIN=\"********\" }\n"
                         "10:15:30 01234-567:FINILogin ***CKR_UNKNOWN 0x80000999***12345clks {}"));
    EXPECT_EQ("", FormIn("ByteString(Numeric\"5230adfe6b13af64\"); CKK_X9_42_DH CKM_XOR_BASE_AND_DATA"));
}

TEST(FindSecret, ThreeBytesInARow_FindsNothing) {
    EXPECT_EQ("", FormIn("Q~J"));
    EXPECT_EQ("text", FormIn("Q~J^"));
    EXPECT_EQ("text", FormIn("~J^Q"));
    EXPECT_EQ("", FormIn("Q~J Q~J"));
    EXPECT_EQ("", FormIn("QQ~~JJ^^"));
    EXPECT_EQ("text", FormIn("QQ~J^^"));
}

TEST(FindSecret, SecretIsThere_GivesItsPlace) {
    EXPECT_EQ(5u, FindSecret("PIN=\"Q~J^Q~\"", kLeastPart)->offset);
    EXPECT_EQ(4u, FindSecret("PIN=517e4a5e", kLeastPart)->offset);
    EXPECT_EQ(4u, FindSecret("PIN=1581940305", kLeastPart)->offset);
}

TEST(FindSecret, HexadecimalDigitsOfEitherCase_AreFound) {
    EXPECT_EQ("hexadecimal", FormIn("517e4a5e"));
    EXPECT_EQ("hexadecimal", FormIn("517E4A5E"));
    EXPECT_EQ("hexadecimal", FormIn("ee517e4a5eee"));
    EXPECT_EQ("hexadecimal", FormIn("e517e4a5ee"));
    EXPECT_EQ("", FormIn("517e4a"));
    EXPECT_EQ("", FormIn("517e4a5f"));
}

TEST(FindSecret, HexadecimalDigitsWithSeparators_AreFound) {
    EXPECT_EQ("hexadecimal", FormIn("51 7e 4a 5e"));
    EXPECT_EQ("hexadecimal", FormIn("51:7E:4A:5E"));
    EXPECT_EQ("hexadecimal", FormIn("51-7e-4a-5e"));
    EXPECT_EQ("hexadecimal", FormIn("0x51, 0x7e, 0x4a, 0x5e"));
    EXPECT_EQ("hexadecimal", FormIn("\\x51\\x7e\\x4a\\x5e"));
    EXPECT_EQ("", FormIn("51;7e;4a;5e"));
}

TEST(FindSecret, DecimalNumbers_AreFound) {
    EXPECT_EQ("hexadecimal", FormIn("(0x5e4a7e51)")) << "the last byte first";
    EXPECT_EQ("number", FormIn("1581940305"));
    EXPECT_EQ("number", FormIn("val=6794381875781205585 ")) << "eight bytes";
    EXPECT_EQ("", FormIn("11581940305"));
    EXPECT_EQ("", FormIn("111111111158194030500")) << "no number of 64 bits";
}

TEST(FindSecret, LongerPartIsDemandedInDigits_ShorterPartIsNotFound) {
    EXPECT_EQ("", FormIn("517e4a5e517e4a", kLeastPartAmongChance));
    EXPECT_EQ("hexadecimal", FormIn("517e4a5e517e4a5e", kLeastPartAmongChance));
    EXPECT_EQ("", FormIn("1581940305", kLeastPartAmongChance));
    EXPECT_EQ("number", FormIn("6794381875781205585", kLeastPartAmongChance));
    EXPECT_EQ("text", FormIn("Q~J^", kLeastPartAmongChance));
}

TEST(FilesWithSecrets, FileWithASecret_IsNamedWithPlaceAndForm) {
    // This directory is not searched when it is removed.
    const TemporaryDirectory directory(TemporaryDirectory::Searched::kNo);
    const std::string below = directory.File("below");
    std::filesystem::create_directory(below);
    std::ofstream(below + "/calls.log") << "PIN=Q~J^";
    std::ofstream(below + "/errors.log") << "PIN=*";
    std::ofstream(below + "/library.so") << "\177ELF Q~J^";
    const std::vector<std::string> expected = {below + "/calls.log: text at 4"};
    EXPECT_EQ(expected, FilesWithSecrets(directory.Path()));
    EXPECT_EQ(expected, FilesWithSecrets(below + "/calls.log"));
    EXPECT_EQ(std::vector<std::string>{}, FilesWithSecrets(below + "/errors.log"));
    EXPECT_EQ(std::vector<std::string>{}, FilesWithSecrets(below + "/nothing"));
}

TEST(TemporaryDirectory, SecretIsWrittenThere_TestFails) {
    EXPECT_NONFATAL_FAILURE(
        {
            const TemporaryDirectory directory;
            std::ofstream(directory.File("calls.log")) << "Q~J^";
        },
        "calls.log: text at 0");
}

TEST(FilesWithSecrets, LargeFile_IsReadToItsEnd) {
    const TemporaryDirectory directory(TemporaryDirectory::Searched::kNo);
    const std::string path = directory.File("calls.log");
    // These offsets include the ends of all pieces in which a file may be read, and the characters around
    // them.
    for (std::size_t size = 65536 - 80; size < 65536 + 80; ++size) {
        std::ofstream(path) << std::string(size, '.') << "517e4a5e517e4a5e";
        EXPECT_EQ(std::vector<std::string>{path + ": hexadecimal at " + std::to_string(size)},
                  FilesWithSecrets(path));
    }
    const std::size_t size = 1'000'000;
    std::ofstream(path) << std::string(size, '.') << "Q~J^";
    EXPECT_EQ(std::vector<std::string>{path + ": text at " + std::to_string(size)}, FilesWithSecrets(path));
}

TEST(SearchAndRemove, SecretIsWrittenThere_TestFails) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("calls.log");
    std::ofstream(path) << "Q~J^";
    EXPECT_NONFATAL_FAILURE(SearchAndRemove(path), "calls.log: text at 0");
    EXPECT_FALSE(std::filesystem::exists(path));
    SearchAndRemove(path);
}

TEST(SearchAndEmpty, SecretIsWrittenThere_TestFails) {
    const TemporaryDirectory directory;
    const std::string path = directory.File("calls.log");
    std::ofstream(path) << "Q~J^";
    EXPECT_NONFATAL_FAILURE(SearchAndEmpty(path), "calls.log: text at 0");
    EXPECT_EQ(0u, std::filesystem::file_size(path));
    SearchAndEmpty(path);
    SearchAndEmpty(directory.File("nothing"));
    EXPECT_FALSE(std::filesystem::exists(directory.File("nothing")));
}
