#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#include "Look.h"

// Widget tests run without a display, and never touch the user's own settings or runtime
// folder. The platform must be chosen before Qt starts, which also covers the listing of
// the tests that CTest asks for.
int main(int argc, char* argv[]) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Qt makes these folders for the owner alone, as a runtime folder must be.
    QTemporaryDir config, runtime;
    qputenv("XDG_CONFIG_HOME", config.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());

    QApplication app(argc, argv);
    mirvalde::UseGameLook();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
