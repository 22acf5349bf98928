// Measures how long an application waits before its first call is answered: it loads a PKCS#11 library and
// asks it for its function list.
//
//   start_cost --module=FILE [Google Benchmark's own options]
//
// The library is unloaded after each start. Every start therefore begins anew, except that the system still
// has the files in memory.

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <p11-kit/pkcs11.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

std::string modulePath;

void* Load() {
    void* const handle = dlopen(modulePath.c_str(), RTLD_NOW);
    if (handle != nullptr) return handle;
    std::fprintf(stderr, "%s\n", dlerror());
    std::exit(1);
}

void MakeFirstCall(void* handle) {
    const auto getList = reinterpret_cast<CK_C_GetFunctionList>(dlsym(handle, "C_GetFunctionList"));
    CK_FUNCTION_LIST* list = nullptr;
    if (getList == nullptr || getList(&list) != CKR_OK) std::exit(1);
}

void LoadAndCall(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        void* const handle = Load();
        MakeFirstCall(handle);
        state.PauseTiming();
        dlclose(handle);
        state.ResumeTiming();
    }
}
BENCHMARK(LoadAndCall)->UseRealTime()->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int count, char** arguments) {
    constexpr std::string_view kModule = "--module=";
    if (count < 2 || !std::string_view(arguments[1]).starts_with(kModule)) {
        std::fprintf(stderr, "usage: start_cost --module=FILE\n");
        return 1;
    }
    modulePath = arguments[1] + kModule.size();
    arguments[1] = arguments[0];
    --count;
    benchmark::Initialize(&count, arguments + 1);
    benchmark::RunSpecifiedBenchmarks();
}
