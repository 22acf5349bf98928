// This file stands in for libFuzzer's main. It runs a fuzzer over the files and directories that are named,
// and fails if there is not a single file. A property that does not hold ends the process, as it does under
// libFuzzer.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void RunFile(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
    std::printf("%s: %zu bytes\n", path.c_str(), bytes.size());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

int RunAll(const fs::path& path) {
    if (fs::is_regular_file(path)) {
        RunFile(path);
        return 1;
    }
    int count = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
        RunFile(entry.path());
        ++count;
    }
    return count;
}

}  // namespace

int main(int argc, char** argv) {
    int count = 0;
    for (int i = 1; i < argc; ++i) count += RunAll(argv[i]);
    if (count == 0) std::fputs("no file to run\n", stderr);
    return count == 0;
}
