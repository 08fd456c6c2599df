#pragma once

#include <QWidget>
#include <functional>

#include "Design.h"

namespace mirvalde {

// A shape drawn on its window's surface: an outline in the window's text colour, filled with
// a colour of its own or left open. It takes no focus and lets clicks through.
class ShapeControl : public QWidget {
    Q_OBJECT

  public:
    ShapeControl(ShapeStyle style, bool filled, QColor fill, QWidget* parent);

    ShapeStyle Style() const { return style_; }
    bool Filled() const { return filled_; }
    QColor FillColour() const { return fill_; }
    // Drawn over the shape, given its whole rectangle; none when empty.
    void SetOverlay(std::function<void(QPainter&, const QRect&)> overlay);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ShapeStyle style_;
    bool filled_;
    QColor fill_;
    std::function<void(QPainter&, const QRect&)> overlay_;
};

}  // namespace mirvalde
