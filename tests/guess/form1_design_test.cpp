#include <gtest/gtest.h>

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <cmath>

#include "Fakes.h"
#include "Form1.h"
#include "QtPrinters.h"

namespace mirvalde {
namespace {

// The main window as designed, written out again here on purpose: a slip in the window's
// own table must not be copied into its test.
struct Expected {
    const char* name;
    const char* type;
    const char* parent;
    const char* caption;
    int left, top, width, height;  // twips
    const char* family;            // nullptr: the window's own font
    double points;
    Qt::Alignment align;
    const char* tooltip;
    bool visible;
};

const Expected kDesign[] = {
    {"btEncore", "QPushButton", "client", "&Encore ?", 120, 240, 1335, 615, "Arial", 12,
     Qt::AlignHCenter, "", false},
    {"CmdSolution", "QPushButton", "client", "&Solution", 120, 2640, 1095, 735, "Arial", 9.75,
     Qt::AlignHCenter, "", true},
    {"Frame4", "QGroupBox", "client", "Score", 120, 3480, 7335, 975, nullptr, 0, Qt::AlignLeft, "",
     true},
    {"Label4", "QLabel", "Frame4", "", 1500, 360, 4335, 345, "Arial", 9.75, Qt::AlignHCenter, "",
     true},
    {"Label3(1)", "QLabel", "Frame4", "0", 6000, 390, 495, 360, "Arial", 14.25, Qt::AlignRight, "",
     true},
    {"Label3(0)", "QLabel", "Frame4", "0", 960, 390, 495, 360, "Arial", 14.25, Qt::AlignLeft, "",
     true},
    {"Image2", "QLabel", "Frame4", "", 6720, 270, 480, 480, nullptr, 0, Qt::AlignLeft, "", true},
    {"Image1", "QLabel", "Frame4", "", 240, 270, 480, 480, nullptr, 0, Qt::AlignLeft, "", true},
    {"Frame1", "QGroupBox", "client", "Choisis !", 1320, 2400, 7335, 975, nullptr, 0, Qt::AlignLeft,
     "", true},
    {"Option1(0)", "QRadioButton", "Frame1", "de 0 à 100", 120, 240, 1095, 615, nullptr, 0,
     Qt::AlignLeft, "Choisis la difficulté.", true},
    {"Option1(1)", "QRadioButton", "Frame1", "de 0 à 1 000", 1440, 240, 1215, 615, nullptr, 0,
     Qt::AlignLeft, "Choisis la difficulté.", true},
    {"Option1(2)", "QRadioButton", "Frame1", "de 0 à 10 000", 2880, 240, 1335, 615, nullptr, 0,
     Qt::AlignLeft, "Choisis la difficulté.", true},
    {"Option1(3)", "QRadioButton", "Frame1", "de 0 à 1 000 000", 4320, 240, 1575, 615, nullptr, 0,
     Qt::AlignLeft, "Choisis la difficulté.", true},
    {"Option1(4)", "QRadioButton", "Frame1", "< 99.99", 6120, 240, 975, 615, nullptr, 0,
     Qt::AlignLeft, "Exemple : 52.01", true},
    {"Btquitter", "QPushButton", "client", "&Quitter", 7560, 3600, 1215, 855, "MS Sans Serif", 9.75,
     Qt::AlignHCenter, "", true},
    {"Boxsaisie", "QLineEdit", "client", "", 120, 960, 2655, 555, "Arial", 20.25, Qt::AlignHCenter,
     "Ecris ton nombre ici", true},
    {"Btgo", "QPushButton", "client", "&Go!", 120, 1800, 1095, 735, "Arial", 18, Qt::AlignHCenter,
     "", true},
    {"Coup", "QLabel", "client", "Nombre total de coups joués", 1440, 1800, 7215, 555, "Arial", 18,
     Qt::AlignHCenter, "", true},
    {"Resultat", "QLabel", "client", "Comparaison", 2880, 960, 5775, 555, "Arial", 18,
     Qt::AlignHCenter, "", false},  // hidden by the load
    {"Regle", "QLabel", "client", "Quel est le Mirvalde ?", 1223, 240, 6375, 555, "Arial", 18,
     Qt::AlignHCenter, "", true},
};

int Pixels(double twips) {
    return static_cast<int>(std::lround(twips / 15.0));
}

QString CaptionOf(QWidget* widget) {
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->text();
    if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
    if (auto* frame = qobject_cast<QGroupBox*>(widget)) return frame->title();
    if (auto* box = qobject_cast<QLineEdit*>(widget)) return box->text();
    return {};
}

Qt::Alignment AlignmentOf(QWidget* widget) {
    if (auto* label = qobject_cast<QLabel*>(widget))
        return label->alignment() & Qt::AlignHorizontal_Mask;
    if (auto* box = qobject_cast<QLineEdit*>(widget))
        return box->alignment() & Qt::AlignHorizontal_Mask;
    return qobject_cast<QPushButton*>(widget) ? Qt::AlignHCenter : Qt::AlignLeft;
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

TEST_F(Form1DesignTest, EveryControlStandsAsDesigned) {
    for (const Expected& e : kDesign) {
        SCOPED_TRACE(e.name);
        QWidget* widget = Find(e.name);
        ASSERT_NE(widget, nullptr);
        EXPECT_STREQ(widget->metaObject()->className(), e.type);
        EXPECT_EQ(widget->parentWidget()->objectName(), e.parent);
        EXPECT_EQ(CaptionOf(widget), QString::fromUtf8(e.caption));
        EXPECT_EQ(widget->geometry(),
                  QRect(Pixels(e.left), Pixels(e.top), Pixels(e.width), Pixels(e.height)));
        EXPECT_EQ(widget->isVisible(), e.visible);
        EXPECT_EQ(widget->toolTip(), QString::fromUtf8(e.tooltip));
        EXPECT_EQ(AlignmentOf(widget), e.align);
        const QFont font = widget->font();
        if (e.family) {
            EXPECT_EQ(font.family(), e.family);
            EXPECT_DOUBLE_EQ(font.pointSizeF(), e.points);
            EXPECT_TRUE(font.bold());
            EXPECT_FALSE(font.italic() || font.underline() || font.strikeOut());
        } else {
            EXPECT_EQ(font, window->centralWidget()->font());
        }
    }
}

// A caption cut at its end is a bug the player sees: every caption fits its control in the
// fonts the game installs.
TEST_F(Form1DesignTest, EveryCaptionFitsItsControl) {
    for (const Expected& e : kDesign) {
        QWidget* widget = Find(e.name);
        const int text = widget->fontMetrics().horizontalAdvance(CaptionOf(widget).remove(u'&'));
        if (qobject_cast<QRadioButton*>(widget)) {
            EXPECT_LE(widget->sizeHint().width(), widget->width()) << e.name;
        } else if (qobject_cast<QPushButton*>(widget)) {
            EXPECT_LE(text + 8, widget->width()) << e.name;
        } else if (qobject_cast<QLabel*>(widget)) {
            EXPECT_LE(text, widget->width()) << e.name;
        }
    }
    // The longest sentences a label must hold.
    auto* coup = qobject_cast<QLabel*>(Find("Coup"));
    EXPECT_LE(coup->fontMetrics().horizontalAdvance("Nombre de coups joués : 32767"),
              coup->width());
    auto* answer = qobject_cast<QLabel*>(Find("Resultat"));
    for (const char* sentence :
         {"999 999 999 est trop grand.", "1 000 000 est la bonne réponse."}) {
        EXPECT_LE(answer->fontMetrics().horizontalAdvance(sentence), answer->width()) << sentence;
    }
    auto* average = qobject_cast<QLabel*>(Find("Label4"));
    EXPECT_LE(average->fontMetrics().horizontalAdvance("Tu trouves en 999 fois, en moyenne."),
              average->width());
}

TEST_F(Form1DesignTest, TheWindowItsColoursKeysAndPicturesAreAsDesigned) {
    EXPECT_EQ(window->windowTitle(), "Mirvalde");
    EXPECT_EQ(window->centralWidget()->size(), QSize(588, 308));
    EXPECT_FALSE(window->windowIcon().isNull());
    const Qt::WindowFlags flags = window->windowFlags();
    EXPECT_TRUE(flags & Qt::WindowMinimizeButtonHint);
    EXPECT_TRUE(flags & Qt::WindowMaximizeButtonHint);

    EXPECT_EQ(Find("btEncore")->palette().color(QPalette::Button), QColor(0xFF, 0xC0, 0x80));
    EXPECT_EQ(Find("Boxsaisie")->palette().color(QPalette::Base), QColor(0xC0, 0xFF, 0xFF));
    EXPECT_EQ(Find("Regle")->palette().color(QPalette::WindowText), QColor(Qt::black));
    for (const char* label : {"Regle", "Resultat", "Coup"}) {
        EXPECT_TRUE(Find(label)->autoFillBackground()) << label;
    }
    EXPECT_EQ(qobject_cast<QLineEdit*>(Find("Boxsaisie"))->maxLength(), 9);
    EXPECT_TRUE(qobject_cast<QPushButton*>(Find("Btgo"))->isDefault());
    EXPECT_FALSE(Find("CmdSolution")->isEnabled());
    EXPECT_TRUE(qobject_cast<QRadioButton*>(Find("Option1(0)"))->isChecked());
    for (const char* face : {"Image1", "Image2"}) {
        const QPixmap picture = qobject_cast<QLabel*>(Find(face))->pixmap();
        EXPECT_EQ(picture.deviceIndependentSize(), QSizeF(32, 32)) << face;
        EXPECT_FALSE(Find(face)->accessibleName().isEmpty()) << face;
        // A yellow face: its centre is not transparent.
        EXPECT_GT(picture.toImage()
                      .pixelColor(16 * picture.devicePixelRatio(), 20 * picture.devicePixelRatio())
                      .alpha(),
                  200);
    }
}

TEST_F(Form1DesignTest, TabGoesThroughTheControlsInTheDesignedOrder) {
    QStringList order;
    QWidget* widget = Find("Boxsaisie");
    do {
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)) {
            order << widget->objectName();
        }
        widget = widget->nextInFocusChain();
    } while (widget != Find("Boxsaisie"));
    EXPECT_EQ(order, QStringList({"Boxsaisie", "Btgo", "Btquitter", "Option1(4)", "Option1(3)",
                                  "Option1(2)", "Option1(1)", "Option1(0)"}));
}

TEST_F(Form1DesignTest, TheMenusHoldTheirItems) {
    QStringList menus;
    for (QAction* menu : window->menuBar()->actions()) {
        QStringList items;
        for (QAction* item : menu->menu()->actions()) {
            items << item->objectName() + u'=' + item->text();
            EXPECT_TRUE(item->shortcut().isEmpty());
        }
        menus << menu->menu()->objectName() + u'=' + menu->text() + u'[' + items.join(u',') + u']';
    }
    EXPECT_EQ(menus, QStringList({"Fichier=&Fichier[BtMenu=Astuces,Quitter=&Quitter]",
                                  "Aide=&?[propos=&A propos de]"}));
}

// Maximising scales every control; restoring brings each back to its place, to the pixel,
// however often it is done.
TEST_F(Form1DesignTest, MaximiseAndRestoreScaleTheControlsAndBringThemBack) {
    const QRect designed = Find("Btquitter")->geometry();
    const QRect option = Find("Option1(4)")->geometry();
    const QSize normal = window->size();

    window->showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() != normal; }));
    const double rx = static_cast<float>(window->width()) / static_cast<float>(normal.width());
    EXPECT_NEAR(Find("Btquitter")->x(), 7560 * rx / 15, 0.5);
    EXPECT_NEAR(Find("Btquitter")->width(), 1215 * rx / 15, 0.5);
    EXPECT_NEAR(Find("Option1(4)")->x(), 6120 * rx / 15, 0.5);

    for (int cycle = 0; cycle < 100; ++cycle) {
        window->showNormal();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() == normal; }));
        window->showMaximized();
        ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() != normal; }));
    }
    window->showNormal();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window->size() == normal; }));
    EXPECT_EQ(Find("Btquitter")->geometry(), designed);
    EXPECT_EQ(Find("Option1(4)")->geometry(), option);
    for (const Expected& e : kDesign) {
        EXPECT_EQ(Find(e.name)->geometry(),
                  QRect(Pixels(e.left), Pixels(e.top), Pixels(e.width), Pixels(e.height)))
            << e.name;
    }
}

TEST_F(Form1DesignTest, ASizeDraggedWhileNotMaximisedIsUndone) {
    const QSize normal = window->size();
    window->resize(normal + QSize(120, 40));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->size() == normal; }));
    EXPECT_EQ(Find("Btquitter")->geometry(), QRect(504, 240, 81, 57));
}

}  // namespace
}  // namespace mirvalde
