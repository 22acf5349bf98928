#include "reader/latency_histogram.h"

#include <gtest/gtest.h>

namespace ckscribe {
namespace {

TEST(LatencyHistogram, EveryDurationLiesInItsBucketAndDiffersLessThanOnePercentFromItsMiddle) {
    for (unsigned bits = 0; bits < 64; ++bits) {
        for (const std::uint64_t offset : {std::uint64_t{0}, std::uint64_t{1}, (std::uint64_t{1} << bits) - 1,
                                           (std::uint64_t{1} << bits) / 3}) {
            const std::uint64_t duration = (std::uint64_t{1} << bits) + offset % (std::uint64_t{1} << bits);
            const std::uint32_t bucket = LatencyBucket(duration);
            EXPECT_LE(LatencyBucketBegin(bucket), duration);
            EXPECT_GE(LatencyBucketBegin(bucket + 1) - 1, duration);
            const double middle = static_cast<double>(LatencyOfBucket(bucket));
            EXPECT_NEAR(middle / static_cast<double>(duration), 1, 0.01) << duration;
        }
    }
}

TEST(LatencyHistogram, BucketsFollowEachOtherWithoutAGap) {
    for (std::uint32_t bucket = 0; bucket < LatencyBucket(~std::uint64_t{0}); ++bucket) {
        ASSERT_EQ(LatencyBucket(LatencyBucketBegin(bucket)), bucket);
        ASSERT_EQ(LatencyBucket(LatencyBucketBegin(bucket + 1) - 1), bucket);
    }
}

TEST(LatencyHistogram, PercentileIsTheNearestRank) {
    LatencyHistogram histogram;
    EXPECT_EQ(histogram.Percentile(50), std::nullopt);
    for (const std::uint64_t duration : {15U, 20U, 35U, 40U, 50U}) histogram.Add(duration);
    EXPECT_EQ(histogram.Percentile(5), 15U);
    EXPECT_EQ(histogram.Percentile(30), 20U);
    EXPECT_EQ(histogram.Percentile(40), 20U);
    EXPECT_EQ(histogram.Percentile(50), 35U);
    EXPECT_EQ(histogram.Percentile(100), 50U);
}

TEST(LatencyHistogram, RankOfAPercentileIsNotRaisedByRounding) {
    LatencyHistogram histogram;
    for (std::uint64_t i = 1; i <= 100; ++i) histogram.Add(i);
    for (unsigned percent = 1; percent <= 100; ++percent) EXPECT_EQ(histogram.Percentile(percent), percent);
}

TEST(LatencyHistogram, CountTotalAndMaximumAreExact) {
    LatencyHistogram histogram;
    histogram.Add(1'000'003);
    histogram.Add(2'000'005);
    LatencyHistogram other;
    other.Add(7'777'777);
    histogram.Add(other);
    EXPECT_EQ(histogram.Count(), 3U);
    EXPECT_EQ(histogram.Total(), 10'777'785U);
    EXPECT_EQ(histogram.Maximum(), 7'777'777U);
    // No percentile is above the maximum, whatever the middle of its bucket is.
    EXPECT_EQ(histogram.Percentile(100),
              std::min<std::uint64_t>(7'777'777, LatencyOfBucket(LatencyBucket(7'777'777))));
}

}  // namespace
}  // namespace ckscribe
