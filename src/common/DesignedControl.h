#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>
#include <string_view>

#include "Design.h"

class QLabel;
class QWidget;

namespace mirvalde {

// Text of a design table or of the rules (UTF-8) as Qt shows it.
QString FromUtf8(std::string_view text);

// 0x00BBGGRR as the window system writes colours.
QColor ColourOf(std::uint32_t bgr);

// Rounds each value on its own, as the window system places a control given in twips.
QRect ToPixels(const TwipRect& place);

QFont FontOf(const FontDesign& font, const QFont& windowFont);

// The widget of one row of a design table, with its name, caption, font, colours, alignment,
// tooltip and visibility; its place is applied by the window.
QWidget* CreateControl(const ControlDesign& design, QWidget* parent);
// The same for a widget made by the window itself (a picture box that draws): returns it.
QWidget* ApplyDesign(QWidget* widget, const ControlDesign& design);

// A label designed to size itself takes the size of its text again, its aligned edge still.
void FitLabelToText(QLabel* label);

// Labels, images and shapes are drawn on their window's surface: beneath every button, box,
// frame and picture box, whatever the order of the design, and in that order among
// themselves. Applies to `surface` and every widget inside it.
void StackDrawnControlsBeneath(QWidget* surface);

}  // namespace mirvalde
