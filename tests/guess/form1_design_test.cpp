#include <gtest/gtest.h>

#include <QLabel>
#include <QMenuBar>
#include <QTest>
#include <cmath>

#include "Fakes.h"
#include "Form1.h"
#include "QtPrinters.h"

namespace mirvalde {
namespace {

constexpr Qt::Alignment H = Qt::AlignHCenter, L = Qt::AlignLeft, R = Qt::AlignRight;

// The main window as designed, written out again here on purpose: a slip in the window's
// own table must not be copied into its test. Places in twips; a font of nullptr is the
// window's own; a tooltip, or "-" for a control hidden at load; the longest text a label shows.
// clang-format off
struct Expected { const char *name, *type, *parent, *caption; int left, top, width, height;
                  const char* family; double points; Qt::Alignment align;
                  const char *tooltip, *longest = nullptr; };
const Expected kDesign[] = {
    {"btEncore", "QPushButton", "client", "&Encore ?", 120, 240, 1335, 615, "Arial", 12, H, "-"},
    {"CmdSolution", "QPushButton", "client", "&Solution", 120, 2640, 1095, 735, "Arial", 9.75, H, ""},
    {"Frame4", "QGroupBox", "client", "Score", 120, 3480, 7335, 975, nullptr, 0, L, ""},
    {"Label4", "QLabel", "Frame4", "", 1500, 360, 4335, 345, "Arial", 9.75, H, "", "Tu trouves en 999 fois, en moyenne."},
    {"Label3(1)", "QLabel", "Frame4", "0", 6000, 390, 495, 360, "Arial", 14.25, R, ""},
    {"Label3(0)", "QLabel", "Frame4", "0", 960, 390, 495, 360, "Arial", 14.25, L, ""},
    {"Image2", "QLabel", "Frame4", "", 6720, 270, 480, 480, nullptr, 0, L, ""},
    {"Image1", "QLabel", "Frame4", "", 240, 270, 480, 480, nullptr, 0, L, ""},
    {"Frame1", "QGroupBox", "client", "Choisis !", 1320, 2400, 7335, 975, nullptr, 0, L, ""},
    {"Option1(0)", "QRadioButton", "Frame1", "de 0 à 100", 120, 240, 1095, 615, nullptr, 0, L, "Choisis la difficulté."},
    {"Option1(1)", "QRadioButton", "Frame1", "de 0 à 1 000", 1440, 240, 1215, 615, nullptr, 0, L, "Choisis la difficulté."},
    {"Option1(2)", "QRadioButton", "Frame1", "de 0 à 10 000", 2880, 240, 1335, 615, nullptr, 0, L, "Choisis la difficulté."},
    {"Option1(3)", "QRadioButton", "Frame1", "de 0 à 1 000 000", 4320, 240, 1575, 615, nullptr, 0, L, "Choisis la difficulté."},
    {"Option1(4)", "QRadioButton", "Frame1", "< 99.99", 6120, 240, 975, 615, nullptr, 0, L, "Exemple : 52.01"},
    {"Btquitter", "QPushButton", "client", "&Quitter", 7560, 3600, 1215, 855, "MS Sans Serif", 9.75, H, ""},
    {"Boxsaisie", "QLineEdit", "client", "", 120, 960, 2655, 555, "Arial", 20.25, H, "Ecris ton nombre ici"},
    {"Btgo", "QPushButton", "client", "&Go!", 120, 1800, 1095, 735, "Arial", 18, H, ""},
    {"Coup", "QLabel", "client", "Nombre total de coups joués", 1440, 1800, 7215, 555, "Arial", 18, H, "", "Nombre de coups joués : 32767"},
    {"Resultat", "QLabel", "client", "Comparaison", 2880, 960, 5775, 555, "Arial", 18, H, "-", "1 000 000 est la bonne réponse."},
    {"Regle", "QLabel", "client", "Quel est le Mirvalde ?", 1223, 240, 6375, 555, "Arial", 18, H, ""},
};
// clang-format on

// Where a control stands once the window is scaled by rx and ry, to the pixel: 15 twips each.
bool StandsAt(QWidget* widget, const Expected& e, double rx = 1, double ry = 1) {
    const auto px = [](double twips) { return static_cast<int>(std::lround(twips / 15)); };
    return widget->geometry() ==
           QRect(px(e.left * rx), px(e.top * ry), px(e.width * rx), px(e.height * ry));
}

class Form1DesignTest : public ::testing::Test {
  protected:
    void SetUp() override {
        window->Form_Load();
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
    }
    QWidget* Find(const char* name) const { return window->Control(name); }

    testing::ScriptedRandom random;
    testing::FakeClock clock;
    testing::RecordingSound sound;
    GuessGame game{random, clock, sound, {}, ','};
    std::unique_ptr<Form1> window = std::make_unique<Form1>(game);
};

// A caption cut at its end is a bug the player sees: every caption, and the longest sentence
// a label shows, fits its control in the fonts the game installs.
TEST_F(Form1DesignTest, EveryControlStandsAsDesignedAndItsCaptionFits) {
    for (const Expected& e : kDesign) {
        SCOPED_TRACE(e.name);
        QWidget* widget = Find(e.name);
        ASSERT_STREQ(widget ? widget->metaObject()->className() : "no control", e.type);
        EXPECT_EQ(widget->parentWidget()->objectName(), e.parent);
        EXPECT_EQ(widget->property(widget->inherits("QGroupBox") ? "title" : "text").toString(),
                  QString::fromUtf8(e.caption));
        EXPECT_TRUE(StandsAt(widget, e));
        EXPECT_EQ(widget->isVisible() ? widget->toolTip() : "-", QString::fromUtf8(e.tooltip));
        if (const QVariant align = widget->property("alignment"); align.isValid()) {
            EXPECT_EQ(align.toInt() & Qt::AlignHorizontal_Mask, int(e.align));
        }
        const QFont font = widget->font(), own = window->centralWidget()->font();
        EXPECT_EQ(font.family(), e.family ? QString(e.family) : own.family());
        EXPECT_EQ(font.pointSizeF(), e.family ? e.points : own.pointSizeF());
        EXPECT_TRUE(e.family ? font.bold() && !font.underline() : font == own);
        const QString text = QString::fromUtf8(e.longest ? e.longest : e.caption).remove(u'&');
        const int needed = widget->inherits("QRadioButton")
                               ? widget->sizeHint().width()
                               : widget->fontMetrics().horizontalAdvance(text);
        EXPECT_LE(needed, widget->width() - (widget->inherits("QPushButton") ? 8 : 0));
    }
}

TEST_F(Form1DesignTest, TheWindowItsColoursKeysAndPicturesAreAsDesigned) {
    EXPECT_EQ(window->centralWidget()->size(), QSize(588, 308));
    EXPECT_FALSE(window->windowIcon().isNull());
    EXPECT_TRUE(window->windowFlags().testFlags(Qt::WindowMinMaxButtonsHint));
    EXPECT_EQ(Find("btEncore")->palette().color(QPalette::Button), QColor(0xFF, 0xC0, 0x80));
    EXPECT_EQ(Find("Boxsaisie")->palette().color(QPalette::Base), QColor(0xC0, 0xFF, 0xFF));
    EXPECT_EQ(Find("Regle")->palette().color(QPalette::WindowText), QColor(Qt::black));
    for (const char* label : {"Regle", "Resultat", "Coup"})
        EXPECT_TRUE(Find(label)->autoFillBackground()) << label;
    // "Go!" is the default button; "Solution" waits for something in the box.
    EXPECT_TRUE(Find("Btgo")->property("default").toBool() && !Find("CmdSolution")->isEnabled());
    EXPECT_TRUE(Find("Option1(0)")->property("checked").toBool());
    for (const char* face : {"Image1", "Image2"}) {
        const QPixmap picture = qobject_cast<QLabel*>(Find(face))->pixmap();
        EXPECT_FALSE(Find(face)->accessibleName().isEmpty()) << face;
        // A yellow face: its centre is not transparent.
        EXPECT_GT(picture.toImage().pixelColor(picture.rect().center()).alpha(), 200) << face;
    }

    // Tab goes through the controls in the designed order; no menu item has a shortcut.
    QStringList order;  // from the box, round the chain back to it
    for (QWidget* w = Find("Boxsaisie"); order.isEmpty() || w != Find("Boxsaisie");
         w = w->nextInFocusChain())
        if (w->isVisible() && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus))
            order << w->objectName();
    EXPECT_EQ(order, QStringList({"Boxsaisie", "Btgo", "Btquitter", "Option1(4)", "Option1(3)",
                                  "Option1(2)", "Option1(1)", "Option1(0)"}));

    QStringList menus;
    for (QAction* menu : window->menuBar()->actions()) {
        menus << menu->menu()->objectName() + u'=' + menu->text();
        for (QAction* item : menu->menu()->actions())
            menus << item->objectName() + u'=' + item->text() + item->shortcut().toString();
    }
    EXPECT_EQ(menus, QStringList({"Fichier=&Fichier", "BtMenu=Astuces", "Quitter=&Quitter",
                                  "Aide=&?", "propos=&A propos de"}));
}

// Maximising scales every control, frames' contents included; restoring brings each back to
// its place, to the pixel, however often it is done. A size dragged otherwise is undone.
TEST_F(Form1DesignTest, MaximiseAndRestoreScaleTheControlsAndBringThemBack) {
    const QSize normal = window->size();
    const auto standAsDesigned = [this](double rx, double ry) {
        for (const Expected& e : kDesign) EXPECT_TRUE(StandsAt(Find(e.name), e, rx, ry)) << e.name;
    };
    for (int cycle = 0; cycle < 100; ++cycle) {
        window->showMaximized();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() != normal; }));
        standAsDesigned(static_cast<float>(window->width()) / normal.width(),
                        static_cast<float>(window->height()) / normal.height());
        window->showNormal();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() == normal; }));
    }
    window->resize(normal + QSize(120, 40));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == normal; }));
    standAsDesigned(1, 1);
}

}  // namespace
}  // namespace mirvalde
