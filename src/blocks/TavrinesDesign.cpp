#include "TavrinesDesign.h"

#include <array>

namespace mirvalde {
namespace {

constexpr FontDesign Arial(double points, bool bold = true) {
    return {"Arial", points, bold};
}
constexpr FontDesign kCounterFont{"MS Sans Serif", 8.25, true};
constexpr FontDesign kScoreFont{"Courier New", 9.75, false};
constexpr FontDesign kNoFont{};

using enum ControlKind;
using enum TextAlign;
using enum Background;
using enum ShapeStyle;

constexpr ControlDesign Carre(std::string_view name, double left, double top,
                              std::uint32_t colour) {
    return {name, Shape, "", "", {left, top, 240, 240}, kNoFont, Left, Fixed, colour};
}
constexpr ControlDesign Compteur(std::string_view name, double left, double top) {
    return {name, Label, "", "0", {left, top, 465, 240}, kCounterFont, Right};
}

// One row a control, in the order of the window's design.
// clang-format off
constexpr std::array kControls{
    ControlDesign{"picZone", PictureBox, "", "", {150, 150, 1480, 4365}, kNoFont, Left, Menu},
    ControlDesign{"lblVitesse", Label, "", "Vitesse : 3", {1725, 150, 1785, 270}, Arial(9), Center},
    Carre("shpCarre(0)", 1725, 750, 0x000000FF),
    Compteur("lblStatCouleur(0)", 2025, 750),
    Carre("shpCarre(1)", 1725, 1200, 0x00000000),
    Compteur("lblStatCouleur(1)", 2025, 1200),
    Carre("shpCarre(2)", 1725, 1650, 0x0000FF00),
    Compteur("lblStatCouleur(2)", 2025, 1650),
    Carre("shpCarre(3)", 2625, 750, 0x00FF0000),
    Compteur("lblStatCouleur(3)", 2925, 750),
    Carre("shpCarre(4)", 2625, 1200, 0x0000FFFF),
    Compteur("lblStatCouleur(4)", 2925, 1200),
    Carre("shpCarre(5)", 2625, 1650, 0x00FF00FF),
    Compteur("lblStatCouleur(5)", 2925, 1650),
    ControlDesign{"Shape2", Shape, "", "", {1725, 2025, 1815, 2340}, kNoFont, Left, Default, 0,
                  "", -1, true, false, RoundedRectangle},
    ControlDesign{"lbl(0)", Label, "", "Carrés :", {1800, 2175, 765, 240}, Arial(9)},
    ControlDesign{"lblCarres", Label, "", "0", {2625, 2175, 765, 240}, Arial(9.75), Right},
    ControlDesign{"lbl(1)", Label, "", "Blocs :", {1800, 2550, 690, 240}, Arial(9)},
    ControlDesign{"lblBlocs", Label, "", "0", {2625, 2550, 765, 240}, Arial(9.75), Right},
    ControlDesign{"shpSeparation(1)", Shape, "", "", {1725, 2850, 1815, 45}},
    // "SCORE :" and "MEILLEUR SCORE :" are a little wider than designed, so that they show
    // whole in the fonts the game installs; the second ends at the rounded frame.
    ControlDesign{"lbl(2)", Label, "", "SCORE :", {1800, 3000, 765, 240}, Arial(9)},
    ControlDesign{"lblScore", Label, "", "0", {3270, 3000, 120, 240}, kScoreFont, Right, Default,
                  0, "", -1, true, true},
    ControlDesign{"shpSeparation(0)", Shape, "", "", {1725, 3375, 1815, 45}},
    ControlDesign{"lbl(3)", Label, "", "MEILLEUR SCORE :", {1800, 3450, 1725, 225}, Arial(9)},
    ControlDesign{"lblNom", Label, "", "", {1800, 3750, 1620, 225}, Arial(9, false), Center,
                  Default, 0, "", -1, true, true},
    ControlDesign{"lblMeilleur", Label, "", "0", {3075, 4050, 120, 240}, kScoreFont, Right,
                  Default, 0, "", -1, true, true},
};
// clang-format on

}  // namespace

std::span<const ControlDesign> TavrinesDesign() {
    return kControls;
}

std::string_view TavrinesCaption(std::string_view name) {
    return CaptionIn(kControls, name);
}

std::string StatCouleurName(int index) {
    return "lblStatCouleur(" + std::to_string(index) + ")";
}

std::string CarreName(int index) {
    return "shpCarre(" + std::to_string(index) + ")";
}

}  // namespace mirvalde
