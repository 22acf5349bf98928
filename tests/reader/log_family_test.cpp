// Files that rotation made of one log are found by their names.
#include "reader/log_family.h"

#include <gtest/gtest.h>

namespace ckscribe {
namespace {

using Strings = std::vector<std::string>;

// Returns the names of each family, the oldest first.
std::vector<Strings> Families(const Strings& paths) {
    std::vector<Strings> families;
    for (const LogFamily& family : FamiliesOf(paths)) {
        Strings& names = families.emplace_back();
        for (const std::uint32_t index : family) names.push_back(paths[index]);
    }
    return families;
}

TEST(LogFamily, FilesWithGreaterNumbersAreOlderInWhateverOrderTheyAreNamed) {
    const Strings oldestFirst = {"d/log.txt.10.gz", "d/log.txt.2.xz", "d/log.txt.1", "d/log.txt"};
    EXPECT_EQ(Families({"d/log.txt.1", "d/log.txt.10.gz", "d/log.txt", "d/log.txt.2.xz"}),
              (std::vector<Strings>{oldestFirst}));
    EXPECT_EQ(Families({"d/log.txt", "d/log.txt.1", "d/log.txt.2.xz", "d/log.txt.10.gz"}),
              (std::vector<Strings>{oldestFirst}));
}

TEST(LogFamily, FilesWithDatesAreSortedByTimeAndTheLogItselfIsTheNewest) {
    EXPECT_EQ(Families({"log-20261121.zst", "log", "log-20251231", "log-2026112115"}),
              (std::vector<Strings>{{"log-20251231", "log-20261121.zst", "log-2026112115", "log"}}));
    EXPECT_EQ(Families({"calls.log", "calls.log.2026-11-21", "calls.log.2026-11-20_2355"}),
              (std::vector<Strings>{{"calls.log.2026-11-20_2355", "calls.log.2026-11-21", "calls.log"}}));
}

TEST(LogFamily, LogsOfOtherNamesOrDirectoriesAreFamiliesOfTheirOwn) {
    EXPECT_EQ(Families({"a/log", "b/log.1", "a/log.1", "a/log2", "b/log"}),
              (std::vector<Strings>{{"a/log.1", "a/log"}, {"b/log.1", "b/log"}, {"a/log2"}}));
}

TEST(LogFamily, FileWithAProcessNumberIsNoRotatedFile) {
    EXPECT_EQ(Families({"calls.log.15971", "calls.log.15972"}),
              (std::vector<Strings>{{"calls.log.15971"}, {"calls.log.15972"}}));
    EXPECT_EQ(Families({"host-12345678.log", "host-20269999.log"}),
              (std::vector<Strings>{{"host-12345678.log"}, {"host-20269999.log"}}));
}

TEST(LogFamily, StandardInputIsAFamilyOfItsOwnEachTimeItIsNamed) {
    EXPECT_EQ(Families({"-", "log", "-"}), (std::vector<Strings>{{"-"}, {"log"}, {"-"}}));
}

}  // namespace
}  // namespace ckscribe
