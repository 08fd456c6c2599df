#include "Look.h"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

namespace mirvalde {

void UseGameLook() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // The fonts of the windows' designs, or their metric twins where they are missing: named
    // here, they are found at once, without a search through every font of the system.
    QFont::insertSubstitution(QStringLiteral("MS Sans Serif"), QStringLiteral("Liberation Sans"));
    QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
    // A bare system may have no sans font but the one we install, and its fallback for menus
    // and dialogs can be a monospaced one.
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial")});
    font.setPointSizeF(9);
    QApplication::setFont(font);
}

}  // namespace mirvalde
