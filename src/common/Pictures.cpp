#include "Pictures.h"

#include <QPainter>
#include <QSvgRenderer>

// The pictures live in a static library: their resource is registered by hand, once.
static void RegisterPictures() {
    Q_INIT_RESOURCE(icons);
}

namespace mirvalde {

QPixmap SvgPixmap(const QString& resource, QSize logicalSize, qreal devicePixelRatio) {
    static const bool registered = (RegisterPictures(), true);
    (void)registered;
    QPixmap pixmap(logicalSize * devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QSvgRenderer renderer(resource);
    if (renderer.isValid()) {
        QPainter painter(&pixmap);
        renderer.render(&painter);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

QIcon SvgIcon(const QString& resource) {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(SvgPixmap(resource, QSize(side, side), 1.0));
    }
    return icon;
}

QIcon GameIcon() {
    return SvgIcon(QStringLiteral(":/icons/mirvalde.svg"));
}

}  // namespace mirvalde
