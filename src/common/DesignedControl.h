#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "Design.h"

class QLabel;
class QWidget;

namespace mirvalde {

// Text of a design table or of the rules (UTF-8) as Qt shows it.
QString FromUtf8(std::string_view text);

// 0x00BBGGRR as the window system writes colours.
QColor ColourOf(std::uint32_t bgr);

// A window's client size in logical pixels, from its design in twips.
constexpr QSize PixelSize(double widthTwips, double heightTwips) {
    return {static_cast<int>(widthTwips / kTwipsPerPixel),
            static_cast<int>(heightTwips / kTwipsPerPixel)};
}

// Rounds each value on its own, as the window system places a control given in twips.
QRect ToPixels(const TwipRect& place);

QFont FontOf(const FontDesign& font, const QFont& windowFont);

// The widget of one row of a design table, with its name, caption, font, colours, alignment,
// tooltip and visibility; its place is applied by the window.
QWidget* CreateControl(const ControlDesign& design, QWidget* parent);
// The same for a widget made by the window itself (a picture box that draws): returns it.
QWidget* ApplyDesign(QWidget* widget, const ControlDesign& design);

// The controls of a window, built from its design and found by their names.
class DesignedControls {
  public:
    using Maker = std::function<QWidget*(const ControlDesign&, QWidget* parent)>;
    // Builds every row in the table's order, inside `surface` or inside the control the row
    // names as its parent; `make` may build a row itself (a picture box that draws), or return
    // null to leave it to the design. Then puts the design's tab order in place and stacks
    // the drawn controls beneath the others.
    void Build(std::span<const ControlDesign> design, QWidget* surface, const Maker& make = {});
    QWidget* Find(std::string_view name) const;

  private:
    std::map<std::string, QWidget*, std::less<>> controls_;
};

// The windows' own text, where the design names none: MS Sans Serif 8.25 pt.
QFont DialogFont();

// A frame with a title, a window menu and a close button, but neither a minimise nor a
// maximise button.
inline constexpr Qt::WindowFlags kWithoutMinMaxButtons =
    Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
    Qt::WindowCloseButtonHint;

// A label designed to size itself takes the size of its text again, its aligned edge still.
void FitLabelToText(QLabel* label);

// Labels, images and shapes are drawn on their window's surface: beneath every button, box,
// frame and picture box, whatever the order of the design, and in that order among
// themselves. Applies to `surface` and every widget inside it.
void StackDrawnControlsBeneath(QWidget* surface);

}  // namespace mirvalde
