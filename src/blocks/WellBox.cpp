#include "WellBox.h"

#include <QPainter>

#include "ColourSymbols.h"
#include "Design.h"
#include "DesignedControl.h"

namespace mirvalde {
namespace {

constexpr int kWellWidthPixels = static_cast<int>(kWellWidthTwips / kTwipsPerPixel);
constexpr int kWellHeightPixels = static_cast<int>(kWellHeightTwips / kTwipsPerPixel);

}  // namespace

WellBox::WellBox(QWidget* parent) : QFrame(parent) {
    setFrameStyle(QFrame::Panel | QFrame::Sunken);
    setLineWidth(1);
    const qreal ratio = devicePixelRatioF();
    image_ = QImage(QSize(kWellWidthPixels, kWellHeightPixels) * ratio, QImage::Format_RGB32);
    image_.setDevicePixelRatio(ratio);
    // Until a game paints it, the well shows the box's own background.
    image_.fill(palette().color(QPalette::Base));
}

void WellBox::FillBox(int x1, int y1, int x2, int y2, Couleur couleur) {
    QPainter painter(&image_);
    const QRectF box(x1 / kTwipsPerPixel, y1 / kTwipsPerPixel, (x2 - x1) / kTwipsPerPixel,
                     (y2 - y1) / kTwipsPerPixel);
    painter.fillRect(box, ColourOf(static_cast<std::uint32_t>(couleur)));
    update();
    if (symbols_) DrawColourSymbol(painter, box, couleur);
}

void WellBox::Refresh() {
    repaint();
}

void WellBox::ShowPaused(bool paused) {
    paused_ = paused;
    update();
}

void WellBox::paintEvent(QPaintEvent* event) {
    FitImageToDensity();
    QFrame::paintEvent(event);
    QPainter painter(this);
    const QRect inside = contentsRect();
    if (paused_) {
        // No free look at the board: white, and the word in the middle.
        painter.fillRect(inside, Qt::white);
        QFont font = this->font();
        font.setBold(true);
        font.setPointSizeF(font.pointSizeF() * 1.5);
        painter.setFont(font);
        painter.setPen(Qt::black);
        painter.drawText(inside, Qt::AlignCenter, QStringLiteral("Pause"));
        return;
    }
    painter.fillRect(inside, palette().color(QPalette::Base));
    painter.drawImage(inside.topLeft(), image_);
}

void WellBox::FitImageToDensity() {
    // Moved to a screen of another density: the squares are scaled whole, pixel for pixel.
    const qreal ratio = devicePixelRatioF();
    if (qFuzzyCompare(ratio, image_.devicePixelRatio())) return;
    QImage scaled = image_.scaled(QSize(kWellWidthPixels, kWellHeightPixels) * ratio,
                                  Qt::IgnoreAspectRatio, Qt::FastTransformation);
    scaled.setDevicePixelRatio(ratio);
    image_ = scaled;
}

}  // namespace mirvalde
