#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "Clock.h"
#include "Random.h"
#include "SettingsStore.h"

namespace mirvalde {

// A colour as 0x00BBGGRR.
using Couleur = std::int32_t;

// White is the only mark of an empty cell.
inline constexpr Couleur COULEUR_VIDE = 0x00FFFFFF;
// The colours of the trios by their code 1..6: red, black, green, blue, yellow, magenta.
inline constexpr std::array<Couleur, 6> kCouleurs{0x000000FF, 0x00000000, 0x0000FF00,
                                                  0x00FF0000, 0x0000FFFF, 0x00FF00FF};
// Removed squares flash in this colour before they go.
inline constexpr Couleur kCouleurClignote = 0x00FFFF00;

inline constexpr int kColonnes = 6;
inline constexpr int kLignes = 18;
// A cell of the well in twips, and the well itself.
inline constexpr int kCellTwips = 240;
inline constexpr int kWellWidthTwips = kColonnes * kCellTwips;
inline constexpr int kWellHeightTwips = kLignes * kCellTwips;

// Virtual-key codes of the keys the game answers.
enum KeyCode : int {
    kKeySpace = 32,
    kKeyLeft = 37,
    kKeyUp = 38,
    kKeyRight = 39,
    kKeyDown = 40,
    kKeyQ = 81,
    // The game's own additions: P and the keyboard's Pause key pause and resume.
    kKeyPause = 19,
    kKeyP = 80,
};

// The well's picture, kept by the window: boxes are filled on a persistent image that the
// screen shows when it repaints or is refreshed.
class WellPicture {
  public:
    virtual ~WellPicture() = default;
    // A box from (x1, y1) to (x2, y2), in twips from the well's top-left corner, filled and
    // outlined in one colour.
    virtual void FillBox(int x1, int y1, int x2, int y2, Couleur couleur) = 0;
    // Shows the picture and the labels on screen now, without returning to the event loop.
    virtual void Refresh() = 0;
    // A paused game hides its squares: the picture shows a pause notice instead, until
    // it is told to show the squares again.
    virtual void ShowPaused(bool /*paused*/) {}
    // Boxes filled from now on carry their colour's symbol, or none.
    virtual void ShowSymbols(bool /*symbols*/) {}
};

// The window's variables: they keep their values for the whole run, also while the window is
// unloaded. Indices are those of the game: columns 1..6 and rows 1..18 of `Grille` are the
// well, column 0 and row 0 are never written and so never empty.
struct TavrinesModule {
    std::array<std::array<Couleur, kLignes + 1>, kColonnes + 1> Grille{};
    std::array<std::array<std::int32_t, kLignes + 1>, kColonnes + 1> Marque{};
    // Bottom, middle and top square of the trio; the fourth is white, painted above it.
    std::array<Couleur, 5> Bloc{};
    std::int32_t XPos = 0;
    std::int32_t YPos = 0;
    bool EnBas = false;
    bool Perdu = false;
    std::array<std::int32_t, kColonnes + 1> StatCouleur{};
    std::int32_t Blocs = 0;
    std::int32_t Score = 0;
    std::int32_t Carres = 0;
    std::string Vitesse;
    std::int32_t Intervalle = 0;
    std::string NomMeilleur;
    std::int32_t Meilleur = 0;
};

// What the window's controls show. Rebuilt from the window's design at every load.
struct TavrinesControls {
    std::array<std::string, 6> lblStatCouleur;
    std::string lblCarres;
    std::string lblBlocs;
    std::string lblScore;
    std::string lblNom;
    std::string lblMeilleur;
    std::string lblVitesse;
    int tmrCaseInterval = 0;  // 0: the timer never ticks
    bool tmrCaseEnabled = true;
    // Grows each time the timer is switched on: it then counts a whole period afresh.
    unsigned tmrCaseStarts = 0;
    bool mnuVitesseEnabled = true;
    int mnuSpeedChecked = 3;
    // Symbols on the colours, in the well and on the legend's squares.
    bool mnuSymbolesChecked = false;
};

// Number text of the game's labels: the digits after the place of the sign.
std::string NumberText(std::int32_t value);

// The falling-blocks game: the well, the falling trio, the keys, the line search, the timer's
// step and the best score. The window forwards its events here and shows the result.
class TavrinesGame {
  public:
    TavrinesGame(Random& random, const Clock& clock, SettingsStore& settings);

    const TavrinesModule& Module() const { return module_; }
    const TavrinesControls& Controls() const { return controls_; }

    // The window that paints the well; null while none is loaded.
    void SetPicture(WellPicture* picture) { picture_ = picture; }

    // The controls as designed, the speed back to normal, the best score read from the settings.
    void Form_Load();
    void mnuNouveau_Click();
    void Form_KeyDown(int keyCode);
    void tmrCase_Timer();
    void mnuSpeed_Click(int index);
    // Symbols on the colours, on or off, kept for the next runs and shown at once.
    void mnuSymboles_Click();
    // The window was minimised or hidden: a game under way pauses until P.
    void PauseByItself();
    bool EnPause() const { return enPause_; }

    // A game is over: the window settles the best score and hands back to the guessing game.
    bool PartieFinie() const { return partieFinie_; }
    // The score beats the best: the window asks the player's name and passes the answer on.
    bool NomDemande() const { return nomDemande_; }
    // Stores the new best under the player's name (trimmed, "Anonyme" when empty). False
    // when the settings could not be written.
    bool NommeMeilleur(std::string_view reponse);

    // The moves, also for the tests.
    void Gauche();
    void Droite();
    void Rotation();
    void Descend();
    void Descente();
    bool TestEnBas() const;
    bool TestPerdu() const;
    // Waits a little over 20 ms without handling any event.
    void Attendre() const;
    void ChercheSol();

    // The well told in words for a screen reader: the falling trio's colours from top to
    // bottom, its column, and the score.
    std::string DescriptionPuits() const;

    // For the tests: a well laid out by hand.
    TavrinesModule& ModuleForTest() { return module_; }

  private:
    void GenBloc();
    void GenXPos();
    void DessineBloc();
    void DessineBlanc();
    void FinDePartie();
    void PaintCell(int colonne, int ligne, Couleur couleur);
    void SetTimerEnabled(bool enabled);
    bool MarqueLignes();
    bool PartieEnCours() const;
    void SetPause(bool pause);
    int DrawUpTo(int n);

    Random& random_;
    const Clock& clock_;
    SettingsStore& settings_;
    WellPicture* picture_ = nullptr;
    TavrinesModule module_;
    TavrinesControls controls_;
    bool partieFinie_ = false;
    bool nomDemande_ = false;
    bool enPause_ = false;
};

}  // namespace mirvalde
