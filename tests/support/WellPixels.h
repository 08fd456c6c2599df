#pragma once

#include <QImage>
#include <sstream>
#include <string>

#include "TavrinesGame.h"
#include "WellBox.h"

namespace mirvalde::testing {

// The well as the player sees it, read back from the screen at the centre of each 16-pixel
// square: the first square whose colour is not the one the rules hold, told; empty if none.
inline std::string WellMismatch(WellBox& box, const TavrinesModule& module) {
    const QImage shot = box.grab().toImage();
    const QPoint inside = box.contentsRect().topLeft();
    for (int c = 1; c <= kColonnes; ++c) {
        for (int r = 1; r <= kLignes; ++r) {
            const QColor p = shot.pixelColor(inside + QPoint(c * 16 - 8, r * 16 - 8));
            const Couleur painted = p.red() | (p.green() << 8) | (p.blue() << 16);
            if (painted == module.Grille[c][r]) continue;
            std::ostringstream told;
            told << "the well shows " << std::hex << painted << " on column " << std::dec << c
                 << ", row " << r << " for " << std::hex << module.Grille[c][r];
            return told.str();
        }
    }
    return {};
}

}  // namespace mirvalde::testing
