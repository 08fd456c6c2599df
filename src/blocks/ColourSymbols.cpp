#include "ColourSymbols.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "DesignedControl.h"

namespace mirvalde {
namespace {

// The quarters each colour's symbol fills: 1 top left, 2 top right, 4 bottom left, 8 bottom
// right. Red a full block, black the top half, green the bottom half, blue the left half,
// yellow and magenta the two diagonals.
constexpr int kQuarters[] = {15, 3, 12, 5, 9, 6};

// Relative luminance of a colour, as contrast ratios are computed.
double Luminance(const QColor& colour) {
    const auto linear = [](double c) {
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

}  // namespace

void DrawColourSymbol(QPainter& painter, const QRectF& square, Couleur couleur) {
    const auto found = std::find(kCouleurs.begin(), kCouleurs.end(), couleur);
    if (found == kCouleurs.end()) return;
    // The ink of each colour, worked out once: squares are painted at every tick.
    static const std::array<QColor, 6> kInks = [] {
        std::array<QColor, 6> inks;
        for (std::size_t i = 0; i < inks.size(); ++i) {
            const double l = Luminance(ColourOf(static_cast<std::uint32_t>(kCouleurs[i])));
            inks[i] = (l + 0.05) / 0.05 >= 1.05 / (l + 0.05) ? Qt::black : Qt::white;
        }
        return inks;
    }();
    const auto index = static_cast<std::size_t>(found - kCouleurs.begin());
    const QColor ink = kInks[index];
    const int quarters = kQuarters[index];
    const QRectF middle = square.adjusted(square.width() / 8, square.height() / 8,
                                          -square.width() / 8, -square.height() / 8);
    const QSizeF half = middle.size() / 2;
    for (int q = 0; q < 4; ++q) {
        if (!(quarters & (1 << q))) continue;
        const QPointF corner(middle.left() + (q % 2) * half.width(),
                             middle.top() + (q / 2) * half.height());
        painter.fillRect(QRectF(corner, half), ink);
    }
}

}  // namespace mirvalde
