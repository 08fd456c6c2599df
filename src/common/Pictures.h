#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace mirvalde {

// The game's pictures are SVG files built into the program (":/icons/NAME.svg").

// A pixmap of `logicalSize` logical pixels, drawn at the screen's density so that it stays
// sharp on high-density screens.
QPixmap SvgPixmap(const QString& resource, QSize logicalSize, qreal devicePixelRatio);

// An icon drawn afresh at each size a desktop asks for.
QIcon SvgIcon(const QString& resource);

// The game's own icon, which every window of the game shows.
QIcon GameIcon();

}  // namespace mirvalde
