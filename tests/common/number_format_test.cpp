#include <gtest/gtest.h>

#include <optional>

#include "NumberFormat.h"

namespace mirvalde {
namespace {

struct Written {
    double value;
    const char* picture;
    char separator;
    const char* expected;
};

// Every picture the game writes with, in both notations. Blanks are literal and always
// written, so short numbers keep the picture's leading blanks.
TEST(FormatTest, WritesEveryPictureOfTheGameInBothNotations) {
    const Written cases[] = {
        {4.4, "0", ',', "4"},
        {2.5, "0", '.', "3"},  // a half rounds away from zero
        {3.5, "0", ',', "4"},
        {52.01, "0.00", ',', "52,01"},
        {52.01, "0.00", '.', "52.01"},
        {7, "0.00", ',', "7,00"},
        {99.995, "0.00", '.', "100.00"},  // the top of the two-decimal level
        {1.004999, "0.00", ',', "1,00"},
        {0.1, "0.#", '.', "0.1"},
        {0.1, "0.#", ',', "0,1"},
        {5, "0. 0#", ',', "5, 0"},  // a literal among the decimals is no digit
        {52, "### ### ##0", ',', "  52"},
        {0, "### ### ##0", ',', "  0"},
        {1234, "### ### ##0", '.', " 1 234"},
        {1234567, "### ### ##0", ',', "1 234 567"},
        {1000000, "### ### ##0", '.', "1 000 000"},
        {52.6, "### ### ##0", ',', "  53"},
        {999999999, "### ### ##0", ',', "999 999 999"},
        {1234567890, "### ### ##0", ',', "1234 567 890"},  // digits beyond the picture stay
        {52.456, "### ### ##0.##", ',', "  52,46"},
        {52.5, "### ### ##0.##", '.', "  52.5"},
        {50.501, "### ### ##0.##", ',', "  50,5"},  // a zero left by rounding down is no digit
        {52.104, "### ### ##0.##", ',', "  52,1"},
        {0.001, "### ### ##0.##", ',', "  0,"},
        {1.04, "0.#", '.', "1."},
        {52, "### ### ##0.##", ',', "  52,"},    // the caller trims the bare separator
        {0.999, "### ### ##0.##", ',', "  1,"},  // rounding carries into the whole part
        {0.125, "### ### ##0.##", '.', "  0.13"},
        {-2.5, "0", ',', "-3"},
    };
    for (const Written& c : cases) {
        EXPECT_EQ(Format(c.value, c.picture, c.separator), c.expected)
            << c.value << " with \"" << c.picture << "\" and '" << c.separator << "'";
    }
}

struct Read {
    const char* text;
    char separator;
    std::optional<double> expected;
};

// Generated inputs are checked against the rule by the number fuzz target, replayed among
// the tests; these cases show it.
TEST(ReadNumberTest, ReadsDigitsWithOneSeparatorAnywhereAndWritesTheShortestFormBack) {
    const Read cases[] = {
        {"052", '.', 52},        {"52,010", ',', 52.01},       {",5", ',', 0.5},
        {"52,", ',', 52},        {"52.01", ',', std::nullopt}, {"5,2,1", ',', std::nullopt},
        {"", ',', std::nullopt}, {"-5", '.', std::nullopt},    {" 5", '.', std::nullopt},
    };
    for (const Read& c : cases) {
        EXPECT_EQ(ReadNumber(c.text, c.separator), c.expected)
            << '"' << c.text << "\" with '" << c.separator << "'";
    }
    EXPECT_EQ(ShortestText(52.01, ','), "52,01");
    EXPECT_EQ(ShortestText(1000000, '.'), "1000000");
}

}  // namespace
}  // namespace mirvalde
