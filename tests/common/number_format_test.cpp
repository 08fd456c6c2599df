#include <gtest/gtest.h>

#include "NumberFormat.h"

namespace mirvalde {
namespace {

// The pictures the game writes with. The number fuzz target, replayed among the tests, checks
// the rules on generated numbers and pictures, and the reading of what the player types; these
// cases show the pictures, and GuessGameTest's answers show the numbers read.
TEST(FormatTest, RoundsAHalfUpAndKeepsThePicturesBlanks) {
    EXPECT_EQ(Format(2.5, "0", '.'), "3");
    EXPECT_EQ(Format(99.995, "0.00", '.'), "100.00");            // the top of the two-decimal level
    EXPECT_EQ(Format(50.501, "### ### ##0.##", ','), "  50,5");  // a zero left by rounding down
}

}  // namespace
}  // namespace mirvalde
