#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "Fakes.h"
#include "QtPrinters.h"
#include "ShapeControl.h"
#include "Stacking.h"
#include "WellPixels.h"
#include "frmTavrines.h"

namespace mirvalde {
namespace {

// The falling-blocks window driven as a player drives it: real keys and menus, the well read
// back from its painted pixels.
class FrmTavrinesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        window.Form_Load();
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QLabel* Label(const char* name) const { return qobject_cast<QLabel*>(window.Control(name)); }
    // A key goes where a player's key goes: to the widget with the focus.
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &window, key, modifiers);
    }

    // Every draw 0.1: the trios are red, red, red in column 1.
    testing::ScriptedRandom random = testing::ScriptedRandom({}, 0.1f);
    testing::FakeClock clock;
    // Settings in memory, which a full disk refuses to write.
    struct : SettingsStore {
        std::string Read(const std::string& s, const std::string& k,
                         const std::string& f) const override {
            return memory.Read(s, k, f);
        }
        bool Write(const std::string& s, const std::string& k, const std::string& v) override {
            return !full && memory.Write(s, k, v);
        }
        MemorySettingsStore memory;
        bool full = false;
    } settings;
    TavrinesGame game{random, clock, settings};
    frmTavrines window{game};
};

TEST_F(FrmTavrinesTest, TheWindowIsFixedWithItsMenusAndNothingCoversAControl) {
    EXPECT_EQ(window.windowTitle(), "Tavrines");
    EXPECT_EQ(window.centralWidget()->size(), QSize(243, 308));
    EXPECT_EQ(window.height(), 308 + window.menuBar()->height());
    EXPECT_EQ(window.minimumSize(), window.maximumSize());
    EXPECT_FALSE(window.windowFlags() & Qt::WindowMinMaxButtonsHint);
    // A check mark beside the chosen speed alone, where styles draw a box beside any other
    // checkable item (`?`); a second choice keeps the mark.
    auto* fastest = window.findChild<QAction*>("mnuSpeed(5)");
    EXPECT_EQ(fastest->actionGroup(), nullptr);
    for (int twice = 0; twice < 2; ++twice) fastest->trigger();
    QStringList items;
    for (const char* menu : {"mnuJeu", "mnuVitesse", "mnuAffichage"})
        for (QAction* item : window.findChild<QMenu*>(menu)->actions())
            items << (item->text() +
                      (item->isChecked()     ? "* "
                       : item->isCheckable() ? "? "
                                             : " ") +
                      item->shortcut().toString())
                         .trimmed();
    EXPECT_EQ(items, (QStringList{"&Nouveau F2", "", "&Quitter Ctrl+Q", "&1 Très lent", "&2 Lent",
                                  "&3 Normal", "&4 Rapide", "&5 Très rapide*",
                                  "&Symboles sur les couleurs?"}));
    EXPECT_EQ(window.menuBar()->actions().at(2)->text(), "&Affichage");

    EXPECT_EQ(testing::CoveredControls(&window), QStringList{});
    // Legend squares in their colours, whole outline drawn, framed by the rounded shape.
    auto* red = qobject_cast<ShapeControl*>(window.Control("shpCarre(0)"));
    EXPECT_EQ(red->FillColour(), Qt::red);
    EXPECT_EQ(red->grab().toImage().pixelColor(15, 15), red->palette().color(QPalette::WindowText));
    window.findChild<QAction*>("mnuSymboles")->trigger();  // red's symbol: a black block
    EXPECT_EQ(red->grab().toImage().pixelColor(red->rect().center()), QColor(Qt::black));
    EXPECT_EQ(qobject_cast<ShapeControl*>(window.Control("Shape2"))->Style(),
              ShapeStyle::RoundedRectangle);
}

// A caption cut at its end is a bug the player sees, also once the counters have grown.
TEST_F(FrmTavrinesTest, EveryCaptionFitsItsLabel) {
    for (const char* name : {"lblVitesse", "lbl(0)", "lbl(1)", "lbl(2)", "lbl(3)", "lblCarres",
                             "lblBlocs", "lblStatCouleur(0)"}) {
        QLabel* label = Label(name);
        const QString text = label->text() == "0" ? QString(" 9999") : label->text();  // counters
        EXPECT_LE(label->fontMetrics().horizontalAdvance(text), label->width()) << name;
    }
    EXPECT_EQ(Label("lbl(0)")->text(), "Carrés :");
    EXPECT_TRUE(QFontInfo(Label("lblScore")->font()).fixedPitch());  // digits in columns
    // A label that sizes itself keeps its right edge, so longer numbers grow to the left.
    EXPECT_EQ(Label("lblMeilleur")->geometry().right() + 1, 213);  // (3075 + 120) twips
    EXPECT_GE(Label("lblMeilleur")->width(),
              Label("lblMeilleur")->fontMetrics().horizontalAdvance(" 10"));
    // A very long name stays within the window, centred where it was designed.
    settings.Write("Meilleur Score", "Nom", std::string(200, 'W'));
    window.Form_Load();
    const QRect nom = Label("lblNom")->geometry();
    EXPECT_TRUE(window.centralWidget()->rect().contains(nom)) << nom.x() << ", " << nom.width();
}

TEST_F(FrmTavrinesTest, TheGameWaitsForNouveauThenTheKeysMoveTheTrioOnScreen) {
    EXPECT_FALSE(window.Timer().isActive());
    EXPECT_EQ(window.Well()->accessibleDescription(), "Aucune partie en cours. F2 pour commencer.");
    Key(Qt::Key_F2);
    ASSERT_TRUE(window.Timer().isActive() && window.Timer().interval() == 500);
    EXPECT_FALSE(window.findChild<QMenu*>("mnuVitesse")->isEnabled());
    EXPECT_EQ(Label("lblStatCouleur(0)")->text(), " 3");

    // The keys act on the trio whatever has the focus, and never restart the timer.
    QTest::qWait(20);
    const int before = window.Timer().remainingTime();
    for (int i = 0; i < 4; ++i) Key(Qt::Key_Down);
    Key(Qt::Key_Right);
    Key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_LE(window.Timer().remainingTime(), before);
    // A screen reader hears where the trio is and the score.
    EXPECT_EQ(window.Well()->accessibleDescription(),
              "Trio en colonne 3, ligne 4 : rouge, rouge, rouge de haut en bas. Score : 0.");
    // And the screen shows it there once repainted, not where it was.
    QTest::qWait(50);
    const QPoint square = window.Well()->mapTo(&window, window.Well()->contentsRect().topLeft());
    const QImage screen = window.screen()->grabWindow(window.winId()).toImage();
    EXPECT_EQ(screen.pixelColor(square + QPoint(3 * 16 - 8, 4 * 16 - 8)), QColor(Qt::red));
    Key(Qt::Key_Space);

    // Holding a key repeats the move.
    QTest::keyEvent(QTest::Press, &window, Qt::Key_Left, Qt::NoModifier);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&window, &repeat);
    EXPECT_EQ(std::pair(game.Module().XPos, game.Module().YPos), std::pair(1, 18));
    Key(Qt::Key_Q, Qt::ShiftModifier);
    EXPECT_TRUE(game.Module().Perdu);
}

// A hidden window pauses its game, and P resumes it: the well shows "Pause" on white
// meanwhile, then its squares. The menu bar keeps its keys from Alt: the trio stays.
TEST_F(FrmTavrinesTest, AHiddenWindowPausesItsGameUntilPAndTheMenuBarKeepsItsKeys) {
    Key(Qt::Key_F2);
    Key(Qt::Key_Space);
    window.hide();
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    EXPECT_FALSE(window.Timer().isActive());
    const QImage paused = window.Well()->grab().toImage();
    const QRect inside = window.Well()->contentsRect();
    int dark = 0, other = 0;
    for (int x = inside.left(); x <= inside.right(); ++x)
        for (int y = inside.top(); y <= inside.bottom(); ++y) {
            const QColor p = paused.pixelColor(x, y);
            dark += p.lightness() < 100;
            other += p.lightness() >= 100 && p != Qt::white;  // antialiased letters only
        }
    EXPECT_GT(dark, 40);
    EXPECT_LT(other, dark);
    EXPECT_TRUE(window.Well()->accessibleDescription().startsWith("Partie en pause"));
    Key(Qt::Key_Left);
    Key(Qt::Key_P);
    EXPECT_TRUE(window.Timer().isActive());
    EXPECT_EQ(testing::WellMismatch(*window.Well(), game.Module()), "");
    EXPECT_EQ(game.Module().XPos, 1);

    Key(Qt::Key_Alt);
    ASSERT_NE(window.menuBar()->activeAction(), nullptr);
    Key(Qt::Key_Right);
    Key(Qt::Key_Space);
    EXPECT_EQ(std::pair(game.Module().XPos, game.Module().YPos), std::pair(1, 18));
    Key(Qt::Key_Escape);
    Key(Qt::Key_Escape);
    Key(Qt::Key_F10);
    EXPECT_TRUE(window.findChild<QMenu*>("mnuJeu")->isVisible());
}

// A best score that cannot be stored, on a full disk say, is told after the name is asked.
TEST_F(FrmTavrinesTest, ABestThatCannotBeStoredIsTold) {
    settings.full = true;
    QString told;  // the name is refused (Anonyme then), and what the game tells is read
    QTimer answer;
    answer.callOnTimeout([&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            told = box->windowTitle() + u'|' + box->text();
        if (QApplication::activeModalWidget()) QApplication::activeModalWidget()->close();
    });
    answer.start(10);
    game.mnuNouveau_Click();
    game.ModuleForTest().Score = 11;
    game.Form_KeyDown(kKeyQ);
    QMetaObject::invokeMethod(const_cast<QTimer*>(&window.Timer()), "timeout");
    EXPECT_EQ(told,
              "Tavrines|Le meilleur score n'a pas pu être enregistré : le disque est "
              "peut-être plein, ou le dossier des réglages protégé en écriture. Le meilleur "
              "score précédent reste enregistré.");
}

// Squares are painted at the screen's density, so that they stay crisp.
TEST(WellBoxTest, TheImageFollowsTheScreenDensity) {
    WellBox box;
    box.setGeometry(0, 0, 99, 291);
    box.FillBox(240, 480, 480, 720, 0x0000FF00);
    const qreal ratio = box.devicePixelRatioF();  // CTest runs this at 1, then at 2 (see CMake)
    EXPECT_EQ(ratio, qEnvironmentVariableIntValue("QT_SCALE_FACTOR") == 2 ? 2 : 1);
    EXPECT_EQ(box.Image().size(), QSize(96, 288) * ratio);
    EXPECT_EQ(box.Image().pixelColor(QPoint(16, 32) * ratio), QColor(0, 255, 0));
    EXPECT_EQ(box.Image().pixelColor(QPoint(15, 32) * ratio), box.palette().color(QPalette::Base));
}

}  // namespace
}  // namespace mirvalde
