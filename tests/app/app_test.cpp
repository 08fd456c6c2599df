#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QLockFile>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "Files.h"
#include "Module1.h"

namespace mirvalde {
namespace {

// A second copy ends silently while the first runs; a copy that was killed leaves its lock
// behind, and the next start must not be refused. Each copy is the real game, started as a
// player starts it, in a runtime folder of the test's own; it is killed at the end.
TEST(GameProcessTest, OnlyOneCopyRunsAtATime) {
    QTemporaryDir runtime;
    std::vector<std::unique_ptr<QProcess>> games;
    const auto start = [&] {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("XDG_RUNTIME_DIR", runtime.path());
        env.insert("XDG_CONFIG_HOME", runtime.path());
        QProcess* game = games.emplace_back(std::make_unique<QProcess>()).get();
        game->setProcessEnvironment(env);
        game->start(QStringLiteral(MIRVALDE_GAME_DIR "/mirvalde"), {});
        game->waitForStarted();
        return game;
    };
    // Waits for the game to write itself into the lock: a copy killed before that leaves none.
    const auto holdsTheLock = [&](QProcess* game) {
        QLockFile lock(runtime.filePath("mirvalde.lock"));
        qint64 pid = 0;
        return QTest::qWaitFor(
            [&] { return lock.getLockInfo(&pid, nullptr, nullptr) && pid == game->processId(); },
            10000);
    };
    QProcess* first = start();
    ASSERT_TRUE(holdsTheLock(first));
    QProcess* second = start();
    ASSERT_TRUE(second->waitForFinished(10000));
    EXPECT_EQ(second->exitCode(), 0);
    EXPECT_EQ(second->readAll() + second->readAllStandardError(), "");
    EXPECT_EQ(first->state(), QProcess::Running);

    first->kill();
    first->waitForFinished();
    QProcess* next = start();
    EXPECT_TRUE(holdsTheLock(next));
    EXPECT_EQ(next->state(), QProcess::Running);

    // A copy killed as it took the lock left it empty: a while later it keeps nobody out.
    next->kill();
    next->waitForFinished();
    QFile lock(QDir(runtime.path()).filePath("mirvalde.lock"));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly | QIODevice::Truncate));
    lock.setFileTime(QDateTime::currentDateTime().addSecs(-60), QFileDevice::FileModificationTime);
    lock.close();
    EXPECT_TRUE(holdsTheLock(start()));
}

// The settings of the program under test, as the game stores them; a null value is none.
QSettings& Stored(std::initializer_list<std::pair<const char*, QVariant>> values = {}) {
    static QSettings stored(ExecutableBaseName(), ExecutableBaseName());
    for (const auto& [key, value] : values)
        value.isNull() ? stored.remove(key) : stored.setValue(key, value);
    stored.sync();
    return stored;
}

// The player's road: ten numbers found in the main window.
void FindTenNumbers(Module1& module) {
    for (int found = 0; found < 10; ++found) {
        ASSERT_EQ(module.BlocksWindow(), nullptr) << found;
        Form1* window = module.MainWindow();
        if (found > 0) qobject_cast<QPushButton*>(window->Control("btEncore"))->click();
        QTest::keyClicks(window->Control("Boxsaisie"),
                         QString::number(module.Guess().Module().Nombre) + u'\r');
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_NE(module.BlocksWindow(), nullptr);
    module.BlocksWindow()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(module.BlocksWindow()));
}

// Ten numbers found open the falling-blocks window with the best as stored,
// and unload the main window; the end of a game settles the best, closes the blocks window
// and brings the guessing game back, whose next ten numbers hand over again. "Quitter" and
// the frame end the program, not the unloads before.
TEST(Module1Test, TenNumbersFoundHandOverToTheBlocksGameAndItsEndHandsBack) {
    Stored({{"Options/Show Tips at Startup", 0},
            {"Meilleur Score/Nom", QStringLiteral("Zoé")},
            {"Meilleur Score/Score", -1}});
    Module1 module;
    QSignalSpy ended(&module, &Module1::programEnded);
    ASSERT_TRUE(module.Main());
    FindTenNumbers(module);
    frmTavrines* blocks = module.BlocksWindow();
    EXPECT_EQ(module.MainWindow(), nullptr);
    EXPECT_EQ(qobject_cast<QLabel*>(blocks->Control("lblNom"))->text() + u'|' +
                  qobject_cast<QLabel*>(blocks->Control("lblMeilleur"))->text(),
              "Zoé|-1");

    // A game given up at once: its 0 is the best, and the name is asked.
    QString asked;
    QTimer answer;
    answer.callOnTimeout([&] {
        if (auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget())) {
            asked = box->windowTitle() + u'|' + box->labelText() + u'|' + box->textValue();
            box->setTextValue(QStringLiteral("Léa"));
            box->accept();
        }
    });
    answer.start(10);
    QTest::keyClick(blocks, Qt::Key_F2);
    QTest::keyClick(blocks, Qt::Key_Q);
    ASSERT_TRUE(QTest::qWaitFor([&] { return module.MainWindow() != nullptr; }, 3000));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(!module.BlocksWindow() && module.MainWindow()->isVisible());
    EXPECT_EQ(asked + u'|' + Stored().value("Meilleur Score/Nom").toString() + u'|' +
                  Stored().value("Meilleur Score/Score").toString(),
              "HIGH SCORE|Bravo! vous avez le meilleur score, votre nom : |Zoé|Léa|0");

    FindTenNumbers(module);
    QTest::keyClick(module.BlocksWindow(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(ended.count(), 1);
    module.BlocksWindow()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ended.count(), 2);
}

// "A propos de" hides the main window; closed in any way, the about window gives it back as
// the player left it.
TEST(Module1Test, TheAboutWindowStandsInForTheMainWindowUntilItIsClosed) {
    Stored({{"Options/Show Tips at Startup", 0}});
    Module1 module;
    ASSERT_TRUE(module.Main());
    Form1* main = module.MainWindow();
    auto* box = qobject_cast<QLineEdit*>(main->Control("Boxsaisie"));
    QTest::keyClicks(box, "7\r12");
    for (int way = 0; way < 3; ++way) {
        main->findChild<QAction*>("propos")->trigger();
        frmAbout* about = module.AboutWindow();
        ASSERT_TRUE(about && about->isVisible() && !about->isModal());
        EXPECT_FALSE(main->isVisible());
        if (way == 0) qobject_cast<QPushButton*>(about->Control("cmdOK"))->click();
        if (way == 1) QTest::keyClick(about, Qt::Key_Escape);
        if (way == 2) about->close();  // the frame or the window menu
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(main->isVisible()) << way;
        EXPECT_EQ(box->text(), "12");  // the same window, not loaded again
    }
}

// With no setting stored, the tips come first, alone and modal; the main window follows them.
// "Astuces" brings them back beside the main window, also once the player has turned them off.
TEST(Module1Test, TheTipsOpenFirstAtStartUpAndOnRequest) {
    Stored({{"Options/Show Tips at Startup", QVariant()}});
    Module1 module;
    bool mainShownMeanwhile = true;
    QTimer::singleShot(0, [&] {
        auto* tip = qobject_cast<frmTip*>(QApplication::activeModalWidget());
        ASSERT_NE(tip, nullptr);
        mainShownMeanwhile = module.MainWindow()->isVisible();
        qobject_cast<QAbstractButton*>(tip->Control("chkLoadTipsAtStartup"))->click();
        QTest::keyClick(tip, Qt::Key_Escape);
    });
    ASSERT_TRUE(module.Main());
    EXPECT_FALSE(mainShownMeanwhile);
    EXPECT_TRUE(module.MainWindow()->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(module.TipWindow(), nullptr);

    module.MainWindow()->findChild<QAction*>("BtMenu")->trigger();
    frmTip* tip = module.TipWindow();
    ASSERT_TRUE(tip && tip->isVisible() && !tip->isModal());
    module.MainWindow()->findChild<QAction*>("BtMenu")->trigger();
    EXPECT_EQ(module.TipWindow(), tip);  // the same window, brought forward
}

}  // namespace
}  // namespace mirvalde
