#include "frmTip.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

#include "DesignedControl.h"
#include "Pictures.h"
#include "TipDesign.h"
#include "WindowPlacement.h"

namespace mirvalde {
namespace {

constexpr QSize kClientSize = PixelSize(kTipClientWidth, kTipClientHeight);

}  // namespace

frmTip::frmTip(TipGame& tips, QWidget* parent) : UnloadingDialog(parent), tips_(tips) {
    setObjectName(QStringLiteral("frmTip"));
    setWindowTitle(FromUtf8(kTipCaption));
    setWindowIcon(GameIcon());
    // A sizable frame with neither a minimise nor a maximise button.
    setWindowFlags(Qt::Window | kWithoutMinMaxButtons);
    resize(kClientSize);
    // The window's own text, in which every caption fits its designed place.
    setFont(DialogFont());
    controls_.Build(TipDesign(), this);

    // The bulb, drawn at its own size in the picture box's top-left corner.
    auto* bulb = new QLabel(Control("Picture1"));
    bulb->setObjectName(QStringLiteral("Bulb"));
    bulb->setPixmap(
        SvgPixmap(QStringLiteral(":/icons/ampoule.svg"), QSize(32, 32), devicePixelRatioF()));
    bulb->setGeometry(0, 0, 32, 32);
    bulb->setAccessibleName(QStringLiteral("Ampoule"));
    bulb->lower();
    Control("Picture1")->setAccessibleName(QStringLiteral("Astuce"));

    lblTipText_ = qobject_cast<QLabel*>(Control("lblTipText"));
    lblTipText_->setWordWrap(true);
    chkLoadTipsAtStartup_ = qobject_cast<QCheckBox*>(Control("chkLoadTipsAtStartup"));

    auto* ok = qobject_cast<QPushButton*>(Control("cmdOK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &frmTip::cmdOK_Click);
    connect(qobject_cast<QPushButton*>(Control("cmdNextTip")), &QPushButton::clicked, this,
            &frmTip::cmdNextTip_Click);
    connect(chkLoadTipsAtStartup_, &QCheckBox::toggled, this, &frmTip::chkLoadTipsAtStartup_Click);
}

QWidget* frmTip::Control(std::string_view name) const {
    return controls_.Find(name);
}

bool frmTip::Form_Load(bool asked) {
    if (!tips_.Form_Load(asked)) return false;
    ShowControls();
    CentreOnScreen(this);
    return true;
}

void frmTip::showEvent(QShowEvent* event) {
    UnloadingDialog::showEvent(event);
    CentreOnFirstShow(this);
}

void frmTip::ShowControls() {
    const frmTipControls& shown = tips_.Controls();
    lblTipText_->setText(FromUtf8(shown.lblTipText));
    const QSignalBlocker block(chkLoadTipsAtStartup_);
    chkLoadTipsAtStartup_->setChecked(shown.chkLoadTipsAtStartup);
}

void frmTip::cmdOK_Click() {
    close();
}

void frmTip::cmdNextTip_Click() {
    tips_.cmdNextTip_Click();
    ShowControls();
}

void frmTip::chkLoadTipsAtStartup_Click(bool ticked) {
    tips_.chkLoadTipsAtStartup_Click(ticked);
}

}  // namespace mirvalde
