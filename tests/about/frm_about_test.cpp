#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "Fakes.h"
#include "RegistryFile.h"
#include "frmAbout.h"

namespace mirvalde {
namespace {

// The about window as the player meets it: its place, its version, its addresses (the web one
// underlined), its system information button with no tool to start.
TEST(FrmAboutTest, StandsAtItsPlaceOpensItsAddressesAndSaysWhenNoToolIsThere) {
    RegistryFile nothing = RegistryFile::FromText("");
    testing::RecordingShell shell;
    frmAbout about(nothing, shell);
    about.Form_Load();
    about.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&about));
    EXPECT_EQ(about.windowTitle(), "À propos de Mirvalde");
    EXPECT_EQ(about.geometry(), QRect(156, 129, 382, 319));
    EXPECT_EQ(qobject_cast<QLabel*>(about.Control("lblVersion"))->text(), "Version 5.0.0");

    auto* url = qobject_cast<QLabel*>(about.Control("lblUrl"));
    auto* mail = qobject_cast<QLabel*>(about.Control("lblMail"));
    EXPECT_TRUE(url->font().underline() && !mail->font().underline());
    QTest::mouseClick(url, Qt::LeftButton);
    QTest::mouseClick(mail, Qt::LeftButton);
    EXPECT_EQ(shell.opened, (std::vector<std::string>{"http://" + url->text().toStdString(),
                                                      "MailTo:" + mail->text().toStdString()}));

    QString said;
    QTimer::singleShot(0, [&said] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        said = box->windowTitle() + u'|' + box->text();
        box->accept();
    });
    qobject_cast<QPushButton*>(about.Control("cmdSysInfo"))->click();
    EXPECT_EQ(said, "Mirvalde|Les informations système ne sont pas disponibles actuellement");
}

}  // namespace
}  // namespace mirvalde
