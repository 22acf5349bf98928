// Most tests include these headers. They are compiled once for all test programs, before each of their
// sources.
//
// A source still includes what it uses. Without this file everything compiles as well.
#pragma once

#include <gtest/gtest.h>
#include <p11-kit/pkcs11.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>
