#include "GuessGame.h"

#include <limits>

#include "Form1Design.h"
#include "NumberFormat.h"

namespace mirvalde {
namespace {

std::string CoupCaption(std::int64_t count) {
    return "Nombre de coups joués : " + Digits(count);
}

}  // namespace

GuessGame::GuessGame(Random& random, const Clock& clock, Sound& sound, SoundFiles sounds,
                     char separator)
    : random_(random),
      clock_(clock),
      sound_(sound),
      sounds_(std::move(sounds)),
      separator_(separator) {}

void GuessGame::Form_Load() {
    controls_ = Form1Controls{};
    controls_.Resultat = Form1Caption("Resultat");
    controls_.Coup = Form1Caption("Coup");
    controls_.Label3 = {std::string(Form1Caption("Label3(0)")),
                        std::string(Form1Caption("Label3(1)"))};
    controls_.Label4 = Form1Caption("Label4");
    controls_.ResultatVisible = false;
    Option1_Click(0);
}

void GuessGame::ChooseLevel(int index) {
    if (index < 0 || index >= static_cast<int>(kLevels.size())) return;
    controls_.Option1 = index;
    Option1_Click(index);
}

void GuessGame::Option1_Click(int index) {
    controls_.CmdSolutionEnabled = false;
    if (controls_.Option1 != index) return;
    module_.Niveau = static_cast<std::int16_t>(index);
    const Level& level = kLevels[static_cast<std::size_t>(index)];

    random_.Seed(clock_.SecondsSinceMidnight());
    double number = static_cast<double>(DrawWhole(level.low, level.high, random_.Next()));
    if (level.twoDecimals) {
        // Through the text, so that the number is exactly what the player will type.
        const double withDecimals = number + static_cast<double>(random_.Next());
        number = ReadNumber(Format(withDecimals, "0.00", separator_), separator_).value_or(number);
    }
    module_.Nombre = number;
}

Proposal GuessGame::Btgo_Click() {
    // The count stops at its ceiling rather than wrap to a negative number.
    if (module_.NbCoups < std::numeric_limits<std::int16_t>::max()) ++module_.NbCoups;

    Proposal result = Proposal::Empty;
    if (!controls_.Boxsaisie.empty()) {
        const auto value = ReadNumber(controls_.Boxsaisie, separator_);
        if (!value) {
            result = Proposal::NotANumber;
        } else if (*value == module_.Nombre) {
            result = Proposal::Found;
            controls_.Resultat = GetPhraseResultat(controls_.Boxsaisie);
            ++module_.NbTrouves;
            sound_.Play(sounds_.found);
            const double average = static_cast<double>(module_.NbTrouves + module_.NbRates) /
                                   static_cast<double>(module_.NbTrouves);
            controls_.Label4 =
                "Tu trouves en " + Format(average, "0", separator_) + " fois, en moyenne.";
            Option1_Click(module_.Niveau);
            controls_.btEncoreVisible = true;
            controls_.BtgoEnabled = false;
        } else {
            result = *value < module_.Nombre ? Proposal::TooSmall : Proposal::TooBig;
            controls_.Resultat = GetPhraseResultat(controls_.Boxsaisie);
            sound_.Play(sounds_.missed);
            ++module_.NbRates;
        }
        controls_.Boxsaisie.clear();
    }
    controls_.Coup = CoupCaption(module_.NbCoups);
    ShowCounters();
    controls_.ResultatVisible = true;
    return result;
}

void GuessGame::CmdSolution_Click() {
    ++module_.NbRates;
    sound_.Play(sounds_.missed);
    controls_.Boxsaisie.clear();
    controls_.Resultat = GetPhraseResultat(ShortestText(module_.Nombre, separator_));
    controls_.Coup = CoupCaption(static_cast<std::int64_t>(module_.NbTrouves) + module_.NbRates);
    ShowCounters();
    Option1_Click(module_.Niveau);
}

void GuessGame::btEncore_Click() {
    controls_.btEncoreVisible = false;
    controls_.Coup = CoupCaption(0);
    controls_.Resultat.clear();
    controls_.BtgoEnabled = true;
    module_.NbCoups = 0;
    Option1_Click(module_.Niveau);
}

void GuessGame::Boxsaisie_Change(std::string text) {
    controls_.Boxsaisie = std::move(text);
    if (!controls_.Boxsaisie.empty()) controls_.CmdSolutionEnabled = true;
}

char16_t GuessGame::Boxsaisie_KeyPress(char16_t key, std::string_view kept) const {
    constexpr char16_t kBackspace = 8;
    if (key == kBackspace) return key;
    if (key > 0x7f ||
        std::string_view("0123456789,.").find(static_cast<char>(key)) == std::string_view::npos) {
        return 0;
    }
    // Either separator the player types becomes the one of the player's notation.
    const bool pointNotation = separator_ == '.';
    if (key == u',' && pointNotation) key = u'.';
    if (key == u'.' && !pointNotation) key = u',';
    // A second separator would make the proposal unreadable.
    if (key == static_cast<char16_t>(separator_) &&
        kept.find(separator_) != std::string_view::npos) {
        return 0;
    }
    return key;
}

std::string GuessGame::GetPhraseResultat(std::string_view text) const {
    const auto value = ReadNumber(text, separator_);
    if (!value) return {};
    std::string shown =
        Format(*value, module_.Niveau == 4 ? "### ### ##0.##" : "### ### ##0", separator_);
    if (!shown.empty() && shown.back() == '.') shown.pop_back();
    if (!shown.empty() && shown.back() == ',') shown.pop_back();
    if (*value == module_.Nombre) return shown + " est la bonne réponse.";
    return shown + (*value < module_.Nombre ? " est trop petit." : " est trop grand.");
}

void GuessGame::HandOver() {
    module_.NbTrouves = 0;
    module_.NbRates = 0;
    module_.NbCoups = 0;
    controls_.Coup = CoupCaption(0);
}

void GuessGame::ShowCounters() {
    controls_.Label3[0] = Digits(module_.NbTrouves);
    controls_.Label3[1] = Digits(module_.NbRates);
}

}  // namespace mirvalde
