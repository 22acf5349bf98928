#include "tool/progress_bar.h"

#include <gtest/gtest.h>

namespace ckscribe {
namespace {

TEST(ProgressBar, PartOfFiles_ShowsShareRateAndTimeLeft) {
    EXPECT_EQ(ProgressBar::Text({120'000'000, 240'000'000}, 2),
              "[===============               ]  50 %  60 MB/s  0:02 left");
    EXPECT_EQ(ProgressBar::Text({10'000'000, 1'000'000'000}, 1),
              "[                              ]   1 %  10 MB/s  1:39 left");
}

TEST(ProgressBar, FilesThatGrewMeanwhile_AreReadToTheEnd) {
    EXPECT_EQ(ProgressBar::Text({300'000'000, 240'000'000}, 3),
              "[==============================] 100 %  100 MB/s  0:00 left");
}

TEST(ProgressBar, UnknownSize_ShowsWhatWasReadAndTheRate) {
    EXPECT_EQ(ProgressBar::Text({50'000'000, 0}, 2), "50 MB  25 MB/s");
}

}  // namespace
}  // namespace ckscribe
