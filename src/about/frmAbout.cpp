#include "frmAbout.h"

#include <QEvent>
#include <QLabel>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>

#include "AboutDesign.h"
#include "AppInfo.h"
#include "DesignedControl.h"
#include "Pictures.h"
#include "SystemInfo.h"

namespace mirvalde {
namespace {

constexpr QSize kClientSize = PixelSize(kAboutClientWidth, kAboutClientHeight);

QCursor LetterCursor() {
    const QPixmap letter = SvgPixmap(QStringLiteral(":/icons/lettre.svg"), QSize(32, 32), 1.0);
    return QCursor(letter, 2, 6);
}

}  // namespace

frmAbout::frmAbout(MachineRegistry& registry, Shell& shell, QWidget* parent)
    : UnloadingDialog(parent), registry_(registry), shell_(shell) {
    setObjectName(QStringLiteral("frmAbout"));
    // A fixed dialog frame with neither a minimise nor a maximise button.
    setWindowFlags(Qt::Dialog | kWithoutMinMaxButtons);
    setFixedSize(kClientSize);
    setFont(DialogFont());
    controls_.Build(AboutDesign(), this);
    for (auto* label : findChildren<QLabel*>()) label->setWordWrap(true);

    auto* logo = qobject_cast<QLabel*>(Control("Image1"));
    logo->setPixmap(
        SvgPixmap(QStringLiteral(":/icons/logo.svg"), QSize(42, 113), devicePixelRatioF()));
    logo->setAccessibleName(QStringLiteral("Logo de Mirvalde"));
    Control("Line1(0)")->setAccessibleName(QStringLiteral("Séparateur"));
    Control("Line1(1)")->setAccessibleName(QStringLiteral("Séparateur"));

    auto* ok = qobject_cast<QPushButton*>(Control("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmAbout::close);
    connect(qobject_cast<QPushButton*>(Control("cmdSysInfo")), &QPushButton::clicked, this,
            &frmAbout::cmdSysInfo_Click);

    lblUrl_ = qobject_cast<QLabel*>(Control("lblUrl"));
    lblUrl_->setWordWrap(false);
    lblUrl_->setCursor(Qt::WhatsThisCursor);
    lblUrl_->installEventFilter(this);
    lblMail_ = qobject_cast<QLabel*>(Control("lblMail"));
    lblMail_->setWordWrap(false);
    lblMail_->setCursor(LetterCursor());
    lblMail_->installEventFilter(this);
}

QWidget* frmAbout::Control(std::string_view name) const {
    return controls_.Find(name);
}

void frmAbout::Form_Load() {
    setWindowTitle(FromUtf8(AboutCaption()));
    qobject_cast<QLabel*>(Control("lblVersion"))->setText(FromUtf8(VersionLine()));
    qobject_cast<QLabel*>(Control("lblTitle"))->setText(FromUtf8(kAppTitle));
    // Not centred: the client area stands at its designed place on the screen.
    setGeometry(static_cast<int>(kAboutLeft / kTwipsPerPixel),
                static_cast<int>(kAboutTop / kTwipsPerPixel), kClientSize.width(),
                kClientSize.height());
}

void frmAbout::cmdSysInfo_Click() {
    if (StartSysInfo(registry_, shell_)) return;
    QMessageBox box(QMessageBox::NoIcon, FromUtf8(kAppTitle),
                    QStringLiteral("Les informations système ne sont pas disponibles actuellement"),
                    QMessageBox::Ok, this);
    box.exec();
}

void frmAbout::lblMail_Click() {
    const std::string target = MailTarget(lblMail_->text().toStdString());
    // A desktop without a mail program simply does nothing.
    if (!target.empty()) shell_.Open(target);
}

void frmAbout::lblUrl_Click() {
    const std::string target = UrlTarget(lblUrl_->text().toStdString());
    if (!target.empty()) shell_.Open(target);
}

bool frmAbout::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (watched == lblMail_) lblMail_Click();
        if (watched == lblUrl_) lblUrl_Click();
    }
    return UnloadingDialog::eventFilter(watched, event);
}

}  // namespace mirvalde
