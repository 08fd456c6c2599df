#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "Clock.h"
#include "Random.h"
#include "Sound.h"

namespace mirvalde {

// One difficulty level: the bounds of the draw, both included.
struct Level {
    std::int64_t low;
    std::int64_t high;
    bool twoDecimals;
};

// Level 4 draws a whole number from 1 to 99 and then adds the decimals.
inline constexpr std::array<Level, 5> kLevels{{
    {1, 100, false},
    {100, 1000, false},
    {1000, 10000, false},
    {100000, 1000000, false},
    {1, 99, true},
}};

// The main window's variables: they keep their values for the whole run, also while the
// window is unloaded.
struct Form1Module {
    double Nombre = 0;
    std::int16_t Niveau = 0;
    std::int16_t NbCoups = 0;
    std::int32_t NbTrouves = 0;
    std::int32_t NbRates = 0;
};

// What the main window's controls show. Rebuilt from the window's design at every load.
struct Form1Controls {
    std::string Boxsaisie;
    std::string Resultat;
    bool ResultatVisible = true;
    std::string Coup;
    std::array<std::string, 2> Label3;
    std::string Label4;
    int Option1 = 0;  // the selected level
    bool BtgoEnabled = true;
    bool CmdSolutionEnabled = true;
    bool btEncoreVisible = false;
};

// What became of a click on "Go!".
enum class Proposal { Empty, NotANumber, TooSmall, TooBig, Found };

struct SoundFiles {
    std::string found;   // a number found
    std::string missed;  // a wrong proposal, or a round given up
};

// The guessing round: the draw, the judgement of each proposal, the counters and the
// captions they show. The window forwards its events here and shows the result.
class GuessGame {
  public:
    GuessGame(Random& random, const Clock& clock, Sound& sound, SoundFiles sounds, char separator);

    const Form1Module& Module() const { return module_; }
    const Form1Controls& Controls() const { return controls_; }

    // The controls as designed, the answer hidden, and a first number at level 0.
    void Form_Load();

    // The player selects the option of a level: a new number at that level.
    void ChooseLevel(int index);
    // Draws a new number if the option `index` is the selected one.
    void Option1_Click(int index);

    Proposal Btgo_Click();
    void CmdSolution_Click();
    void btEncore_Click();

    void Boxsaisie_Change(std::string text);
    // The character the box receives for a typed one, or 0 to refuse it. `kept` is the text
    // that stays in the box around the insertion (the selection, which a key replaces, left
    // out).
    char16_t Boxsaisie_KeyPress(char16_t key, std::string_view kept) const;

    // "  52 est trop petit." and its kin, for a proposal's text.
    std::string GetPhraseResultat(std::string_view text) const;

    // The tenth number found hands over to the falling-blocks game, which starts the count
    // again from zero.
    bool HandOverDue() const { return module_.NbTrouves == 10; }
    void HandOver();

  private:
    void ShowCounters();

    Random& random_;
    const Clock& clock_;
    Sound& sound_;
    SoundFiles sounds_;
    char separator_;
    Form1Module module_;
    Form1Controls controls_;
};

}  // namespace mirvalde
