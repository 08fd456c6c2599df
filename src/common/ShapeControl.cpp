#include "ShapeControl.h"

#include <QPainter>

namespace mirvalde {

ShapeControl::ShapeControl(ShapeStyle style, bool filled, QColor fill, QWidget* parent)
    : QWidget(parent), style_(style), filled_(filled), fill_(fill) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void ShapeControl::SetOverlay(std::function<void(QPainter&, const QRect&)> overlay) {
    overlay_ = std::move(overlay);
    update();
}

void ShapeControl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    // A one-pixel outline inside the control's rectangle, as a window system draws a shape.
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
    painter.setBrush(filled_ ? QBrush(fill_) : Qt::NoBrush);
    const QRect outline = rect().adjusted(0, 0, -1, -1);
    if (style_ == ShapeStyle::RoundedRectangle) {
        painter.setRenderHint(QPainter::Antialiasing);
        // The corners round by a sixth of the shorter side, as the window system drew them.
        const qreal radius = std::min(width(), height()) / 6.0;
        painter.drawRoundedRect(QRectF(outline).translated(0.5, 0.5), radius, radius);
    } else {
        painter.drawRect(outline);
    }
    if (overlay_) overlay_(painter, rect());
}

}  // namespace mirvalde
