#pragma once

#include <cstdint>
#include <string>

#include "SettingsStore.h"
#include "TipsFile.h"

namespace mirvalde {

// The text shown when there is no tips file.
extern const char* const kMissingTipsText;

// The tip window's variables: they keep their values for the whole run, so that a second
// opening goes on where the first one stopped.
struct frmTipModule {
    TipsFile TipList;
    std::int32_t TipIndex = 0;  // from 1
};

// What the tip window's controls show. Rebuilt at every load.
struct frmTipControls {
    std::string lblTipText;
    bool chkLoadTipsAtStartup = false;
};

// The tips: the start-up setting, the file and the order in which its lines are shown.
class TipGame {
  public:
    // `tipsFolder` is the folder of the executable, which holds TIPOFDAY.TXT.
    TipGame(SettingsStore& settings, std::string tipsFolder);

    const frmTipModule& Module() const { return module_; }
    const frmTipControls& Controls() const { return controls_; }

    // Whether the tips open at start-up: the stored setting is not 0.
    bool ShowAtStartup() const;

    // False when the window must close at once: the setting is 0 and the player did not ask
    // for the tips. Asked for through the menu, the tips show with the box unticked and the
    // setting left as the player chose it.
    bool Form_Load(bool asked);
    bool LoadTips(const std::string& sFile);
    void DisplayCurrentTip();
    void cmdNextTip_Click() { SelectNextTip(); }
    // Writes the box's value to the setting, at every change by the player or by the game.
    void chkLoadTipsAtStartup_Click(bool ticked);

  private:
    void SelectNextTip();

    SettingsStore& settings_;
    std::string tipsPath_;
    frmTipModule module_;
    frmTipControls controls_;
};

}  // namespace mirvalde
