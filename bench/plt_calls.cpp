// Calls a function of another library a million times through the procedure linkage table, and prints how
// many nanoseconds a call took. An audit library could make each of these calls go through the loader.
#include <chrono>
#include <cstdio>

extern "C" unsigned NextNumber(unsigned number);

int main() {
    constexpr unsigned kCalls = 1'000'000;
    unsigned number = 1;
    const auto begin = std::chrono::steady_clock::now();
    for (unsigned i = 0; i < kCalls; ++i) number = NextNumber(number);
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - begin;
    std::printf("%.3f %u\n", time.count() / kCalls, number);
}
