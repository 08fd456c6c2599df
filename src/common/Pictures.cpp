#include "Pictures.h"

#include <QPainter>
#include <QSvgRenderer>

// The pictures live in a static library: their resource is registered by hand, once.
static void RegisterPictures() {
    Q_INIT_RESOURCE(icons);
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

const QString& Registered(const QString& resource) {
    static const bool registered = (RegisterPictures(), true);
    (void)registered;
    return resource;
}

}  // namespace

QPixmap SvgPixmap(const QString& resource, QSize logicalSize, qreal devicePixelRatio) {
    QSvgRenderer renderer(Registered(resource));
    return Render(renderer, logicalSize, devicePixelRatio);
}

QIcon SvgIcon(const QString& resource) {
    // The picture is read once and drawn at every size a desktop may ask for.
    QSvgRenderer renderer(Registered(resource));
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
