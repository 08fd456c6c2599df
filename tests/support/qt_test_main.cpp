#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QTemporaryDir>
#include <cstdlib>

// Widget tests run without a display, and never touch the user's own settings or runtime
// folder. The platform must be chosen before Qt starts, which also covers the listing of
// the tests that CTest asks for.
int main(int argc, char* argv[]) {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QTemporaryDir home;
    const QByteArray config = QDir(home.path()).filePath("config").toUtf8();
    const QByteArray runtime = QDir(home.path()).filePath("runtime").toUtf8();
    QDir().mkpath(QString::fromUtf8(config));
    QDir().mkpath(QString::fromUtf8(runtime));
    QFile::setPermissions(QString::fromUtf8(runtime),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    setenv("XDG_CONFIG_HOME", config.constData(), 1);
    setenv("XDG_RUNTIME_DIR", runtime.constData(), 1);

    QApplication app(argc, argv);
    QFont::insertSubstitution(QStringLiteral("MS Sans Serif"), QStringLiteral("Liberation Sans"));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
