// Measures how long it takes to look the logging mask up in the configuration file, for files of several
// sizes, and how much that adds to each query. One query in so many looks.

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "config/logging_configuration.h"

namespace {

// The section stands at the end of the file: the whole text is searched for it.
std::string ConfigurationOfSize(std::size_t size) {
    const std::string section = "CkLog2 = {\n   LoggingMask = GEN_FUNC | SIGN_VERIFY_FUNC;\n}\n";
    std::string text;
    for (int i = 0; text.size() + section.size() + 100 < size; ++i) {
        text += "Server" + std::to_string(i) + " = {\n   ServerName = host" + std::to_string(i) +
                ".example;\n   ServerPort = 1792;\n}\n";
    }
    text.append(size - section.size() - text.size(), '\n');
    return text + section;
}

// Makes a directory with a configuration file of that size. Settings that are made during its life use this
// file.
class ConfigurationFile {
public:
    explicit ConfigurationFile(std::size_t size) {
        if (mkdtemp(directory) == nullptr) std::abort();
        path = std::string(directory) + "/Wendrafil.conf";
        std::ofstream(path) << ConfigurationOfSize(size);
        setenv("WendrafilConfigurationPath", directory, 1);
    }
    ~ConfigurationFile() {
        unlink(path.c_str());
        rmdir(directory);
    }
    ConfigurationFile(const ConfigurationFile&) = delete;
    ConfigurationFile& operator=(const ConfigurationFile&) = delete;

private:
    char directory[32] = "/tmp/mask_cost.XXXXXX";
    std::string path;
};

void Look(benchmark::State& state) {
    const ConfigurationFile file(static_cast<std::size_t>(state.range(0)));
    CkLogConfig settings;
    for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(settings.GetLoggingMask());
}
BENCHMARK(Look)->Arg(1 << 10)->Arg(64 << 10)->Arg(1 << 20);

void Query(benchmark::State& state) {
    const ConfigurationFile file(static_cast<std::size_t>(state.range(0)));
    CkLogConfig settings;
    for ([[maybe_unused]] auto iteration : state) benchmark::DoNotOptimize(settings.DoWeLogThis(GEN_FUNC));
}
BENCHMARK(Query)->Arg(1 << 10)->Arg(64 << 10)->Arg(1 << 20);

}  // namespace

BENCHMARK_MAIN();
