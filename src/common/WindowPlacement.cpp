#include "WindowPlacement.h"

#include <QScreen>
#include <QTimer>
#include <QVariant>
#include <QWidget>
#include <cmath>

namespace mirvalde {

void CentreOnScreen(QWidget* window) {
    const QScreen* target = window->screen();
    if (!target) return;
    const QRect area = target->geometry();
    const QSize frame = window->frameGeometry().size();
    window->move(area.x() + static_cast<int>(std::lround((area.width() - frame.width()) / 2.0)),
                 area.y() + static_cast<int>(std::lround((area.height() - frame.height()) / 2.0)));
}

void CentreOnFirstShow(QWidget* window) {
    constexpr const char* kCentred = "mirvalde.centredWithFrame";
    if (window->property(kCentred).toBool()) return;
    window->setProperty(kCentred, true);
    CentreOnceFramed(window);
}

void CentreOnceFramed(QWidget* window, int tries) {
    QTimer::singleShot(25, window, [window, tries] {
        if (window->frameGeometry().size() != window->size()) {
            if (!window->isMaximized() && !window->isMinimized()) CentreOnScreen(window);
        } else if (tries > 0) {
            CentreOnceFramed(window, tries - 1);
        }
    });
}

}  // namespace mirvalde
