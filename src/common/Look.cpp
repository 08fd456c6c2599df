#include "Look.h"

#include <QApplication>
#include <QFont>
#include <QStyleFactory>

namespace mirvalde {
namespace {

// Windows has Arial itself, whose metrics Liberation Sans shares: the windows are laid out
// alike everywhere.
QStringList SansFamilies() {
#ifdef _WIN32
    return {QStringLiteral("Arial"), QStringLiteral("Liberation Sans")};
#else
    return {QStringLiteral("Liberation Sans"), QStringLiteral("Arial")};
#endif
}

}  // namespace

QFont DesignFont(const QString& family) {
#ifdef _WIN32
    // Windows still has MS Sans Serif as a bitmap font, which does not follow the screen's
    // density (and under wine drops some characters): the twin is taken at once.
    if (family == QStringLiteral("MS Sans Serif")) {
        QFont font;
        font.setFamilies(SansFamilies());
        return font;
    }
#endif
    return QFont(family);
}

void UseGameLook() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // The fonts of the windows' designs, or their metric twins where they are missing: named
    // here, they are found at once, without a search through every font of the system.
    const QStringList sans = SansFamilies();
    QFont::insertSubstitution(QStringLiteral("Arial"), QStringLiteral("Liberation Sans"));
    QFont::insertSubstitution(QStringLiteral("Courier New"), QStringLiteral("Liberation Mono"));
    QFont::insertSubstitutions(QStringLiteral("MS Sans Serif"), sans);
    // A bare system may have no sans font but the one we install, and its fallback for menus
    // and dialogs can be a monospaced one.
    QFont font;
    font.setFamilies(sans);
    font.setPointSizeF(9);
    QApplication::setFont(font);
}

}  // namespace mirvalde
