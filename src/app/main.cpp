#include <QApplication>
#include <QFont>
#include <QLibraryInfo>
#include <QTranslator>

#include "Module1.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Mirvalde"));
    QApplication::setApplicationVersion(QStringLiteral("5.0.0"));
    QApplication::setDesktopFileName(QStringLiteral("mirvalde"));
    // Windows end the program by unloading; hidden windows must not count as closed.
    QApplication::setQuitOnLastWindowClosed(false);

    // The buttons of Qt's own dialogs speak French too.
    QTranslator qtFrench;
    if (qtFrench.load(QStringLiteral("qtbase_fr"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&qtFrench);
    }
    // The same letters on every machine. A bare system may have no sans font but the one we
    // install, and its fallback for menus and dialogs can be a monospaced one.
    QFont::insertSubstitution(QStringLiteral("MS Sans Serif"), QStringLiteral("Liberation Sans"));
    QFont font(QStringLiteral("Liberation Sans"));
    font.setPointSizeF(9);
    QApplication::setFont(font);

    mirvalde::Module1 module;
    QObject::connect(&module, &mirvalde::Module1::lastWindowUnloaded, &app, &QApplication::quit);
    if (!module.Main()) return 0;
    return QApplication::exec();
}
