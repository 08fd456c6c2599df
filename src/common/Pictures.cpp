#include "Pictures.h"

#ifdef MIRVALDE_DRAWN_PICTURES
#include <QDir>
#include <QRegularExpression>
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
// asked for is taken as it is when it was drawn, else drawn down from the nearest larger one.
QPixmap Drawn(const QString& resource, QSize pixels) {
    const QString name = resource.section(u'/', -1).section(u'.', 0, 0);
    const QString exact =
        QStringLiteral(":/icons/%1-%2x%3.png").arg(name).arg(pixels.width()).arg(pixels.height());
    QPixmap pixmap(exact);
    if (!pixmap.isNull()) return pixmap;
    const QRegularExpression drawn(QStringLiteral("^%1-(\\d+)x(\\d+)\\.png$").arg(name));
    QString best;
    int bestWidth = 0;
    for (const QString& file : QDir(QStringLiteral(":/icons")).entryList()) {
        const QRegularExpressionMatch match = drawn.match(file);
        if (!match.hasMatch()) continue;
        const int width = match.captured(1).toInt();
        // The smallest that is large enough, else the largest.
        const bool fits = width >= pixels.width();
        const bool bestFits = bestWidth >= pixels.width();
        const bool better = best.isEmpty() || (fits && (!bestFits || width < bestWidth)) ||
                            (!fits && !bestFits && width > bestWidth);
        if (better) {
            best = file;
            bestWidth = width;
        }
    }
    if (best.isEmpty()) {
        QPixmap empty(pixels);
        empty.fill(Qt::transparent);
        return empty;
    }
    return QPixmap(QStringLiteral(":/icons/") + best)
        .scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
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
