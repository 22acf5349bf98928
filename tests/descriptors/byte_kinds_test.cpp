#include "descriptors/byte_kinds.h"

#include <gtest/gtest.h>

#include <string>

using namespace ckscribe;

namespace {

ByteKinds KindsOfText(const std::string& bytes) { return KindsOf(bytes.data(), bytes.size()); }

TEST(ByteKinds, NoBytes_AreATextWithoutControlBytes) {
    EXPECT_TRUE(KindsOf(nullptr, 0).isText);
    EXPECT_EQ(KindsOf(nullptr, 0).controls, 0U);
}

// KindsOf looks at sixteen bytes together and then at each byte that is left.
TEST(ByteKinds, EachByteAtEachPlace_DecidesTheKind) {
    for (std::size_t length = 1; length <= 50; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string bytes(length, 'x');
                bytes[place] = static_cast<char>(byte);
                const ByteKinds kinds = KindsOfText(bytes);
                ASSERT_EQ(kinds.isText, byte <= 126) << length << ' ' << place << ' ' << byte;
                if (kinds.isText) {
                    ASSERT_EQ(kinds.controls, byte < 32 ? 1U : 0U) << length << ' ' << place << ' ' << byte;
                }
            }
        }
    }
}

TEST(ByteKinds, ControlBytesOfAText_AreAllCounted) {
    for (std::size_t length = 0; length <= 100; ++length) {
        std::string bytes;
        std::size_t controls = 0;
        for (std::size_t i = 0; i < length; ++i) {
            const bool isControl = i * i % 7 < 3;
            bytes += isControl ? static_cast<char>(i % 32) : static_cast<char>(32 + i % 95);
            controls += isControl ? 1 : 0;
        }
        EXPECT_TRUE(KindsOfText(bytes).isText) << length;
        EXPECT_EQ(KindsOfText(bytes).controls, controls) << length;
    }
    EXPECT_EQ(KindsOfText(std::string(100'000, '\t')).controls, 100'000U);
}

TEST(ByteKinds, BytesBehindTheValue_DoNotChangeTheKind) {
    const std::string bytes = std::string(20, 'x') + std::string(20, '\xff') + std::string(20, '\n');
    EXPECT_TRUE(KindsOf(bytes.data(), 20).isText);
    EXPECT_EQ(KindsOf(bytes.data(), 20).controls, 0U);
}

}  // namespace
