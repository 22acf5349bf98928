// This fuzzer reads an input as a log (see log_properties.h for what must hold). Each format has such a
// fuzzer. The fuzzers differ in their corpora, which hold records of the format as the library writes them.

#include <cstdint>

#include "tests/fuzz/log_properties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RequireLogProperties({reinterpret_cast<const char*>(data), size});
    return 0;
}
