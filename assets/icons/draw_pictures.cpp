// Draws the game's SVG pictures as PNG files at the sizes the windows show them, once and twice
// as dense, for a build whose Qt has no SVG module; with them a resource file that lists them
// (icons.qrc, as the SVG one is named) and the Windows icon of the executable (mirvalde.ico).
//
//   draw_pictures SVG_FOLDER OUT_FOLDER
#include <QBuffer>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>
#include <cstdio>
#include <vector>

namespace {

struct Picture {
    const char* name;
    std::vector<QSize> sizes;  // logical sizes; each is drawn at 1 and 2 device pixels each
};

QImage Draw(QSvgRenderer& renderer, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

QByteArray Png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

// An icon file with PNG images, as Windows has read them since Vista: a header, a directory
// entry for each image, then the images. A side of 256 is written 0.
QByteArray Ico(const std::vector<QImage>& images) {
    QByteArray out;
    auto put16 = [&out](quint16 v) { out.append(reinterpret_cast<const char*>(&v), 2); };
    auto put32 = [&out](quint32 v) { out.append(reinterpret_cast<const char*>(&v), 4); };
    std::vector<QByteArray> pngs;
    for (const QImage& image : images) pngs.push_back(Png(image));
    put16(qToLittleEndian<quint16>(0));
    put16(qToLittleEndian<quint16>(1));
    put16(qToLittleEndian<quint16>(static_cast<quint16>(images.size())));
    quint32 offset = 6 + 16 * static_cast<quint32>(images.size());
    for (std::size_t i = 0; i < images.size(); ++i) {
        out.append(static_cast<char>(images[i].width() >= 256 ? 0 : images[i].width()));
        out.append(static_cast<char>(images[i].height() >= 256 ? 0 : images[i].height()));
        out.append('\0');  // no palette
        out.append('\0');
        put16(qToLittleEndian<quint16>(1));   // planes
        put16(qToLittleEndian<quint16>(32));  // bits a pixel
        put32(qToLittleEndian<quint32>(static_cast<quint32>(pngs[i].size())));
        put32(qToLittleEndian<quint32>(offset));
        offset += static_cast<quint32>(pngs[i].size());
    }
    for (const QByteArray& png : pngs) out.append(png);
    return out;
}

bool Write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) return true;
    std::fprintf(stderr, "draw_pictures: cannot write %s\n", qPrintable(path));
    return false;
}

}  // namespace

int main(int argc, char* argv[]) {
    QGuiApplication::setAttribute(Qt::AA_Use96Dpi);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    if (argc != 3) {
        std::fputs("usage: draw_pictures SVG_FOLDER OUT_FOLDER\n", stderr);
        return 2;
    }
    const QString in = QString::fromLocal8Bit(argv[1]);
    const QString out = QString::fromLocal8Bit(argv[2]);
    const std::vector<QSize> iconSides = {{16, 16}, {24, 24}, {32, 32},
                                          {48, 48}, {64, 64}, {128, 128}};
    const std::vector<Picture> pictures = {
        {"mirvalde", iconSides}, {"sourire", {{32, 32}}}, {"grimace", {{32, 32}}},
        {"ampoule", {{32, 32}}}, {"lettre", {{32, 32}}},  {"logo", {{42, 113}}},
    };
    QByteArray qrc = "<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n    <qresource prefix=\"/icons\">\n";
    for (const Picture& picture : pictures) {
        const QString svg = in + u'/' + QLatin1String(picture.name) + QStringLiteral(".svg");
        QSvgRenderer renderer(svg);
        if (!renderer.isValid()) {
            std::fprintf(stderr, "draw_pictures: cannot read %s\n", qPrintable(svg));
            return 1;
        }
        for (const QSize& logical : picture.sizes) {
            for (const int density : {1, 2}) {
                const QSize size = logical * density;
                const QString file = QStringLiteral("%1-%2x%3.png")
                                         .arg(QLatin1String(picture.name))
                                         .arg(size.width())
                                         .arg(size.height());
                if (!Write(out + u'/' + file, Png(Draw(renderer, size)))) return 1;
                qrc += "        <file>" + file.toUtf8() + "</file>\n";
            }
        }
    }
    qrc += "    </qresource>\n</RCC>\n";
    if (!Write(out + QStringLiteral("/icons.qrc"), qrc)) return 1;

    QSvgRenderer icon(in + QStringLiteral("/mirvalde.svg"));
    std::vector<QImage> images;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        images.push_back(Draw(icon, QSize(side, side)));
    }
    return Write(out + QStringLiteral("/mirvalde.ico"), Ico(images)) ? 0 : 1;
}
