#pragma once

#include <map>
#include <string>
#include <string_view>

#include "DesignedControl.h"
#include "MachineRegistry.h"
#include "Shell.h"
#include "UnloadingDialog.h"

class QLabel;

namespace mirvalde {

// The about window: the title and version, a few words on the game, the system information
// tool and the contact addresses. It keeps nothing between openings.
class frmAbout : public UnloadingDialog {
    Q_OBJECT

  public:
    frmAbout(MachineRegistry& registry, Shell& shell, QWidget* parent = nullptr);

    // The captions filled, the window at its place.
    void Form_Load();

    QWidget* Control(std::string_view name) const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void cmdSysInfo_Click();
    void lblMail_Click();
    void lblUrl_Click();

    MachineRegistry& registry_;
    Shell& shell_;
    DesignedControls controls_;
    QLabel* lblMail_ = nullptr;
    QLabel* lblUrl_ = nullptr;
};

}  // namespace mirvalde
