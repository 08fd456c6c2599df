#pragma once

#include <map>
#include <string>
#include <string_view>

#include "DesignedControl.h"
#include "TipGame.h"
#include "UnloadingDialog.h"

class QCheckBox;
class QLabel;

namespace mirvalde {

// The tip-of-the-day window. It builds its controls from its design, forwards each event to
// the rules and shows what they decided. One object lives from a load of the window to its
// unload; the tips and the position in them outlive it.
class frmTip : public UnloadingDialog {
    Q_OBJECT

  public:
    explicit frmTip(TipGame& tips, QWidget* parent = nullptr);

    // False when the window must not be shown: the tips are off at start-up and the player did
    // not ask for them.
    bool Form_Load(bool asked);

    QWidget* Control(std::string_view name) const;

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void ShowControls();
    void cmdOK_Click();
    void cmdNextTip_Click();
    void chkLoadTipsAtStartup_Click(bool ticked);

    TipGame& tips_;
    DesignedControls controls_;
    QLabel* lblTipText_ = nullptr;
    QCheckBox* chkLoadTipsAtStartup_ = nullptr;
};

}  // namespace mirvalde
