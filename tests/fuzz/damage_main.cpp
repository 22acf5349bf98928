// Stands in for libFuzzer's main where inputs are logs: runs a fuzzer over each file of the directories that
// are named, over the same cut at every byte, and over copies that are damaged at random, in the same way
// every time.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "tests/unwatched.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kDamagedCopies = 200;

void Run(const std::string& input) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

// Does one of these: changes one bit of a byte or the whole byte; removes a stretch, doubles it, or moves it
// to another place.
void Damage(std::string& log, std::mt19937& random) {
    const auto below = [&random](std::size_t count) { return static_cast<std::size_t>(random()) % count; };
    const std::size_t place = below(log.size());
    const std::size_t length = 1 + below(std::min<std::size_t>(log.size() - place, 80));
    switch (random() % 5) {
        case 0:
            log[place] = static_cast<char>(log[place] ^ 1 << below(8));
            return;
        case 1:
            log[place] = "\n\"\\{}[](),: =;\0\xff"[below(16)];
            return;
        case 2:
            log.erase(place, length);
            return;
        case 3:
            log.insert(place, log.substr(place, length));
            return;
        default:
            log.insert(below(log.size()), log.substr(place, length));
            return;
    }
}

void RunFile(const std::filesystem::path& path, std::mt19937& random) {
    std::ifstream stream(path, std::ios::binary);
    const std::string log{std::istreambuf_iterator<char>(stream), {}};
    std::printf("%s: %zu bytes\n", path.c_str(), log.size());
    std::fflush(stdout);
    for (std::size_t size = 0; size <= log.size(); ++size) Run(log.substr(0, size));
    for (int i = 0; i < kDamagedCopies && !log.empty(); ++i) {
        std::string damaged = log;
        for (auto times = 1 + random() % 3; times != 0 && !damaged.empty(); --times) Damage(damaged, random);
        Run(damaged);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const Unwatched running;
    std::mt19937 random(1);
    std::vector<std::filesystem::path> paths;
    for (int i = 1; i < argc; ++i)
        paths.insert(paths.end(), std::filesystem::directory_iterator(argv[i]),
                     std::filesystem::directory_iterator());
    // The order is the same on every system.
    std::ranges::sort(paths);
    for (const std::filesystem::path& path : paths) RunFile(path, random);
    if (paths.empty()) std::fputs("no file to run\n", stderr);
    return paths.empty();
}
