#include "Form1Design.h"

#include <array>

namespace mirvalde {
namespace {

constexpr FontDesign kWindowFont{};
constexpr FontDesign Arial(double points) {
    return {"Arial", points, true};
}

using enum ControlKind;
using enum TextAlign;
using enum Background;

// One row a control, in the order of the window's design.
// clang-format off
constexpr std::array kControls{
    ControlDesign{"btEncore", CommandButton, "", "&Encore ?", {120, 240, 1335, 615},
                  Arial(12), Center, Fixed, 0x0080C0FF, "", 17, false},
    ControlDesign{"CmdSolution", CommandButton, "", "&Solution", {120, 2640, 1095, 735},
                  Arial(9.75), Center, Default, 0, "", 15},
    ControlDesign{"Frame4", Frame, "", "Score", {120, 3480, 7335, 975},
                  kWindowFont, Left, Default, 0, "", 7},
    ControlDesign{"Label4", Label, "Frame4", "", {1500, 360, 4335, 345},
                  Arial(9.75), Center, Default, 0, "", 16},
    ControlDesign{"Label3(1)", Label, "Frame4", "0", {6000, 390, 495, 360},
                  Arial(14.25), Right, Default, 0, "", 9},
    ControlDesign{"Label3(0)", Label, "Frame4", "0", {960, 390, 495, 360},
                  Arial(14.25), Left, Default, 0, "", 8},
    ControlDesign{"Image2", Image, "Frame4", "", {6720, 270, 480, 480}, kWindowFont},
    ControlDesign{"Image1", Image, "Frame4", "", {240, 270, 480, 480}, kWindowFont},
    ControlDesign{"Frame1", Frame, "", "Choisis !", {1320, 2400, 7335, 975},
                  kWindowFont, Left, Default, 0, "", 6},
    ControlDesign{"Option1(0)", OptionButton, "Frame1", "de 0 à 100", {120, 240, 1095, 615},
                  kWindowFont, Left, Default, 0, "Choisis la difficulté.", 14},
    ControlDesign{"Option1(1)", OptionButton, "Frame1", "de 0 à 1 000", {1440, 240, 1215, 615},
                  kWindowFont, Left, Default, 0, "Choisis la difficulté.", 13},
    ControlDesign{"Option1(2)", OptionButton, "Frame1", "de 0 à 10 000", {2880, 240, 1335, 615},
                  kWindowFont, Left, Default, 0, "Choisis la difficulté.", 12},
    ControlDesign{"Option1(3)", OptionButton, "Frame1", "de 0 à 1 000 000", {4320, 240, 1575, 615},
                  kWindowFont, Left, Default, 0, "Choisis la difficulté.", 11},
    ControlDesign{"Option1(4)", OptionButton, "Frame1", "< 99.99", {6120, 240, 975, 615},
                  kWindowFont, Left, Default, 0, "Exemple : 52.01", 10},
    ControlDesign{"Btquitter", CommandButton, "", "&Quitter", {7560, 3600, 1215, 855},
                  {"MS Sans Serif", 9.75, true}, Center, Default, 0, "", 5},
    ControlDesign{"Boxsaisie", TextBox, "", "", {120, 960, 2655, 555},
                  Arial(20.25), Center, Fixed, 0x00FFFFC0, "Ecris ton nombre ici", 0},
    ControlDesign{"Btgo", CommandButton, "", "&Go!", {120, 1800, 1095, 735},
                  Arial(18), Center, Menu, 0, "", 1},
    ControlDesign{"Coup", Label, "", "Nombre total de coups joués", {1440, 1800, 7215, 555},
                  Arial(18), Center, ScrollBar, 0, "", 4},
    ControlDesign{"Resultat", Label, "", "Comparaison", {2880, 960, 5775, 555},
                  Arial(18), Center, Menu, 0, "", 3},
    ControlDesign{"Regle", Label, "", "Quel est le Mirvalde ?", {1223, 240, 6375, 555},
                  Arial(18), Center, Menu, 0, "", 2},
};
// clang-format on

}  // namespace

std::span<const ControlDesign> Form1Design() {
    return kControls;
}

std::string_view Form1Caption(std::string_view name) {
    return CaptionIn(kControls, name);
}

}  // namespace mirvalde
