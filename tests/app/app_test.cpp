#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <QApplication>
#include <QCheckBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSettings>
#include <QTimer>
#include <functional>

#include "Files.h"
#include "Form1.h"
#include "Module1.h"

namespace mirvalde {
namespace {

// The real game, started as a player starts it, in a runtime folder of its own.
class GameProcessTest : public ::testing::Test {
  protected:
    QProcess* Start(const std::function<void(QProcessEnvironment&)>& change = {}) {
        auto* game = new QProcess;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("XDG_RUNTIME_DIR", runtime.path());
        env.insert("XDG_CONFIG_HOME", runtime.path());
        if (change) change(env);
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

// Started outside any desktop, or with a display that does not answer, the game says so.
TEST_F(GameProcessTest, WithoutADisplayItSaysSoInFrenchAndEndsAsAFailure) {
    for (const QString display : {"", ":4242"}) {
        QProcess* game = Start([&display](QProcessEnvironment& env) {
            for (const char* name : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
                env.remove(name);
            }
            if (!display.isEmpty()) env.insert("DISPLAY", display);
        });
        ASSERT_TRUE(game->waitForFinished(10000)) << display.toStdString();
        EXPECT_EQ(game->exitStatus(), QProcess::NormalExit) << display.toStdString();
        EXPECT_EQ(game->exitCode(), 1) << display.toStdString();
        EXPECT_TRUE(QString::fromUtf8(game->readAllStandardError())
                        .contains("Mirvalde : aucun écran n'est disponible pour ouvrir la fenêtre"))
            << display.toStdString();
    }
}

// The settings of the program under test, as the game stores them.
QSettings& Stored() {
    static QSettings stored(QSettings::NativeFormat, QSettings::UserScope, ExecutableBaseName(),
                            ExecutableBaseName());
    return stored;
}

void TipsAtStartup(const QVariant& value) {
    if (value.isNull()) {
        Stored().remove("Options/Show Tips at Startup");
    } else {
        Stored().setValue("Options/Show Tips at Startup", value);
    }
    Stored().sync();
}

TEST(Module1Test, MainShowsTheMainWindowAndTheProgramEndsWhenItIsUnloaded) {
    TipsAtStartup(0);
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

// The player's road: ten numbers found in the main window.
void FindTenNumbers(Module1& module) {
    for (int found = 0; found < 10; ++found) {
        ASSERT_EQ(module.BlocksWindow(), nullptr) << found;
        Form1* window = module.MainWindow();
        if (found > 0) qobject_cast<QPushButton*>(window->Control("btEncore"))->click();
        auto* box = qobject_cast<QLineEdit*>(window->Control("Boxsaisie"));
        QTest::keyClicks(box, QString::number(module.Guess().Module().Nombre));
        QTest::keyClick(box, Qt::Key_Return);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_NE(module.BlocksWindow(), nullptr);
    module.BlocksWindow()->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(module.BlocksWindow()));
}

QString Caption(QWidget* window, const char* name) {
    return qobject_cast<QLabel*>(qobject_cast<frmTavrines*>(window)->Control(name))->text();
}

// Ten numbers found open the falling-blocks window, idle, with the best score as stored; the
// end of a game settles the best and brings the guessing game back; "Quitter" and the frame
// end the program.
TEST(Module1Test, TenNumbersFoundHandOverToTheBlocksGameAndItsEndHandsBack) {
    TipsAtStartup(0);
    QSettings& stored = Stored();
    stored.setValue("Meilleur Score/Nom", QStringLiteral("Zoé"));
    stored.setValue("Meilleur Score/Score", QStringLiteral("douze"));
    stored.sync();

    Module1 module;
    QSignalSpy ended(&module, &Module1::programEnded);
    ASSERT_TRUE(module.Main());
    FindTenNumbers(module);
    frmTavrines* blocks = module.BlocksWindow();
    EXPECT_TRUE(blocks->isVisible());
    EXPECT_EQ(module.MainWindow(), nullptr);
    EXPECT_FALSE(blocks->Timer().isActive());
    const Form1Module& counters = module.Guess().Module();
    EXPECT_EQ(counters.NbTrouves + counters.NbRates + counters.NbCoups, 0);
    EXPECT_EQ(module.Guess().Controls().Coup, "Nombre de coups joués : 0");
    EXPECT_EQ(Caption(blocks, "lblNom"), "Zoé");
    // A stored score that is not a number gives the default best.
    EXPECT_EQ(Caption(blocks, "lblMeilleur"), " 10");

    // Given up with no score: nothing asked, nothing stored, the guessing game back.
    blocks->findChild<QAction*>("mnuSpeed(5)")->trigger();
    QTest::keyClick(blocks, Qt::Key_F2);
    QTest::keyClick(blocks, Qt::Key_Q);
    ASSERT_TRUE(QTest::qWaitFor([&] { return module.MainWindow() != nullptr; }, 2000));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(module.BlocksWindow(), nullptr);
    EXPECT_TRUE(module.MainWindow()->isVisible());
    EXPECT_EQ(stored.value("Meilleur Score/Score").toString(), "douze");

    // Opened afresh at normal speed with the best read again; a score above it asks the name.
    stored.setValue("Meilleur Score/Score", QStringLiteral("-1"));
    stored.sync();
    FindTenNumbers(module);
    blocks = module.BlocksWindow();
    EXPECT_EQ(Caption(blocks, "lblVitesse"), "Vitesse : 3");
    EXPECT_EQ(Caption(blocks, "lblMeilleur"), "-1");
    QTest::keyClick(blocks, Qt::Key_F2);
    QTest::keyClick(blocks, Qt::Key_Q);
    QString asked;
    QTimer answer;
    answer.callOnTimeout([&] {
        if (auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget())) {
            asked = box->windowTitle() + u'|' + box->labelText() + u'|' + box->textValue();
            box->setTextValue(QStringLiteral("  Léa  "));
            box->accept();
        }
    });
    answer.start(10);
    ASSERT_TRUE(QTest::qWaitFor([&] { return module.MainWindow() != nullptr; }, 3000));
    EXPECT_EQ(asked, "HIGH SCORE|Bravo! vous avez le meilleur score, votre nom : |Zoé");
    stored.sync();
    EXPECT_EQ(stored.value("Meilleur Score/Nom").toString(), "Léa");
    EXPECT_EQ(stored.value("Meilleur Score/Score").toString(), "0");
    // The guessing game starts again at its first level, with a new number.
    EXPECT_EQ(module.Guess().Module().Niveau, 0);
    EXPECT_GE(module.Guess().Module().Nombre, 1);
    EXPECT_LE(module.Guess().Module().Nombre, 100);

    FindTenNumbers(module);
    QTest::keyClick(module.BlocksWindow(), Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(ended.count(), 1);
    // Closed by its frame, the last window ends the program too.
    module.BlocksWindow()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ended.count(), 2);
}

// "A propos de" hides the main window; closed in any way, the about window gives it back as
// the player left it.
TEST(Module1Test, TheAboutWindowStandsInForTheMainWindowUntilItIsClosed) {
    TipsAtStartup(0);
    Module1 module;
    ASSERT_TRUE(module.Main());
    Form1* main = module.MainWindow();
    auto* box = qobject_cast<QLineEdit*>(main->Control("Boxsaisie"));
    QTest::keyClicks(box, "7");
    QTest::keyClick(box, Qt::Key_Return);
    QTest::keyClicks(box, "12");
    const QString coup = qobject_cast<QLabel*>(main->Control("Coup"))->text();
    const std::function<void(frmAbout*)> closings[] = {
        [](frmAbout* about) { qobject_cast<QPushButton*>(about->Control("cmdOK"))->click(); },
        [](frmAbout* about) { QTest::keyClick(about, Qt::Key_Return); },
        [](frmAbout* about) { QTest::keyClick(about, Qt::Key_Escape); },
        [](frmAbout* about) { about->close(); },  // the frame or the window menu
    };
    for (const auto& close : closings) {
        main->findChild<QAction*>("propos")->trigger();
        frmAbout* about = module.AboutWindow();
        ASSERT_NE(about, nullptr);
        EXPECT_FALSE(main->isVisible());
        EXPECT_TRUE(about->isVisible());
        EXPECT_FALSE(about->isModal());
        EXPECT_EQ(about->windowTitle(), "À propos de Mirvalde");
        EXPECT_EQ(qobject_cast<QLabel*>(about->Control("lblVersion"))->text(), "Version 5.0.0");
        close(about);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(module.AboutWindow(), nullptr);
        EXPECT_TRUE(main->isVisible());
        EXPECT_EQ(box->text(), "12");
        EXPECT_EQ(qobject_cast<QLabel*>(main->Control("Coup"))->text(), coup);
    }
}

// With no setting stored, the tips come first, alone and modal; the main window follows them.
// "Astuces" brings them back beside the main window, also once the player has turned them off.
TEST(Module1Test, TheTipsOpenFirstAtStartUpAndOnRequest) {
    TipsAtStartup(QVariant());
    Module1 module;
    bool mainShownMeanwhile = true;
    QString setting;
    QTimer::singleShot(0, [&] {
        auto* tip = qobject_cast<frmTip*>(QApplication::activeModalWidget());
        ASSERT_NE(tip, nullptr);
        EXPECT_EQ(tip->windowTitle(), "Astuce du jour");
        EXPECT_TRUE(qobject_cast<QCheckBox*>(tip->Control("chkLoadTipsAtStartup"))->isChecked());
        mainShownMeanwhile = module.MainWindow()->isVisible();
        Stored().sync();
        setting = Stored().value("Options/Show Tips at Startup").toString();
        // Unticked by the player: written at once.
        qobject_cast<QCheckBox*>(tip->Control("chkLoadTipsAtStartup"))->click();
        Stored().sync();
        setting += Stored().value("Options/Show Tips at Startup").toString();
        QTest::keyClick(tip, Qt::Key_Escape);
    });
    ASSERT_TRUE(module.Main());
    EXPECT_FALSE(mainShownMeanwhile);
    EXPECT_EQ(setting, "10");
    EXPECT_TRUE(module.MainWindow()->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(module.TipWindow(), nullptr);

    // Off at start-up, and asked for: shown, not modal, the box unticked, the setting kept.
    module.MainWindow()->findChild<QAction*>("BtMenu")->trigger();
    frmTip* tip = module.TipWindow();
    ASSERT_NE(tip, nullptr);
    EXPECT_TRUE(tip->isVisible());
    EXPECT_FALSE(tip->isModal());
    EXPECT_FALSE(qobject_cast<QCheckBox*>(tip->Control("chkLoadTipsAtStartup"))->isChecked());
    module.MainWindow()->findChild<QAction*>("BtMenu")->trigger();
    EXPECT_EQ(module.TipWindow(), tip);  // the same window, brought forward
    Stored().sync();
    EXPECT_EQ(Stored().value("Options/Show Tips at Startup").toString(), "0");

    // The main window quits; the tips keep the program running until they are closed.
    QSignalSpy ended(&module, &Module1::programEnded);
    module.MainWindow()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ended.count(), 0);
    qobject_cast<QPushButton*>(tip->Control("cmdOK"))->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(ended.count(), 1);
}

}  // namespace
}  // namespace mirvalde
