#pragma once

#include <QMainWindow>
#include <map>

#include "DesignedControl.h"
#include "GuessGame.h"
#include "ProportionalLayout.h"

class QButtonGroup;
class QInputMethodEvent;
class QLabel;
class QLineEdit;
class QPushButton;

namespace mirvalde {

// The main window: the guessing game. It builds its controls from its design, forwards each
// event to the rules and shows what they decided. One Form1 object lives from a load of the
// window to its unload; the game itself outlives it.
class Form1 : public QMainWindow {
    Q_OBJECT

  public:
    explicit Form1(GuessGame& game, QWidget* parent = nullptr);

    // The controls as designed, a first number drawn, the window sized and centred.
    void Form_Load();

    QWidget* Control(std::string_view name) const;

    // The tenth number found: the counters start again from zero before the window unloads.
    void HandOver();

  signals:
    void tenthNumberFound();
    void tipsRequested();
    void aboutRequested();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

  private:
    void CreateMenus();
    void CreateControls();

    void Option1_Click(int index);
    void Btgo_Click();
    void CmdSolution_Click();
    void btEncore_Click();
    void Btquitter_Click();
    void Quitter_Click();
    void Boxsaisie_Change();
    bool Boxsaisie_KeyPress(QKeyEvent* event);
    void Boxsaisie_InputMethod(QInputMethodEvent* event);
    QString Boxsaisie_Admitted(const QString& typed, int replaceFrom = 0,
                               int replaceLength = 0) const;
    void Form_Resize();

    void ShowControls();
    void ApplyPlaces();
    void GiveFocusToBox();
    QSize OuterSize() const;

    GuessGame& game_;
    ProportionalLayout layout_;
    DesignedControls controls_;
    QWidget* client_ = nullptr;
    QLineEdit* Boxsaisie_ = nullptr;
    QPushButton* Btgo_ = nullptr;
    QPushButton* CmdSolution_ = nullptr;
    QPushButton* btEncore_ = nullptr;
    QPushButton* Btquitter_ = nullptr;
    QLabel* Resultat_ = nullptr;
    QLabel* Coup_ = nullptr;
    QLabel* Label4_ = nullptr;
    QLabel* Label3_[2] = {nullptr, nullptr};
    QButtonGroup* Option1_ = nullptr;
    QSize designSize_;
    int sizesUndone_ = 0;
};

}  // namespace mirvalde
