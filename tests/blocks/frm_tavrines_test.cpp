#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

#include "DesignedControl.h"
#include "Fakes.h"
#include "QtPrinters.h"
#include "ShapeControl.h"
#include "Stacking.h"
#include "WellBox.h"
#include "frmTavrines.h"

namespace mirvalde {
namespace {

using testing::FakeClock;
using testing::ScriptedRandom;

// The falling-blocks window driven as a player drives it: real keys and menus, the well read
// back from its painted pixels.
class FrmTavrinesTest : public ::testing::Test {
  protected:
    void SetUp() override {
        window = new frmTavrines(game);
        window->Form_Load();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }
    void TearDown() override { delete window; }

    QString Caption(const std::string& name) const {
        return qobject_cast<QLabel*>(window->Control(name))->text();
    }
    QAction* Item(const char* name) const {
        return window->findChild<QAction*>(QString::fromLatin1(name));
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QWidget* target = QApplication::focusWidget() ? QApplication::focusWidget() : window;
        QTest::keyClick(target, key, modifiers);
    }
    // The colour painted at the centre of a cell of the well, as 0x00BBGGRR.
    Couleur Painted(int colonne, int ligne) const {
        const QImage shot = window->Well()->grab().toImage();
        const QPoint inside = window->Well()->contentsRect().topLeft();
        const QColor c =
            shot.pixelColor(inside + QPoint((colonne - 1) * 16 + 8, (ligne - 1) * 16 + 8));
        return c.red() | (c.green() << 8) | (c.blue() << 16);
    }
    void ExpectWellShowsGrille() const {
        const auto& grille = game.Module().Grille;
        for (int c = 1; c <= kColonnes; ++c) {
            for (int r = 1; r <= kLignes; ++r) {
                ASSERT_EQ(Painted(c, r), grille[c][r]) << "column " << c << ", row " << r;
            }
        }
    }

    // Every draw 0.1: the trios are red, red, red in column 1.
    ScriptedRandom random = ScriptedRandom({}, 0.1f);
    FakeClock clock;
    MemorySettingsStore settings;
    TavrinesGame game{random, clock, settings};
    QPointer<frmTavrines> window;
};

TEST_F(FrmTavrinesTest, TheWindowIsFixedWithItsMenusAndNothingCoversAControl) {
    EXPECT_EQ(window->windowTitle(), "Tavrines");
    EXPECT_EQ(window->centralWidget()->size(), QSize(243, 308));
    EXPECT_EQ(window->minimumSize(), window->maximumSize());
    const Qt::WindowFlags flags = window->windowFlags();
    EXPECT_FALSE(flags & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(flags & Qt::WindowMaximizeButtonHint);

    const QList<QAction*> jeu = window->findChild<QMenu*>("mnuJeu")->actions();
    ASSERT_EQ(jeu.size(), 3);
    EXPECT_EQ(jeu[0]->text(), "&Nouveau");
    EXPECT_EQ(jeu[0]->shortcut(), QKeySequence(Qt::Key_F2));
    EXPECT_TRUE(jeu[1]->isSeparator());
    EXPECT_EQ(jeu[2]->text(), "&Quitter");
    EXPECT_EQ(jeu[2]->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q));
    QStringList speeds;
    for (QAction* item : window->findChild<QMenu*>("mnuVitesse")->actions()) {
        speeds << item->text() + (item->isChecked() ? "*" : "");
    }
    EXPECT_EQ(speeds, (QStringList{"&1 Très lent", "&2 Lent", "&3 Normal*", "&4 Rapide",
                                   "&5 Très rapide"}));
    // A check mark, which a second choice of the same speed leaves in place.
    EXPECT_EQ(Item("mnuSpeed(3)")->actionGroup(), nullptr);
    Item("mnuSpeed(5)")->trigger();
    Item("mnuSpeed(5)")->trigger();
    EXPECT_TRUE(Item("mnuSpeed(5)")->isChecked());
    EXPECT_FALSE(Item("mnuSpeed(3)")->isChecked());

    EXPECT_EQ(testing::CoveredControls(window), QStringList{});
    // Legend squares in their colours, framed by the rounded shape.
    const auto* red = qobject_cast<ShapeControl*>(window->Control("shpCarre(0)"));
    ASSERT_NE(red, nullptr);
    EXPECT_EQ(red->FillColour(), QColor(255, 0, 0));
    EXPECT_EQ(qobject_cast<ShapeControl*>(window->Control("Shape2"))->Style(),
              ShapeStyle::RoundedRectangle);
}

// A caption cut at its end is a bug the player sees, also once the counters have grown.
TEST_F(FrmTavrinesTest, EveryCaptionFitsItsLabel) {
    for (const char* name : {"lblVitesse", "lbl(0)", "lbl(1)", "lbl(2)", "lbl(3)", "lblCarres",
                             "lblBlocs", "lblStatCouleur(0)"}) {
        auto* label = qobject_cast<QLabel*>(window->Control(name));
        for (const QString& text : {label->text(), QString(" 9999")}) {
            if (name[3] == '(' && text == " 9999") continue;  // captions that never change
            EXPECT_LE(label->fontMetrics().horizontalAdvance(text), label->width())
                << name << ": " << text.toStdString();
        }
    }
    EXPECT_EQ(Caption("lblNom"), "Anonyme");
    EXPECT_EQ(Caption("lblMeilleur"), " 10");
    // A label that sizes itself keeps its right edge, so longer numbers grow to the left.
    auto* meilleur = qobject_cast<QLabel*>(window->Control("lblMeilleur"));
    EXPECT_EQ(meilleur->geometry().right() + 1, 213);  // (3075 + 120) twips
    EXPECT_GE(meilleur->width(), meilleur->fontMetrics().horizontalAdvance(" 10"));
    // A very long name stays within the window, centred where it was designed.
    settings.Write("Meilleur Score", "Nom", std::string(200, 'W'));
    window->Form_Load();
    const QRect nom = window->Control("lblNom")->geometry();
    EXPECT_TRUE(window->centralWidget()->rect().contains(nom)) << nom.x() << ", " << nom.width();
}

TEST_F(FrmTavrinesTest, TheGameWaitsForNouveauThenTheKeysMoveTheTrioOnScreen) {
    EXPECT_FALSE(window->Timer().isActive());
    EXPECT_EQ(window->Well()->accessibleDescription(),
              "Aucune partie en cours. F2 pour commencer.");
    Key(Qt::Key_Down);
    EXPECT_EQ(game.Module().YPos, 0);  // no game yet

    Key(Qt::Key_F2);
    ASSERT_TRUE(window->Timer().isActive());
    EXPECT_EQ(window->Timer().interval(), 500);
    EXPECT_FALSE(window->findChild<QMenu*>("mnuVitesse")->isEnabled());
    EXPECT_EQ(Caption("lblBlocs"), " 1");
    EXPECT_EQ(Caption("lblStatCouleur(0)"), " 3");
    ExpectWellShowsGrille();

    // The keys act on the trio whatever has the focus, and never restart the timer.
    const int before = window->Timer().remainingTime();
    for (int i = 0; i < 4; ++i) Key(Qt::Key_Down);
    Key(Qt::Key_Right);
    Key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_LE(window->Timer().remainingTime(), before);
    EXPECT_EQ(game.Module().YPos, 4);
    EXPECT_EQ(game.Module().XPos, 3);
    ExpectWellShowsGrille();
    // A screen reader hears the trio and the score.
    EXPECT_EQ(window->Well()->accessibleDescription(),
              "Trio en colonne 3, ligne 4 : rouge, rouge, rouge de haut en bas. Score : 0.");
    Key(Qt::Key_Space);
    EXPECT_EQ(game.Module().YPos, 18);
    EXPECT_TRUE(game.Module().EnBas);
    ExpectWellShowsGrille();
    EXPECT_EQ(Painted(3, 16), 0x000000FF);
    EXPECT_EQ(Painted(3, 15), COULEUR_VIDE);

    // Holding a key repeats the move.
    QTest::keyEvent(QTest::Press, window, Qt::Key_Left, Qt::NoModifier);
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Left, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(window, &repeat);
    EXPECT_EQ(game.Module().XPos, 1);
    ExpectWellShowsGrille();

    Key(Qt::Key_Q, Qt::ShiftModifier);
    EXPECT_TRUE(game.Module().Perdu);
    Key(Qt::Key_Right);
    EXPECT_EQ(game.Module().XPos, 1);
}

// What is painted stays when the window is covered and shown again.
TEST_F(FrmTavrinesTest, ThePaintingOfTheWellSurvivesAHideAndAShow) {
    Key(Qt::Key_F2);
    Key(Qt::Key_Space);
    window->hide();
    window->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    ExpectWellShowsGrille();
}

// Squares are painted at the screen's density, so that they stay crisp.
TEST(WellBoxTest, TheImageFollowsTheScreenDensity) {
    WellBox box;
    box.setGeometry(0, 0, 99, 291);
    box.FillBox(240, 480, 480, 720, 0x0000FF00);
    EXPECT_EQ(box.Image().size(), QSize(96, 288) * box.devicePixelRatioF());
    EXPECT_EQ(box.Image().pixelColor(QPoint(16, 32) * box.devicePixelRatioF()), QColor(0, 255, 0));
    EXPECT_EQ(box.Image().pixelColor(QPoint(15, 32) * box.devicePixelRatioF()),
              box.palette().color(QPalette::Base));
}

}  // namespace
}  // namespace mirvalde
