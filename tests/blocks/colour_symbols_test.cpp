#include <gtest/gtest.h>

#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>

#include "WellBox.h"

namespace mirvalde {
namespace {

// Colour vision without one kind of cone, after Machado, Oliveira and Fernandes (2009), at
// severity 1, applied to linear RGB.
using Matrix = std::array<std::array<double, 3>, 3>;
constexpr Matrix kProtanopia{{{0.152286, 1.052583, -0.204868},
                              {0.114503, 0.786281, 0.099216},
                              {-0.003882, -0.048116, 1.051998}}};
constexpr Matrix kDeuteranopia{{{0.367322, 0.860646, -0.227968},
                                {0.280085, 0.672501, 0.047413},
                                {-0.011820, 0.042940, 0.968881}}};
constexpr Matrix kTritanopia{{{1.255528, -0.076749, -0.178779},
                              {-0.078411, 0.930809, 0.147602},
                              {0.004733, 0.691367, 0.303900}}};

std::array<int, 3> Seen(QRgb pixel, const Matrix& m) {
    const auto linear = [](int c) {
        const double v = c / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    const double rgb[] = {linear(qRed(pixel)), linear(qGreen(pixel)), linear(qBlue(pixel))};
    std::array<int, 3> seen{};
    for (int i = 0; i < 3; ++i) {
        const double v =
            std::clamp(m[i][0] * rgb[0] + m[i][1] * rgb[1] + m[i][2] * rgb[2], 0.0, 1.0);
        seen[i] = static_cast<int>(
            std::lround(255 * (v <= 0.0031308 ? 12.92 * v : 1.055 * std::pow(v, 1 / 2.4) - 0.055)));
    }
    return seen;
}

// The six colours side by side in the bottom row of a painted well.
QImage PaintedRow(bool symbols) {
    WellBox well;
    well.ShowSymbols(symbols);
    for (int c = 0; c < kColonnes; ++c) {
        well.FillBox(c * kCellTwips, 0, (c + 1) * kCellTwips, kCellTwips, kCouleurs[c]);
    }
    return well.Image().copy(0, 0, 6 * 16, 16);
}

// Pairs of colours whose squares differ, as one who sees through `m` sees them, in fewer than a
// quarter of their pixels (a pixel differs when one channel differs by more than 32 of 255).
int PairsTooAlike(const QImage& row, const Matrix& m) {
    int alike = 0;
    for (int a = 0; a < kColonnes; ++a) {
        for (int b = a + 1; b < kColonnes; ++b) {
            int differing = 0;
            for (int y = 0; y < 16; ++y) {
                for (int x = 0; x < 16; ++x) {
                    const auto p = Seen(row.pixel(16 * a + x, y), m);
                    const auto q = Seen(row.pixel(16 * b + x, y), m);
                    differing += std::abs(p[0] - q[0]) > 32 || std::abs(p[1] - q[1]) > 32 ||
                                 std::abs(p[2] - q[2]) > 32;
                }
            }
            alike += differing < 256 / 4;
        }
    }
    return alike;
}

// Without symbols, green and yellow are too alike under protanopia; with them, no pair is.
TEST(ColourSymbolsTest, TellEveryPairOfColoursApartWithoutTheirHue) {
    EXPECT_EQ(PairsTooAlike(PaintedRow(false), kProtanopia), 1);
    for (const Matrix* m : {&kProtanopia, &kDeuteranopia, &kTritanopia})
        EXPECT_EQ(PairsTooAlike(PaintedRow(true), *m), 0);
}

}  // namespace
}  // namespace mirvalde
