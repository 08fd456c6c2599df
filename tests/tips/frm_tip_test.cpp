#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "QtPrinters.h"
#include "SettingsStore.h"
#include "Stacking.h"
#include "frmTip.h"

namespace mirvalde {
namespace {

// The tip window as the player meets it, its tips file written by the test.
class FrmTipTest : public ::testing::Test {
  protected:
    void Open(const QByteArray& tips) {
        QFile file(QDir(folder.path()).filePath("TIPOFDAY.TXT"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(tips);
        file.close();
        window = new frmTip(game);
        ASSERT_TRUE(window->Form_Load(false));
        window->show();
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    }
    void TearDown() override { delete window; }
    QString Tip() const { return qobject_cast<QLabel*>(window->Control("lblTipText"))->text(); }

    QTemporaryDir folder;
    MemorySettingsStore settings;
    TipGame game{settings, folder.path().toStdString()};
    QPointer<frmTip> window;
};

TEST_F(FrmTipTest, TheWindowIsAsDesignedAndEveryCaptionFits) {
    Open("Une astuce\n");
    EXPECT_EQ(window->windowTitle(), "Astuce du jour");
    EXPECT_EQ(qobject_cast<QCheckBox*>(window->Control("chkLoadTipsAtStartup"))->text(),
              "&Afficher les astuces au démarrage");
    EXPECT_EQ(window->size(), QSize(393, 219));
    EXPECT_FALSE(window->windowFlags() & Qt::WindowMinimizeButtonHint);
    EXPECT_FALSE(window->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_EQ(testing::CoveredControls(window), QStringList{});

    // Tab goes OK, the picture, the next tip, the box; OK has the focus first.
    QStringList order;
    QWidget* widget = window->Control("cmdOK");
    for (int i = 0; i < 4; ++i, widget = widget->nextInFocusChain()) {
        while (widget->focusPolicy() == Qt::NoFocus) widget = widget->nextInFocusChain();
        order << widget->objectName();
    }
    EXPECT_EQ(order, (QStringList{"cmdOK", "Picture1", "cmdNextTip", "chkLoadTipsAtStartup"}));
    EXPECT_TRUE(qobject_cast<QPushButton*>(window->Control("cmdOK"))->isDefault());

    for (const char* name : {"cmdOK", "cmdNextTip", "chkLoadTipsAtStartup", "Label1"}) {
        QWidget* control = window->Control(name);
        EXPECT_LE(control->sizeHint().width(), control->width()) << name;
    }
    // The bulb at its own size in the white picture's corner.
    const auto* bulb = window->findChild<QLabel*>("Bulb");
    ASSERT_NE(bulb, nullptr);
    EXPECT_EQ(bulb->geometry(), QRect(0, 0, 32, 32));
    EXPECT_EQ(bulb->pixmap().deviceIndependentSize(), QSizeF(32, 32));
    EXPECT_EQ(window->Control("Picture1")->palette().color(QPalette::Window), QColor(Qt::white));
}

TEST_F(FrmTipTest, TipsAreShownAsPlainTextWrappedAndStepThroughTheFile) {
    Open(
        "<b>Gras</b> & <i>penché</i>\r\nUne astuce bien trop longue pour une seule ligne du "
        "cadre blanc, qui passe donc à la ligne suivante.\r\n");
    EXPECT_EQ(Tip(), "<b>Gras</b> & <i>penché</i>");
    EXPECT_EQ(qobject_cast<QLabel*>(window->Control("lblTipText"))->textFormat(), Qt::PlainText);
    QTest::mouseClick(window->Control("cmdNextTip"), Qt::LeftButton);
    EXPECT_TRUE(Tip().startsWith("Une astuce bien trop longue"));
    EXPECT_TRUE(qobject_cast<QLabel*>(window->Control("lblTipText"))->wordWrap());
    QTest::mouseClick(window->Control("cmdNextTip"), Qt::LeftButton);
    EXPECT_EQ(Tip(), "<b>Gras</b> & <i>penché</i>");

    // The box writes the setting at once, both ways.
    auto* box = qobject_cast<QCheckBox*>(window->Control("chkLoadTipsAtStartup"));
    EXPECT_TRUE(box->isChecked());
    box->click();
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "0");
    box->click();
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "1");

    // Enter clicks "OK" unless another button has the focus, and closes the window for good.
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

TEST_F(FrmTipTest, WithoutAFileTheWindowSaysHowToMakeOne) {
    window = new frmTip(game);
    ASSERT_TRUE(window->Form_Load(false));
    window->show();
    EXPECT_TRUE(Tip().startsWith(QStringLiteral("Le fichier TIPOFDAY.TXT n'a pas été trouvé? ")));
    EXPECT_TRUE(Tip().endsWith(QStringLiteral("même dossier que l'application.")));
    QTest::keyClick(window, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace mirvalde
