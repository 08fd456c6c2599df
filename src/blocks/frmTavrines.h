#pragma once

#include <QMainWindow>
#include <QTimer>
#include <map>
#include <string>
#include <string_view>

#include "DesignedControl.h"
#include "TavrinesGame.h"

class QAction;
class QActionGroup;
class QLabel;
class QMenu;

namespace mirvalde {

class WellBox;

// The falling-blocks window. It builds its controls from its design, forwards each event to
// the rules and shows what they decided. One object lives from a load of the window to its
// unload; the game itself outlives it.
class frmTavrines : public QMainWindow {
    Q_OBJECT

  public:
    explicit frmTavrines(TavrinesGame& game, QWidget* parent = nullptr);
    ~frmTavrines() override;

    // The controls as designed, the best score read, the window sized and centred; no game.
    void Form_Load();

    QWidget* Control(std::string_view name) const;
    WellBox* Well() const { return picZone_; }
    const QTimer& Timer() const { return tmrCase_; }

  signals:
    // The game is over and its best score settled: the guessing game comes back.
    void gameEnded();
    // "Quitter": the program ends at once.
    void quitRequested();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void CreateMenus();
    void CreateControls();
    void ShowControls();

    void mnuNouveau_Click();
    void mnuQuitter_Click();
    void mnuSpeed_Click(int index);
    void mnuSymboles_Click();
    // The menu's mark and the legend's squares, as the game has the symbols.
    void ShowLegendSymbols();
    void tmrCase_Timer();
    void Form_KeyDown(int keyCode);
    void AskBestName();

    TavrinesGame& game_;
    DesignedControls controls_;
    WellBox* picZone_ = nullptr;
    QMenu* mnuVitesse_ = nullptr;
    QAction* mnuSpeed_[6] = {};
    QAction* mnuSymboles_ = nullptr;
    QTimer tmrCase_;
    int timerInterval_ = 0;
    unsigned timerStarts_ = 0;
};

// The code a key bears for the game (37 to 40 for the arrows, 32 for the space bar, 81 for
// Q), or 0 for a key it does not know.
int VirtualKeyCode(int qtKey);

}  // namespace mirvalde
