// The built library shows to the dynamic loader, and asks of it, only what these tests state. They read it
// with the tools of binutils, which every compiler brings.
#include <cstdio>
#include <set>
#include <sstream>

#include "tests/calls/every_function.h"
#include "tests/expected_functions.h"

namespace {

// Returns what a tool prints about the library.
std::string OutputOf(std::string command) {
    command.append(" ").append(kLibraryPath);
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "";
    std::string output;
    char part[4096];
    while (const std::size_t length = std::fread(part, 1, sizeof part, pipe)) output.append(part, length);
    EXPECT_EQ(0, pclose(pipe)) << command;
    return output;
}

std::multiset<std::string> DefinedSymbols() {
    std::istringstream lines(OutputOf("nm --dynamic --defined-only --format=posix"));
    std::multiset<std::string> symbols;
    for (std::string line; std::getline(lines, line);) symbols.insert(line.substr(0, line.find(' ')));
    return symbols;
}

std::set<std::string> NeededLibraries() {
    std::istringstream lines(OutputOf("readelf --dynamic --wide"));
    std::set<std::string> needed;
    for (std::string line; std::getline(lines, line);) {
        if (line.find("(NEEDED)") == line.npos) continue;
        const std::size_t begin = line.find('[') + 1;
        needed.insert(line.substr(begin, line.find(']') - begin));
    }
    return needed;
}

}  // namespace

TEST(Symbols, Library_ExportsOnlyTheFunctionsOfTheListAndTwoForTheHost) {
    std::multiset<std::string> expected = {"CkLogSpecialInitialize", "CkLogSpecialFinalize"};
    for (const ExpectedFunction& function : kExpectedFunctions) expected.insert(function.name);
    EXPECT_EQ(expected, DefinedSymbols());
}

// A sanitizer brings libraries of its own, and what those need.
#ifdef CKSCRIBE_SANITIZED
const std::set<std::string> kSanitizers = {"libasan.so.8", "libubsan.so.1",  "libtsan.so.2",
                                           "libm.so.6",    "libstdc++.so.6", "libgcc_s.so.1"};
#else
const std::set<std::string> kSanitizers = {};
#endif

TEST(Symbols, Library_DependsOnlyOnTheSystem) {
    std::set<std::string> allowed = {"libc.so.6", "libpthread.so.0", "libdl.so.2", "ld-linux-x86-64.so.2",
                                     "libc.so.7", "libthr.so.3"};
    allowed.insert(kSanitizers.begin(), kSanitizers.end());
    const std::set<std::string> needed = NeededLibraries();
    EXPECT_FALSE(needed.empty());
    for (const std::string& library : needed) EXPECT_EQ(1u, allowed.count(library)) << library;
}
