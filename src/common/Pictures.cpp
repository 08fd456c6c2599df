#include "Pictures.h"

#ifdef MIRVALDE_DRAWN_PICTURES
#include <QDir>
#else
#include <QPainter>
#include <QSvgRenderer>
#endif

// The pictures live in a static library: their resource is registered by hand, once.
static void RegisterPictures() {
    static const bool registered = [] {
        Q_INIT_RESOURCE(icons);
        return true;
    }();
    (void)registered;
}

namespace mirvalde {

#ifdef MIRVALDE_DRAWN_PICTURES

namespace {

// The picture NAME drawn beforehand at W x H device pixels is ":/icons/NAME-WxH.png". The size
// asked for is taken as it was drawn, else drawn down from the largest drawing of the picture.
QPixmap Drawn(const QString& resource, QSize pixels) {
    const QString name = resource.section(u'/', -1).section(u'.', 0, 0);
    const QString exact =
        QStringLiteral(":/icons/%1-%2x%3.png").arg(name).arg(pixels.width()).arg(pixels.height());
    QPixmap pixmap(exact);
    if (!pixmap.isNull()) return pixmap;
    for (const QString& file : QDir(QStringLiteral(":/icons")).entryList({name + "-*.png"})) {
        const QPixmap drawn(QStringLiteral(":/icons/") + file);
        if (drawn.width() > pixmap.width()) pixmap = drawn;
    }
    if (pixmap.isNull()) {
        pixmap = QPixmap(pixels);
        pixmap.fill(Qt::transparent);
        return pixmap;
    }
    return pixmap.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

QPixmap SvgPixmap(const QString& resource, QSize logicalSize, qreal devicePixelRatio) {
    RegisterPictures();
    QPixmap pixmap = Drawn(resource, logicalSize * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    return pixmap;
}

QIcon SvgIcon(const QString& resource) {
    RegisterPictures();
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128}) {
        icon.addPixmap(Drawn(resource, QSize(side, side)));
    }
    return icon;
}

#else

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

#endif

QIcon GameIcon() {
    // Drawn once for the whole run: every window shows it. Never destroyed, as a pixmap must
    // not be destroyed after the application object.
    static const QIcon* const icon = new QIcon(SvgIcon(QStringLiteral(":/icons/mirvalde.svg")));
    return *icon;
}

}  // namespace mirvalde
