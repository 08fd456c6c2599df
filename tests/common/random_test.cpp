#include <gtest/gtest.h>

#include "Fakes.h"
#include "Random.h"

namespace mirvalde {
namespace {

TEST(DrawWholeTest, CoversTheWholeRangeAndNeverPassesItsTop) {
    EXPECT_EQ(DrawWhole(1, 100, 0.0f), 1);
    EXPECT_EQ(DrawWhole(1, 100, testing::kLargestUniform), 100);
    EXPECT_EQ(DrawWhole(100000, 1000000, 0.0f), 100000);
    EXPECT_EQ(DrawWhole(100000, 1000000, testing::kLargestUniform), 1000000);
    EXPECT_EQ(DrawWhole(1, 6, 0.5f), 4);
}

// A value of exactly 1 would draw one past the top of every range.
TEST(MersenneRandomTest, StaysBelowOneAndSpreadsOverTheInterval) {
    MersenneRandom random;
    random.Seed(43200.125);
    int low = 0;
    int high = 0;
    for (int i = 0; i < 200000; ++i) {
        const float u = random.Next();
        ASSERT_GE(u, 0.0f);
        ASSERT_LT(u, 1.0f);
        if (u < 0.01f) ++low;
        if (u >= 0.99f) ++high;
    }
    EXPECT_GT(low, 1500);  // about 2000 expected in each hundredth
    EXPECT_GT(high, 1500);
}

TEST(MersenneRandomTest, SameSeedSameNumbersAndSeedsAMomentApartDiffer) {
    MersenneRandom a;
    MersenneRandom b;
    a.Seed(36000.5);
    b.Seed(36000.5);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(a.Next(), b.Next());

    // The game re-seeds from the time of day before every draw: draws a few milliseconds
    // apart must not repeat the same number.
    a.Seed(36000.500);
    b.Seed(36000.516);
    bool differ = false;
    for (int i = 0; i < 4; ++i) differ = differ || a.Next() != b.Next();
    EXPECT_TRUE(differ);
}

}  // namespace
}  // namespace mirvalde
