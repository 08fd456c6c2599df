#pragma once

#include <QFont>

namespace mirvalde {

// The same letters and the same widgets on every machine: the fonts the windows name are
// mapped onto the metric-compatible ones the game installs, and Qt's own style draws the
// coloured buttons whatever the desktop.
void UseGameLook();

// The font that a window's design names, such as "MS Sans Serif".
QFont DesignFont(const QString& family);

}  // namespace mirvalde
