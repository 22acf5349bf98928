// Counts durations in log-linear buckets. Every power of two is split into 128 buckets, therefore a
// percentile is off by at most one part in 256 (0.4 %). Durations below 256 ns have a bucket each.
//
// Everything that shows percentiles uses LatencyBucket, therefore all show the same ones. One thread at a
// time may change a histogram.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace ckscribe {

inline constexpr unsigned kLatencyBucketBits = 7;  // 128 buckets for each power of two

// Returns the bucket of a duration in nanoseconds. A longer duration has the same bucket or a greater one.
constexpr std::uint32_t LatencyBucket(std::uint64_t nanoseconds) {
    constexpr std::uint64_t kExact = std::uint64_t{2} << kLatencyBucketBits;
    if (nanoseconds < kExact) return static_cast<std::uint32_t>(nanoseconds);
    const auto width = static_cast<unsigned>(std::bit_width(nanoseconds));
    const unsigned shift = width - kLatencyBucketBits - 1;
    const auto top = static_cast<std::uint32_t>(nanoseconds >> shift);  // 128 to 255
    return (shift << kLatencyBucketBits) + top;
}

// Returns the smallest duration of a bucket, in nanoseconds.
constexpr std::uint64_t LatencyBucketBegin(std::uint32_t bucket) {
    constexpr std::uint32_t kExact = 2U << kLatencyBucketBits;
    if (bucket < kExact) return bucket;
    const unsigned shift = (bucket >> kLatencyBucketBits) - 1;
    const std::uint64_t top = bucket - (std::uint64_t{shift} << kLatencyBucketBits);
    return top << shift;
}

// Returns the duration that stands for all of a bucket: its middle, in nanoseconds.
constexpr std::uint64_t LatencyOfBucket(std::uint32_t bucket) {
    const std::uint64_t begin = LatencyBucketBegin(bucket);
    const std::uint64_t last = LatencyBucketBegin(bucket + 1) - 1;
    return begin + (last - begin) / 2;
}

class LatencyHistogram {
public:
    void Add(std::uint64_t nanoseconds, std::uint64_t times = 1) {
        const std::uint32_t bucket = LatencyBucket(nanoseconds);
        if (bucket >= buckets.size()) buckets.resize(bucket + 1);
        buckets[bucket] += times;
        count += times;
        total += nanoseconds * times;
        maximum = std::max(maximum, nanoseconds);
    }

    void Add(const LatencyHistogram& other) {
        if (other.buckets.size() > buckets.size()) buckets.resize(other.buckets.size());
        for (std::size_t i = 0; i < other.buckets.size(); ++i) buckets[i] += other.buckets[i];
        count += other.count;
        total += other.total;
        maximum = std::max(maximum, other.maximum);
    }

    // These two add a distribution that was counted elsewhere: first each bucket, then its exact sum and
    // maximum.
    void AddBucket(std::uint32_t bucket, std::uint64_t times) {
        if (bucket >= buckets.size()) buckets.resize(bucket + 1);
        buckets[bucket] += times;
        count += times;
    }
    void AddExact(std::uint64_t sum, std::uint64_t longest) {
        total += sum;
        maximum = std::max(maximum, longest);
    }

    std::uint64_t Count() const { return count; }
    std::uint64_t Total() const { return total; }      // exact
    std::uint64_t Maximum() const { return maximum; }  // exact

    // Returns the percentile by nearest rank, in nanoseconds: the smallest duration such that at least
    // `percent` of all (above 0, at most 100) are not longer. Returns nothing when there are no durations.
    std::optional<std::uint64_t> Percentile(double percent) const {
        if (count == 0) return std::nullopt;
        // The rank is rounded up, but not because of the last bit of a product: 99.9 % of 1000 is 999.
        const double exact = percent * static_cast<double>(count) / 100;
        auto rank = static_cast<std::uint64_t>(exact);
        if (static_cast<double>(rank) < exact - exact * 1e-12) ++rank;
        rank = std::clamp<std::uint64_t>(rank, 1, count);
        std::uint64_t seen = 0;
        for (std::uint32_t i = 0; i < buckets.size(); ++i) {
            seen += buckets[i];
            if (seen >= rank) return std::min(LatencyOfBucket(i), maximum);
        }
        return maximum;
    }

    // Returns the count of durations in each bucket.
    const std::vector<std::uint64_t>& Buckets() const { return buckets; }

private:
    std::vector<std::uint64_t> buckets;
    std::uint64_t count = 0;
    std::uint64_t total = 0;
    std::uint64_t maximum = 0;
};

}  // namespace ckscribe
