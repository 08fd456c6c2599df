#include <gtest/gtest.h>

#include <algorithm>

#include "Random.h"

namespace mirvalde {
namespace {

// A value of exactly 1 would draw one past the top of every range. The game seeds from the
// time of day before every draw: draws a few milliseconds apart must not repeat a number, and
// the same time must draw the same.
TEST(MersenneRandomTest, StaysBelowOneSpreadsOverTheIntervalAndFollowsItsSeed) {
    MersenneRandom random, later, again;
    random.Seed(36000.5);
    again.Seed(36000.5);
    later.Seed(36000.516);
    int low = 0, high = 0, differ = 0;
    for (int i = 0; i < 200000; ++i) {
        const float u = random.Next();
        ASSERT_TRUE(u >= 0.0f && u < 1.0f) << u;
        ASSERT_EQ(again.Next(), u);
        differ += later.Next() != u;
        low += u < 0.01f;
        high += u >= 0.99f;
    }
    EXPECT_GT(std::min(low, high), 1500);  // about 2000 expected in each hundredth
    EXPECT_GT(differ, 190000);
}

}  // namespace
}  // namespace mirvalde
