#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

#include "Look.h"

// Widget tests run without a display, and never touch the user's own settings or runtime
// folder. The platform must be chosen before Qt starts, which also covers the listing of
// the tests that CTest asks for.
int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    const QByteArray config = QDir(home.path()).filePath("config").toUtf8();
    const QByteArray runtime = QDir(home.path()).filePath("runtime").toUtf8();
    QDir().mkpath(QString::fromUtf8(config));
    QDir().mkpath(QString::fromUtf8(runtime));
    QFile::setPermissions(QString::fromUtf8(runtime),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("XDG_CONFIG_HOME", config);
    qputenv("XDG_RUNTIME_DIR", runtime);

    QApplication app(argc, argv);
    mirvalde::UseGameLook();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
