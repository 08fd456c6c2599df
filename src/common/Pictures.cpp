#include "Pictures.h"

#include <QPainter>
#include <QSvgRenderer>

// The pictures live in a static library: their resource is registered by hand, once.
static void RegisterPictures() {
    static const bool registered = [] {
        Q_INIT_RESOURCE(icons);
        return true;
    }();
    (void)registered;
}

namespace mirvalde {

namespace {

QPixmap Render(QSvgRenderer& renderer, QSize logicalSize, qreal devicePixelRatio) {
    QPixmap pixmap(logicalSize * devicePixelRatio);
    pixmap.fill(Qt::transparent);
    if (renderer.isValid()) {
        QPainter painter(&pixmap);
        renderer.render(&painter);
    }
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

}  // namespace

QPixmap SvgPixmap(const QString& resource, QSize logicalSize, qreal devicePixelRatio) {
    RegisterPictures();
    QSvgRenderer renderer(resource);
    return Render(renderer, logicalSize, devicePixelRatio);
}

QIcon SvgIcon(const QString& resource) {
    // The picture is read once and drawn at every size a desktop may ask for.
    RegisterPictures();
    QSvgRenderer renderer(resource);
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        icon.addPixmap(Render(renderer, QSize(side, side), 1.0));
    }
    return icon;
}

QIcon GameIcon() {
    // Drawn once for the whole run: every window shows it. Never destroyed, as a pixmap must
    // not be destroyed after the application object.
    static const QIcon* const icon = new QIcon(SvgIcon(QStringLiteral(":/icons/mirvalde.svg")));
    return *icon;
}

}  // namespace mirvalde
