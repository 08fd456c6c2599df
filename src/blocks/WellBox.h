#pragma once

#include <QFrame>
#include <QImage>

#include "TavrinesGame.h"

namespace mirvalde {

// The picture box of the well. What the game paints goes to a persistent image, kept at the
// screen's density so that the squares stay crisp, and shown whenever the box repaints.
class WellBox : public QFrame, public WellPicture {
    Q_OBJECT

  public:
    explicit WellBox(QWidget* parent = nullptr);

    void FillBox(int x1, int y1, int x2, int y2, Couleur couleur) override;
    // Repaints the box at once, inside a handler that does not return to the event loop.
    void Refresh() override;
    void ShowPaused(bool paused) override;
    void ShowSymbols(bool symbols) override { symbols_ = symbols; }

    // The image as painted, one logical pixel per 15 twips.
    const QImage& Image() const { return image_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void FitImageToDensity();

    QImage image_;
    bool paused_ = false;
    bool symbols_ = false;
};

}  // namespace mirvalde
