#include <gtest/gtest.h>

#include <optional>

#include "NumberFormat.h"

namespace mirvalde {
namespace {

// The pictures the game writes with. The number fuzz target, replayed among the tests, checks
// the rules on generated numbers and pictures; these cases show them.
TEST(FormatTest, RoundsAHalfAwayFromZeroAndKeepsThePicturesBlanks) {
    EXPECT_EQ(Format(2.5, "0", '.'), "3");
    EXPECT_EQ(Format(-2.5, "0", ','), "-3");
    EXPECT_EQ(Format(99.995, "0.00", '.'), "100.00");  // the top of the two-decimal level
    EXPECT_EQ(Format(5, "0. 0#", ','), "5, 0");        // a literal among the decimals is no digit
    EXPECT_EQ(Format(52, "### ### ##0", ','), "  52");
    EXPECT_EQ(Format(1234567890, "### ### ##0", ','), "1234 567 890");  // more digits than '#'
    EXPECT_EQ(Format(50.501, "### ### ##0.##", ','), "  50,5");  // a zero left by rounding down
    EXPECT_EQ(Format(0.999, "### ### ##0.##", ','), "  1,");     // the caller trims the separator
}

TEST(ReadNumberTest, ReadsDigitsWithOneSeparatorAnywhereAndWritesTheShortestFormBack) {
    EXPECT_EQ(ReadNumber("052", '.'), 52);
    EXPECT_EQ(ReadNumber(",5", ','), 0.5);
    EXPECT_EQ(ReadNumber("52,", ','), 52);
    for (const char* text : {"52.01", "5,2,1", ",", "-5", " 5"})
        EXPECT_EQ(ReadNumber(text, ','), std::nullopt) << text;
    EXPECT_EQ(ShortestText(52.01, ','), "52,01");
}

}  // namespace
}  // namespace mirvalde
