#pragma once

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>
#include <string_view>

#include "Design.h"

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

}  // namespace mirvalde
