#pragma once

#include <QPainter>
#include <QRectF>

#include "TavrinesGame.h"

namespace mirvalde {

// Draws on a square of one of the six colours the symbol that tells it apart without its hue,
// for players who do not see it; other colours get none. Each symbol fills some of the four
// quarters of the square's middle, in black or white, whichever stands out on the colour; any
// two symbols differ in two quarters at least, so that they stay apart at 16 pixels.
void DrawColourSymbol(QPainter& painter, const QRectF& square, Couleur couleur);

}  // namespace mirvalde
