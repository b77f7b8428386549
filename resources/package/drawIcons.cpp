#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <array>
#include <cstdlib>
#include <iostream>

/// Draws the program's icon in the sizes that the desktops ask for: <size>.png for each, and all that macOS
/// wants in Ostrelin.icns.
///
///   ostrelin-draw-icons <icon.svg> <folder>

using namespace Qt::StringLiterals;

namespace {

/// The sizes of the icon theme "hicolor" that programs give, in pixels.
constexpr std::array themeSizes{16, 22, 24, 32, 48, 64, 128, 256, 512};

/// An entry of an icns file: its type, and the pixels of the PNG in it.
struct IcnsEntry {
    const char *type;
    int pixels;
};

/// For 16, 32, 128, 256 and 512 points, each at twice the scale, too.
constexpr std::array icnsEntries{IcnsEntry{"icp4", 16},  IcnsEntry{"ic11", 32},  IcnsEntry{"icp5", 32},
                                 IcnsEntry{"ic12", 64},  IcnsEntry{"ic07", 128}, IcnsEntry{"ic13", 256},
                                 IcnsEntry{"ic08", 256}, IcnsEntry{"ic14", 512}, IcnsEntry{"ic09", 512},
                                 IcnsEntry{"ic10", 1024}};

constexpr quint32 icnsHead = 8; ///< bytes: a type and a length

QByteArray drawn(QSvgRenderer &icon, int pixels) {
    QImage picture(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    icon.render(&painter);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    picture.save(&buffer, "PNG");
    return png;
}

/// A type with its length, which counts itself, and what it holds.
QByteArray icnsPart(const QByteArray &type, const QByteArray &content) {
    QByteArray part;
    QDataStream stream(&part, QIODevice::WriteOnly);
    stream.writeRawData(type.constData(), static_cast<int>(type.size()));
    stream << icnsHead + static_cast<quint32>(content.size());
    return part + content;
}

QByteArray icnsFile(QSvgRenderer &icon) {
    QByteArray parts;
    for (const IcnsEntry &entry : icnsEntries)
        parts += icnsPart(entry.type, drawn(icon, entry.pixels));
    return icnsPart("icns", parts);
}

bool write(const QString &path, const QByteArray &content) {
    QFile file(path);
    return !content.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.flush();
}

bool drawAll(QSvgRenderer &icon, const QString &folder) {
    for (const int size : themeSizes) {
        if (!write(folder + u"/%1.png"_s.arg(size), drawn(icon, size)))
            return false;
    }
    return write(folder + u"/Ostrelin.icns"_s, icnsFile(icon));
}

} // namespace

int main(int argc, char **argv) {
    if (argc == 3) {
        QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
        if (icon.isValid() && drawAll(icon, QString::fromLocal8Bit(argv[2])))
            return EXIT_SUCCESS;
    }
    std::cerr << "usage: ostrelin-draw-icons <icon.svg> <folder that is there>" << std::endl;
    return EXIT_FAILURE;
}
