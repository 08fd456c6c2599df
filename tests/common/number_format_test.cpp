#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>

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

// The rule restated on whole numbers: a value is a count of ten-thousandths, rounded by
// integer division, and each picture's text is built from the rounded digits directly.
class PictureModel {
  public:
    PictureModel(std::int64_t tenThousandths, char separator)
        : negative_(tenThousandths < 0),
          magnitude_(std::abs(tenThousandths)),
          separator_(separator) {}

    std::string Expected(std::string_view picture) const {
        if (picture == "0") return Sign(0) + std::to_string(Rounded(0));
        if (picture == "0.00") {
            const std::int64_t r = Rounded(2);
            const std::string cents = std::to_string(100 + r % 100).substr(1);
            return Sign(2) + std::to_string(r / 100) + separator_ + cents;
        }
        if (picture == "0.#") {
            const std::int64_t r = Rounded(1);
            std::string text = Sign(1) + std::to_string(r / 10) + separator_;
            if (r % 10 != 0) text += static_cast<char>('0' + r % 10);
            return text;
        }
        if (picture == "### ### ##0") return Grouped(Rounded(0));
        // "### ### ##0.##"
        const std::int64_t r = Rounded(2);
        std::string text = Grouped(r / 100) + separator_;
        if (r % 100 != 0) text += std::to_string(r % 100 + 100).substr(1);
        if (text.back() == '0') text.pop_back();
        return text;
    }

  private:
    // The magnitude in units of the last kept place, a half going up.
    std::int64_t Rounded(int places) const {
        std::int64_t unit = 1;
        for (int i = places; i < 4; ++i) unit *= 10;
        return (magnitude_ + unit / 2) / unit;
    }

    // A negative number that rounds to zero is written as zero.
    std::string Sign(int places) const { return negative_ && Rounded(places) != 0 ? "-" : ""; }

    // Three groups of three from the right, any further digits stuck to the first group; the
    // picture's two blanks show in front where the number is too short to need them.
    static std::string Grouped(std::int64_t whole) {
        const std::string digits = std::to_string(whole);
        std::string text;
        int gaps = 0;
        std::size_t end = digits.size();
        while (end > 3 && gaps < 2) {
            text = ' ' + digits.substr(end - 3, 3) + text;
            end -= 3;
            ++gaps;
        }
        return std::string(static_cast<std::size_t>(2 - gaps), ' ') + digits.substr(0, end) + text;
    }

    bool negative_;
    std::int64_t magnitude_;
    char separator_;
};

// The exact decimal form of a count of ten-thousandths, for failure messages.
std::string Exact(std::int64_t tenThousandths) {
    const std::int64_t m = std::abs(tenThousandths);
    return (tenThousandths < 0 ? "-" : "") + std::to_string(m / 10000) + '.' +
           std::to_string(m % 10000 + 10000).substr(1);
}

// Values of every size up to two thousand million with 0 to 4 decimals.
std::int64_t DrawTenThousandths(std::mt19937_64& engine) {
    const int wholeDigits = std::uniform_int_distribution<int>(0, 10)(engine);
    std::int64_t low = 0;
    std::int64_t high = 0;
    if (wholeDigits > 0) {
        low = 1;
        for (int i = 1; i < wholeDigits; ++i) low *= 10;
        high = wholeDigits == 10 ? 2 * low - 1 : 10 * low - 1;
    }
    if (std::uniform_int_distribution<int>(0, 9)(engine) == 0) {
        // Nines up to just under the next unit, so that rounding carries through every digit.
        return high * 10000 + 9999 - std::uniform_int_distribution<int>(0, 99)(engine);
    }
    const std::int64_t whole = std::uniform_int_distribution<std::int64_t>(low, high)(engine);
    const int decimals = std::uniform_int_distribution<int>(0, 4)(engine);
    std::int64_t step = 1;
    for (int i = decimals; i < 4; ++i) step *= 10;
    const std::int64_t fraction =
        std::uniform_int_distribution<std::int64_t>(0, 10000 / step - 1)(engine);
    return whole * 10000 + fraction * step;
}

TEST(FormatTest, AgreesWithIntegerRoundingOnGeneratedValues) {
    // The grouped pictures show what the player typed, which is never negative.
    const std::string_view signedPictures[] = {"0", "0.00", "0.#"};
    const std::string_view unsignedPictures[] = {"### ### ##0", "### ### ##0.##"};
    std::mt19937_64 engine(20240611);
    int mismatches = 0;
    for (int i = 0; i < 40000 && mismatches < 10; ++i) {
        const std::int64_t count = DrawTenThousandths(engine);
        for (const char separator : {'.', ','}) {
            const auto check = [&](std::int64_t n, std::string_view picture) {
                const std::string written =
                    Format(static_cast<double>(n) / 10000.0, picture, separator);
                const std::string expected = PictureModel(n, separator).Expected(picture);
                if (written == expected) return;
                ++mismatches;
                ADD_FAILURE() << Exact(n) << " with \"" << picture << "\" and '" << separator
                              << "': wrote \"" << written << "\", expected \"" << expected << '"';
            };
            for (const std::string_view picture : signedPictures) {
                check(count, picture);
                check(-count, picture);
            }
            for (const std::string_view picture : unsignedPictures) check(count, picture);
        }
    }
}

struct Read {
    const char* text;
    char separator;
    std::optional<double> expected;
};

TEST(ReadNumberTest, ReadsDigitsWithOneSeparatorAnywhereAndNothingElse) {
    const Read cases[] = {
        {"52", ',', 52},
        {"052", '.', 52},
        {"52,01", ',', 52.01},
        {"52.01", '.', 52.01},
        {"52,010", ',', 52.01},
        {",5", ',', 0.5},
        {"52,", ',', 52},
        {".5", '.', 0.5},
        {"999999999", ',', 999999999},
        {"52.01", ',', std::nullopt},  // the other notation's separator
        {",", ',', std::nullopt},
        {"5,2,1", ',', std::nullopt},
        {"", ',', std::nullopt},
        {"-5", '.', std::nullopt},
        {" 5", '.', std::nullopt},
        {"12abc", '.', std::nullopt},
    };
    for (const Read& c : cases) {
        EXPECT_EQ(ReadNumber(c.text, c.separator), c.expected)
            << '"' << c.text << "\" with '" << c.separator << "'";
    }
}

// Giving up shows the number drawn through this text, which must read back exactly.
TEST(ShortestTextTest, WritesTheShortestFormThatReadsBack) {
    EXPECT_EQ(ShortestText(52, ','), "52");
    EXPECT_EQ(ShortestText(52.01, ','), "52,01");
    EXPECT_EQ(ShortestText(52.01, '.'), "52.01");
    EXPECT_EQ(ShortestText(1000000, '.'), "1000000");
    for (int hundredths = 100; hundredths <= 10000; ++hundredths) {
        const double value = *ReadNumber(Format(hundredths / 100.0, "0.00", ','), ',');
        ASSERT_EQ(ReadNumber(ShortestText(value, ','), ','), value) << hundredths;
    }
}

}  // namespace
}  // namespace mirvalde
