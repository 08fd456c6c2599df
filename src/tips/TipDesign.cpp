#include "TipDesign.h"

#include <array>

namespace mirvalde {
namespace {

constexpr FontDesign kWindowFont{};
constexpr std::uint32_t kWhite = 0x00FFFFFF;

using enum ControlKind;
using enum TextAlign;
using enum Background;

// One row a control, in the order of the window's design; the two labels stand in Picture1.
// clang-format off
constexpr std::array kControls{
    ControlDesign{"cmdOK", CommandButton, "", "OK", {4080, 120, 1335, 375}, kWindowFont, Center,
                  Default, 0, "", 0},
    ControlDesign{"Picture1", PictureBox, "", "", {120, 120, 3735, 2715}, kWindowFont, Left,
                  Fixed, kWhite, "", 1},
    ControlDesign{"Label1", Label, "Picture1", "Savez-vous...", {540, 180, 2655, 255},
                  kWindowFont, Left, Fixed, kWhite},
    ControlDesign{"lblTipText", Label, "Picture1", "", {180, 840, 3255, 1635}, kWindowFont, Left,
                  Fixed, kWhite},
    ControlDesign{"cmdNextTip", CommandButton, "", "Astuce &suivante", {4080, 600, 1335, 375},
                  kWindowFont, Center, Default, 0, "", 2},
    ControlDesign{"chkLoadTipsAtStartup", CheckBox, "", "&Afficher les astuces au démarrage",
                  {120, 2940, 2895, 315}, kWindowFont, Left, Default, 0, "", 3},
};
// clang-format on

}  // namespace

std::span<const ControlDesign> TipDesign() {
    return kControls;
}

}  // namespace mirvalde
