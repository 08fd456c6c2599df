#include <gtest/gtest.h>

#include <fstream>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include "QtPrinters.h"
#include "SettingsStore.h"
#include "Stacking.h"
#include "frmTip.h"

namespace mirvalde {
namespace {

// The tip window as the player meets it, its tips file written by the test.
TEST(FrmTipTest, TheWindowIsAsDesignedAndShowsItsTipsAsPlainTextWrapped) {
    QTemporaryDir folder;
    std::ofstream(folder.filePath("TIPOFDAY.TXT").toStdString(), std::ios::binary)
        << "<b>Gras</b> & <i>penché</i>\r\nUne astuce bien trop longue pour une seule ligne du "
           "cadre blanc, qui passe donc à la ligne suivante.\r\n";
    MemorySettingsStore settings;
    TipGame game{settings, folder.path().toStdString()};
    QPointer<frmTip> window = new frmTip(game);
    ASSERT_TRUE(window->Form_Load(false));
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window));
    EXPECT_EQ(window->windowTitle(), "Astuce du jour");
    auto* box = qobject_cast<QCheckBox*>(window->Control("chkLoadTipsAtStartup"));
    EXPECT_EQ(box->text(), "&Afficher les astuces au démarrage");
    EXPECT_EQ(window->size(), QSize(393, 219));
    EXPECT_FALSE(window->windowFlags() &
                 (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    EXPECT_EQ(testing::CoveredControls(window), QStringList{});

    // OK has the focus first; Tab goes on to the picture, the next tip, the box.
    QStringList order;
    for (int i = 0; i < 4; ++i, QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab))
        order << QApplication::focusWidget()->objectName();
    EXPECT_EQ(order, (QStringList{"cmdOK", "Picture1", "cmdNextTip", "chkLoadTipsAtStartup"}));

    for (const char* name : {"cmdOK", "cmdNextTip", "chkLoadTipsAtStartup", "Label1"})
        EXPECT_LE(window->Control(name)->sizeHint().width(), window->Control(name)->width())
            << name;
    // The bulb at its own size in the white picture's corner.
    const auto* bulb = window->findChild<QLabel*>("Bulb");
    ASSERT_TRUE(bulb && bulb->geometry() == QRect(0, 0, 32, 32));
    EXPECT_EQ(bulb->pixmap().deviceIndependentSize(), QSizeF(32, 32));
    EXPECT_EQ(window->Control("Picture1")->palette().color(QPalette::Window), QColor(Qt::white));

    auto* tip = qobject_cast<QLabel*>(window->Control("lblTipText"));
    EXPECT_EQ(tip->text(), "<b>Gras</b> & <i>penché</i>");
    EXPECT_TRUE(tip->textFormat() == Qt::PlainText && tip->wordWrap());
    QTest::mouseClick(window->Control("cmdNextTip"), Qt::LeftButton);
    EXPECT_TRUE(tip->text().startsWith("Une astuce bien trop longue"));
    QTest::mouseClick(window->Control("cmdNextTip"), Qt::LeftButton);
    EXPECT_EQ(tip->text(), "<b>Gras</b> & <i>penché</i>");

    box->click();  // the box writes the setting at once
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "0");
    box->click();
    EXPECT_EQ(settings.Read("Options", "Show Tips at Startup", ""), "1");
    // Enter clicks "OK" unless another button has the focus, and closes the window for good.
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace mirvalde
