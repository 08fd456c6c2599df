#pragma once

#include <QDialog>
#include <map>
#include <string>
#include <string_view>

#include "TipGame.h"

class QCheckBox;
class QLabel;

namespace mirvalde {

// The tip-of-the-day window. It builds its controls from its design, forwards each event to
// the rules and shows what they decided. One object lives from a load of the window to its
// unload; the tips and the position in them outlive it.
class frmTip : public QDialog {
    Q_OBJECT

  public:
    explicit frmTip(TipGame& tips, QWidget* parent = nullptr);

    // False when the window must not be shown: the tips are off at start-up and the player did
    // not ask for them.
    bool Form_Load(bool asked);

    QWidget* Control(std::string_view name) const;

    // Escape and Enter end the dialog as "OK" does: the window is unloaded, not only hidden.
    void done(int result) override;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void ShowControls();
    void cmdOK_Click();
    void cmdNextTip_Click();
    void chkLoadTipsAtStartup_Click(bool ticked);

    TipGame& tips_;
    std::map<std::string, QWidget*, std::less<>> controls_;
    QLabel* lblTipText_ = nullptr;
    QCheckBox* chkLoadTipsAtStartup_ = nullptr;
    bool centredWithFrame_ = false;
};

}  // namespace mirvalde
