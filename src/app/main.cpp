#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>
#include <cstdlib>

#include "AppInfo.h"
#include "Look.h"
#include "Module1.h"

namespace {

QtMessageHandler qtHandler = nullptr;

// Without a display to open its windows on, Qt gives up inside the application's constructor
// and aborts. The player is told why instead, and the program ends as a failed command does.
void ExitWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (type != QtFatalMsg) {
        qtHandler(type, context, text);
        return;
    }
    // A Wayland desktop without XWayland needs Qt's Wayland platform, which is only recommended
    // by the package: a player who went without it learns its name here.
    std::fputs(
        "Mirvalde : aucun écran n'est disponible pour ouvrir la fenêtre du jeu. Lancez-le "
        "depuis une session graphique (variable DISPLAY ou WAYLAND_DISPLAY). Sur un bureau "
        "Wayland sans XWayland, installez la plateforme Wayland de Qt (paquet qt6-wayland).\n",
        stderr);
    std::_Exit(1);
}

}  // namespace

int main(int argc, char* argv[]) {
    // The blink of removed squares repaints the well several times inside one handler. On X,
    // Qt's shared-memory images let only the first of those repaints reach the screen until the
    // handler returns; plain images show every one. The windows are small: nothing is lost.
    if (!qEnvironmentVariableIsSet("QT_XCB_NO_MITSHM")) qputenv("QT_XCB_NO_MITSHM", "1");
    // Windows are placed and centred where they were designed, which a Wayland desktop does not
    // allow its clients: there the game goes through XWayland, and falls back to Wayland only
    // when that is missing.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
        !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
    }
    qtHandler = qInstallMessageHandler(ExitWithoutDisplay);
    QApplication app(argc, argv);
    qInstallMessageHandler(qtHandler);
    QApplication::setApplicationName(
        QString::fromUtf8(mirvalde::kAppTitle.data(), mirvalde::kAppTitle.size()));
    QApplication::setApplicationVersion(QStringLiteral("%1.%2.%3")
                                            .arg(mirvalde::kVersionMajor)
                                            .arg(mirvalde::kVersionMinor)
                                            .arg(mirvalde::kVersionRevision));
    QApplication::setDesktopFileName(QStringLiteral("org.example.Mirvalde"));
    // Windows end the program by unloading; hidden windows must not count as closed.
    QApplication::setQuitOnLastWindowClosed(false);

    // The buttons of Qt's own dialogs speak French too.
    QTranslator qtFrench;
    if (qtFrench.load(QStringLiteral("qtbase_fr"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QApplication::installTranslator(&qtFrench);
    }
    mirvalde::UseGameLook();

    mirvalde::Module1 module;
    QObject::connect(&module, &mirvalde::Module1::programEnded, &app, &QApplication::quit);
    if (!module.Main()) return 0;
    return QApplication::exec();
}
