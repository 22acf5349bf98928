#include "tool/call_table.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/tool/read_calls.h"

namespace ckscribe {

namespace {

int number = 0;

std::string Event(const char* kind, const char* function, const char* result, long nanoseconds) {
    return std::string(R"({"event":")") + kind + R"(","time":"2026-11-21T12:33:45.123456789Z","ns":)" +
           std::to_string(nanoseconds) + R"(,"run":"1-2","pid":7,"tid":8,"call":)" +
           std::to_string(++number) + R"(,"function":")" + function + R"(","rv":)" +
           (std::string(result) == "CKR_OK" ? "0" : "48") + R"(,"result":")" + result +
           R"(","in":[],"out":[]})" + "\n";
}

}  // namespace

TEST(CallTable, Table_HasALineForEachFunctionTheSlowestFirstAndTheTotal) {
    CallTable table;
    std::string log = Event("end", "C_Login", "CKR_DEVICE_ERROR", 3'000'000);
    for (int i = 1; i <= 100; ++i)
        log += Event("end", "C_Sign", i <= 2 ? "CKR_DEVICE_ERROR" : "CKR_OK", i * 1'000'000);
    log += Event("start", "C_WaitForSlotEvent", "CKR_OK", 0);
    for (const KeptCall& call : CallsIn(log)) table.Add(call.Get());

    // Percentiles are the middles of buckets. 50 ms lie between 49.807360 and 50.069504 ms.
    EXPECT_EQ(table.Text(),
              "function               calls    errors      total s      mean s       p50 s       p95 s       "
              "p99 s       max s\n"
              "C_Sign                   100         2     5.050000    0.050500    0.049938    0.095158    "
              "0.098828    0.100000\n"
              "C_Login                    1         1     0.003000    0.003000    0.003000    0.003000    "
              "0.003000    0.003000\n"
              "C_WaitForSlotEvent         1         0            -           -           -           -       "
              "    -           -\n"
              "total                    102         3     5.053000    0.050029    0.049938    0.095158    "
              "0.098828    0.100000\n");
}

TEST(CallTable, TableWithoutCalls_HasATotalOfZero) {
    EXPECT_EQ(CallTable().Text(),
              "function     calls    errors      total s      mean s       p50 s       p95 s       p99 s     "
              "  max s\n"
              "total            0         0            -           -           -           -           -     "
              "      -\n");
}

}  // namespace ckscribe
