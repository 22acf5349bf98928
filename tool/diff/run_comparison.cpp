#include "tool/diff/run_comparison.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "tool/diff/comparable_call.h"

namespace ckscribe {

namespace {

constexpr std::uint64_t kMuchLonger = 10;
constexpr std::uint64_t kLonger = 10'000'000;
// So many calls may be gone and new together before the runs go on alike.
constexpr std::size_t kFarthest = 400;
// Where runs differ in call after call, most searches go this far, and each of so many goes the whole way.
// Otherwise such runs take a hundred thousand comparisons a call.
constexpr std::size_t kNear = 16;
constexpr std::size_t kVainSearches = 64;

bool IsSame(const ComparedText& one, const ComparedText& other, const SharedTexts& texts) {
    return one.shape == other.shape &&
           (one.facts == other.facts || AreFactsAlike(texts[one.facts], texts[other.facts]));
}

bool IsSame(const ComparedCall& one, const ComparedCall& other, const SharedTexts& texts) {
    return IsSame(one.question, other.question, texts);
}

// Returns how many calls are gone and how many are new until both runs go on alike. Their sum is the smallest
// possible, and at most `farthest`. Returns nothing if the runs do not go on alike before that.
std::optional<std::pair<std::size_t, std::size_t>> FindNextSame(std::span<const ComparedCall> before,
                                                                std::span<const ComparedCall> after,
                                                                std::size_t farthest,
                                                                const SharedTexts& texts) {
    for (std::size_t distance = 1; distance <= std::min(farthest, before.size() + after.size()); ++distance) {
        for (std::size_t gone = 0; gone <= distance; ++gone) {
            const std::size_t added = distance - gone;
            if (gone > before.size() || added > after.size()) continue;
            const bool isEnd = gone == before.size() && added == after.size();
            if (isEnd) return {{gone, added}};
            if (gone == before.size() || added == after.size() || !IsSame(before[gone], after[added], texts))
                continue;
            // One like call may be an accident. Two in a row are none.
            const bool isLast = gone + 1 == before.size() || added + 1 == after.size();
            if (isLast || IsSame(before[gone + 1], after[added + 1], texts)) return {{gone, added}};
        }
    }
    return std::nullopt;
}

bool IsMuchLonger(const ComparedCall& before, const ComparedCall& after) {
    if (!before.nanoseconds || !after.nanoseconds) return false;
    return *after.nanoseconds / kMuchLonger >= *before.nanoseconds &&
           *after.nanoseconds >= *before.nanoseconds + kLonger;
}

}  // namespace

std::vector<DifferentCall> Compare(const std::vector<ComparedCall>& before,
                                   const std::vector<ComparedCall>& after, const SharedTexts& texts) {
    std::vector<DifferentCall> differences;
    std::span<const ComparedCall> left = before;
    std::span<const ComparedCall> right = after;
    std::size_t vainSearches = 0;
    while (!left.empty() || !right.empty()) {
        if (!left.empty() && !right.empty() && IsSame(left[0], right[0], texts)) {
            if (!IsSame(left[0].answer, right[0].answer, texts)) {
                differences.push_back({Difference::kOtherAnswer, &left[0], &right[0]});
            } else if (IsMuchLonger(left[0], right[0])) {
                differences.push_back({Difference::kMuchLonger, &left[0], &right[0]});
            }
            left = left.subspan(1);
            right = right.subspan(1);
            continue;
        }
        const std::size_t farthest = vainSearches % kVainSearches == 0 ? kFarthest : kNear;
        const auto found = FindNextSame(left, right, farthest, texts);
        vainSearches = found ? 0 : vainSearches + 1;
        const auto [gone, added] = found.value_or(
            std::pair(std::min<std::size_t>(1, left.size()), std::min<std::size_t>(1, right.size())));
        for (std::size_t i = 0; i < gone; ++i) differences.push_back({Difference::kGone, &left[i], nullptr});
        for (std::size_t i = 0; i < added; ++i) differences.push_back({Difference::kNew, nullptr, &right[i]});
        left = left.subspan(gone);
        right = right.subspan(added);
    }
    return differences;
}

std::vector<ThreadPair> PairThreads(const std::vector<ComparedThread>& before,
                                    const std::vector<ComparedThread>& after, const SharedTexts& texts) {
    std::vector<ThreadPair> pairs;
    for (const ComparedThread& thread : before) pairs.push_back({&thread, nullptr});
    std::vector<bool> isTaken(after.size());
    // Gives each thread without a partner the first free one that is like it.
    const auto pairAlike = [&](const auto& isAlike) {
        for (ThreadPair& pair : pairs) {
            for (std::size_t i = 0; i < after.size() && pair.second == nullptr; ++i) {
                if (isTaken[i] || !isAlike(*pair.first, after[i])) continue;
                isTaken[i] = true;
                pair.second = &after[i];
            }
        }
    };
    const auto beginsAlike = [&texts](const ComparedThread& one, const ComparedThread& other) {
        return IsSame(one.calls.front(), other.calls.front(), texts);
    };
    pairAlike([&texts](const ComparedThread& one, const ComparedThread& other) {
        return std::ranges::equal(one.calls, other.calls,
                                  [&texts](const ComparedCall& call, const ComparedCall& otherCall) {
                                      return IsSame(call, otherCall, texts);
                                  });
    });
    pairAlike(beginsAlike);
    pairAlike([](const ComparedThread&, const ComparedThread&) { return true; });
    for (std::size_t i = 0; i < after.size(); ++i) {
        if (!isTaken[i]) pairs.push_back({nullptr, &after[i]});
    }
    return pairs;
}

}  // namespace ckscribe
