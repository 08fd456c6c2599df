#pragma once

#include <cstdint>
#include <span>
#include <string_view>

// A window's design as data: each control with its kind, place, caption and look. The
// windows build their controls from such tables, and their tests read them back.
namespace mirvalde {

// Places and sizes are in twips: 15 to a logical pixel.
inline constexpr double kTwipsPerPixel = 15.0;

struct TwipRect {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

enum class ControlKind {
    CommandButton,
    Frame,
    Label,
    Image,
    OptionButton,
    TextBox,
    PictureBox,
    Shape,
    CheckBox,
    Line,
};
enum class TextAlign { Left, Center, Right };
// The outline of a shape; a shape with a Fixed background is filled with its colour.
enum class ShapeStyle { Rectangle, RoundedRectangle };
// Colours that follow the desktop's palette rather than a fixed value.
enum class Background { Default, Fixed, Menu, ScrollBar };

struct FontDesign {
    std::string_view family;  // empty: the window's own font
    double points = 0;
    bool bold = true;
    bool underline = false;
};

// The text colour of a control that keeps the desktop's own.
inline constexpr std::uint32_t kDesktopText = 0xFFFFFFFF;

struct ControlDesign {
    std::string_view name;  // the control's name, also its objectName
    ControlKind kind;
    std::string_view parent;  // empty: the window itself
    std::string_view caption;
    TwipRect place;
    FontDesign font;
    TextAlign align = TextAlign::Left;
    Background background = Background::Default;
    std::uint32_t colour = 0;  // 0x00BBGGRR, with Background::Fixed
    std::string_view tooltip;
    int tabIndex = -1;  // -1: not in the tab order
    bool visible = true;
    // A label that sizes itself to its text, keeping the edge its alignment holds still.
    bool autoSize = false;
    ShapeStyle shape = ShapeStyle::Rectangle;
    std::uint32_t foreground = kDesktopText;  // 0x00BBGGRR
};

// The caption a control of a design has when its window loads; empty for an unknown name.
constexpr std::string_view CaptionIn(std::span<const ControlDesign> design, std::string_view name) {
    for (const ControlDesign& control : design) {
        if (control.name == name) return control.caption;
    }
    return {};
}

}  // namespace mirvalde
