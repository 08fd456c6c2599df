#include "Look.h"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

namespace mirvalde {

void UseGameLook() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // The fonts of the windows' designs, or their metric twins where they are missing: named
    // here, they are found at once, without a search through every font of the system. Windows
    // has Arial itself, whose metrics Liberation Sans shares: the windows are laid out alike.
#ifdef _WIN32
    const QStringList sans = {QStringLiteral("Arial"), QStringLiteral("Liberation Sans")};
#else
    const QStringList sans = {QStringLiteral("Liberation Sans"), QStringLiteral("Arial")};
#endif
    QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
    QFont::insertSubstitutions(QStringLiteral("MS Sans Serif"), sans);
    // A bare system may have no sans font but the one we install, and its fallback for menus
    // and dialogs can be a monospaced one.
    QFont font;
    font.setFamilies(sans);
    font.setPointSizeF(9);
    QApplication::setFont(font);
}

}  // namespace mirvalde
