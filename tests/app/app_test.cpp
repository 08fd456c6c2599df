#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "Form1.h"
#include "Module1.h"

namespace mirvalde {
namespace {

// The real game, started as a player starts it, in a runtime folder of its own.
class GameProcessTest : public ::testing::Test {
  protected:
    QProcess* Start() {
        auto* game = new QProcess;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("XDG_RUNTIME_DIR", runtime.path());
        env.insert("XDG_CONFIG_HOME", runtime.path());
        game->setProcessEnvironment(env);
        game->start(QStringLiteral(MIRVALDE_GAME_DIR "/mirvalde"), {});
        game->waitForStarted();
        processes.emplace_back(game);
        return game;
    }
    bool WaitForLock() {
        const QString lock = QDir(runtime.path()).filePath("mirvalde.lock");
        return QTest::qWaitFor([&] { return QFileInfo::exists(lock); }, 10000);
    }
    void TearDown() override {
        for (auto& process : processes) {
            process->kill();
            process->waitForFinished();
        }
    }

    QTemporaryDir runtime;
    std::vector<std::unique_ptr<QProcess>> processes;
};

TEST_F(GameProcessTest, ASecondCopyEndsSilentlyWhileTheFirstRuns) {
    QProcess* first = Start();
    ASSERT_TRUE(WaitForLock());
    QProcess* second = Start();
    ASSERT_TRUE(second->waitForFinished(10000));
    EXPECT_EQ(second->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(second->readAllStandardOutput(), "");
    EXPECT_EQ(second->readAllStandardError(), "");
    EXPECT_EQ(first->state(), QProcess::Running);
}

// A copy that was killed leaves its lock behind; the next start must not be refused.
TEST_F(GameProcessTest, TheLockOfAKilledCopyIsTakenOver) {
    QProcess* first = Start();
    ASSERT_TRUE(WaitForLock());
    first->kill();
    first->waitForFinished();
    QProcess* next = Start();
    const auto holder = [this] {
        QFile lock(QDir(runtime.path()).filePath("mirvalde.lock"));
        return lock.open(QIODevice::ReadOnly) ? lock.readLine().trimmed().toLongLong() : 0;
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return holder() == next->processId(); }, 10000));
    EXPECT_EQ(next->state(), QProcess::Running);
}

TEST(Module1Test, MainShowsTheMainWindowAndTheProgramEndsWhenItIsUnloaded) {
    Module1 module;
    QSignalSpy ended(&module, &Module1::programEnded);
    ASSERT_TRUE(module.Main());
    Form1* window = module.MainWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), "Mirvalde");

    window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ended.count(), 1);
    EXPECT_EQ(module.MainWindow(), nullptr);
}

}  // namespace
}  // namespace mirvalde
