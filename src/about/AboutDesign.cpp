#include "AboutDesign.h"

#include <array>

namespace mirvalde {
namespace {

using enum ControlKind;
using enum TextAlign;
using enum Background;

constexpr FontDesign kWindowFont{};
constexpr std::uint32_t kBlack = 0x00000000;
constexpr std::uint32_t kBlue = 0x00FF0000;
constexpr std::uint32_t kPurple = 0x00C000C0;

// One row a control, in the order of the window's design. The grey line is drawn over the
// white one, a pixel above its lower half: together they make an etched separator.
constexpr std::array kControls{
    ControlDesign{.name = "Image1", .kind = Image, .place = {240, 360, 630, 1695}},
    ControlDesign{.name = "lblTitle",
                  .kind = Label,
                  .place = {1050, 240, 3885, 480},
                  .font = {"Arial", 18, true},
                  .foreground = kBlack},
    ControlDesign{.name = "lblVersion",
                  .kind = Label,
                  .place = {1050, 780, 3885, 225},
                  .font = {"Arial", 9, true}},
    ControlDesign{.name = "lblDescription",
                  .kind = Label,
                  .caption = "Tu dois deviner le nombre que l'ordinateur a choisi. Sélectionne la "
                             "difficulté. Au bout de dix nombres trouvés, tu pourras jouer avec "
                             "le jeu \"Tavrine\".",
                  .place = {1050, 1125, 3885, 690},
                  .font = kWindowFont,
                  .foreground = kBlack},
    ControlDesign{.name = "Label3",
                  .kind = Label,
                  .caption = "Merci à l'auteur inconnu du code source du jeu \"Tavrine\" ;0)  ",
                  .place = {1080, 1800, 4455, 255},
                  .font = kWindowFont,
                  .align = Center},
    ControlDesign{.name = "Line1(0)",
                  .kind = Line,
                  .place = {105, 2160, 5549, 30},
                  .background = Fixed,
                  .colour = 0x00FFFFFF},
    ControlDesign{.name = "Line1(1)",
                  .kind = Line,
                  .place = {90, 2160, 5564, 15},
                  .background = Fixed,
                  .colour = 0x00808080},
    ControlDesign{.name = "Label1",
                  .kind = Label,
                  .caption = "Pour l'écriture des nombres à virgule, préférez le point du pavé "
                             "numérique comme séparateur.",
                  .place = {285, 2280, 5175, 975},
                  .font = {"Arial", 12, true},
                  .align = Center,
                  .foreground = kPurple},
    ControlDesign{.name = "cmdOK",
                  .kind = CommandButton,
                  .caption = "OK",
                  .place = {4320, 3600, 1260, 345},
                  .font = kWindowFont,
                  .align = Center,
                  .tabIndex = 0},
    ControlDesign{.name = "cmdSysInfo",
                  .kind = CommandButton,
                  .caption = "&Infos système...",
                  .place = {4320, 4080, 1245, 345},
                  .font = kWindowFont,
                  .align = Center,
                  .tabIndex = 1},
    ControlDesign{.name = "lblUrl",
                  .kind = Label,
                  .caption = kContactWeb,
                  .place = {240, 4080, 3855, 255},
                  .font = {"MS Sans Serif", 9.75, true, true},
                  .foreground = kBlue},
    ControlDesign{.name = "lblMail",
                  .kind = Label,
                  .caption = kContactMail,
                  .place = {240, 4440, 2175, 255},
                  .font = {"MS Sans Serif", 9.75, true},
                  .tooltip = "Contactez moi !",
                  .foreground = kBlue},
};

}  // namespace

std::span<const ControlDesign> AboutDesign() {
    return kControls;
}

}  // namespace mirvalde
