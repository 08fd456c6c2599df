#include "Look.h"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

namespace mirvalde {

void UseGameLook() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont::insertSubstitution(QStringLiteral("MS Sans Serif"), QStringLiteral("Liberation Sans"));
    // A bare system may have no sans font but the one we install, and its fallback for menus
    // and dialogs can be a monospaced one.
    QFont font;
    font.setFamilies({QStringLiteral("Liberation Sans"), QStringLiteral("Arial")});
    font.setPointSizeF(9);
    QApplication::setFont(font);
}

}  // namespace mirvalde
