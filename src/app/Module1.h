#pragma once

#include <QObject>
#include <QPointer>

#include "Clock.h"
#include "Form1.h"
#include "GuessGame.h"
#ifdef _WIN32
#include "WinmmSound.h"
#else
#include "ModuleSound.h"
#endif
#include "QtSettingsStore.h"
#include "Random.h"
#include "Shell.h"
#include "SingleInstance.h"
#include "TavrinesGame.h"
#include "TipGame.h"
#include "frmAbout.h"
#include "frmTavrines.h"
#include "frmTip.h"

namespace mirvalde {

// The composition root: the services, the rules of every window for the whole run, and the
// windows themselves from their load to their unload. The program ends when the last loaded
// window is unloaded, or at once when the falling-blocks game quits.
class Module1 : public QObject {
    Q_OBJECT

  public:
    Module1();
    ~Module1() override;

    // Loads and shows the main window. False when another copy of the program runs: the
    // program then ends silently.
    bool Main();

    Form1* MainWindow() const { return form1_; }
    frmTavrines* BlocksWindow() const { return frmTavrines_; }
    frmTip* TipWindow() const { return frmTip_; }
    frmAbout* AboutWindow() const { return frmAbout_; }
    const GuessGame& Guess() const { return game_; }

  signals:
    void programEnded();

  private:
    void LoadForm1();
    void LoadTavrines();
    // Loads the tip window; null when it closed at once (the tips are off at start-up).
    frmTip* LoadTip(bool asked);
    void BtMenu_Click();
    void propos_Click();
    void HandOverToTavrines();
    void BackFromTavrines();
    void Track(QWidget* window);

    MersenneRandom random_;
    SystemClock clock_;
#ifdef _WIN32
    WinmmSound sound_;
#else
    ModuleSound sound_;
#endif
    SingleInstance instance_;
    QtSettingsStore settings_;
    DesktopShell shell_;
    GuessGame game_;
    TavrinesGame tavrines_;
    TipGame tips_;
    QPointer<Form1> form1_;
    QPointer<frmTavrines> frmTavrines_;
    QPointer<frmTip> frmTip_;
    QPointer<frmAbout> frmAbout_;
    int loadedWindows_ = 0;
};

}  // namespace mirvalde
