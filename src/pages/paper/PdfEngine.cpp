#include "pages/paper/PdfEngine.h"

#include <QGlyphRun>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

/// What is painted with anything else is painted by the toolkit with these.
constexpr QPaintEngine::PaintEngineFeatures features =
    QPaintEngine::PrimitiveTransform | QPaintEngine::PixmapTransform | QPaintEngine::PainterPaths |
    QPaintEngine::AlphaBlend | QPaintEngine::ConstantOpacity | QPaintEngine::Antialiasing;

QByteArray pointOf(const QPointF &point) {
    return pdf::numbers({point.x(), point.y()});
}

/// The operator that ends with the element at `index`; none within a curve.
QByteArray operatorAt(const QPainterPath &path, int index) {
    if (path.elementAt(index).isMoveTo())
        return "m\n";
    if (path.elementAt(index).isLineTo())
        return "l\n";
    const bool isLast = index + 1 == path.elementCount() ||
                        path.elementAt(index + 1).type != QPainterPath::CurveToDataElement;
    return isLast ? "c\n" : QByteArray();
}

QByteArray pathOf(const QPainterPath &path) {
    QByteArray bytes;
    for (int index = 0; index < path.elementCount(); ++index)
        bytes += pointOf(path.elementAt(index)) + operatorAt(path, index);
    return bytes;
}

QByteArray matrixOf(const QTransform &matrix) {
    return pdf::numbers({matrix.m11(), matrix.m12(), matrix.m21(), matrix.m22(), matrix.dx(), matrix.dy()});
}

int capOf(const QPen &pen) {
    return pen.capStyle() == Qt::FlatCap ? 0 : pen.capStyle() == Qt::RoundCap ? 1 : 2;
}

int joinOf(const QPen &pen) {
    return pen.joinStyle() == Qt::RoundJoin ? 1 : pen.joinStyle() == Qt::BevelJoin ? 2 : 0;
}

/// The colours, and the opacity as their mask.
PdfFile::Object writeImage(PdfFile &file, const QImage &written) {
    const QImage image = written.convertToFormat(QImage::Format_ARGB32);
    const QByteArray size = "/Type/XObject/Subtype/Image/BitsPerComponent 8/Width " +
                            QByteArray::number(image.width()) + "/Height " +
                            QByteArray::number(image.height());
    QByteArray colors;
    QByteArray opacities;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            colors.append(char(qRed(pixel))).append(char(qGreen(pixel))).append(char(qBlue(pixel)));
            opacities += char(qAlpha(pixel));
        }
    }
    const PdfFile::Object mask = file.addStream(size + "/ColorSpace/DeviceGray", opacities);
    return file.addStream(size + "/ColorSpace/DeviceRGB/SMask " + pdf::reference(mask), colors);
}

} // namespace

PdfEngine::PdfEngine() : QPaintEngine(features) {}

bool PdfEngine::begin(QPaintDevice *) {
    return true;
}

bool PdfEngine::end() {
    return true;
}

void PdfEngine::updateState(const QPaintEngineState &now) {
    m_pen = now.pen();
    m_brush = now.brush();
    m_transform = now.transform();
    m_opacity = now.opacity();
    if (now.state() & (DirtyClipEnabled | DirtyClipPath | DirtyClipRegion))
        m_clip = painter()->hasClipping() ? std::optional(pathOf(m_transform.map(painter()->clipPath())))
                                          : std::nullopt;
}

void PdfEngine::append(const QByteArray &drawing) {
    if (!m_clip)
        m_content += drawing;
    else if (!m_clip->isEmpty())
        m_content += "q\n" + *m_clip + "W n\n" + drawing + "Q\n";
}

QByteArray PdfEngine::paint(const QColor &color, Painting painting) {
    const int opacity = int(std::lround(color.alphaF() * m_opacity * 255));
    m_opacities.insert(opacity);
    return "/A" + QByteArray::number(opacity) + " gs " +
           pdf::numbers({color.redF(), color.greenF(), color.blueF()}) +
           (painting == Painting::fill ? "rg\n" : "RG\n");
}

void PdfEngine::drawPath(const QPainterPath &path) {
    const QByteArray shape = matrixOf(m_transform) + "cm\n" + pathOf(path);
    if (m_brush.style() != Qt::NoBrush)
        append("q " + paint(m_brush.color(), Painting::fill) + shape +
               (path.fillRule() == Qt::OddEvenFill ? "f* Q\n" : "f Q\n"));
    if (m_pen.style() != Qt::NoPen)
        append("q " + paint(m_pen.color(), Painting::stroke) + pdf::number(m_pen.widthF()) + " w " +
               QByteArray::number(capOf(m_pen)) + " J " + QByteArray::number(joinOf(m_pen)) + " j\n" + shape +
               "S Q\n");
}

void PdfEngine::drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) {
    QPainterPath path(points[0]);
    for (int index = 1; index < count; ++index)
        path.lineTo(points[index]);
    if (mode != PolylineMode)
        path.closeSubpath();
    path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    const QBrush brush = mode == PolylineMode ? std::exchange(m_brush, QBrush()) : m_brush;
    drawPath(path);
    m_brush = brush;
}

void PdfEngine::drawPixmap(const QRectF &area, const QPixmap &pixmap, const QRectF &part) {
    const QImage image = pixmap.copy(part.toAlignedRect()).toImage();
    drawImage(area, image, QByteArray::number(image.cacheKey()));
}

void PdfEngine::drawImage(const QRectF &area, const QImage &image, const QByteArray &key) {
    auto number = m_imageNumbers.constFind(key);
    if (number == m_imageNumbers.constEnd()) {
        number = m_imageNumbers.insert(key, int(m_images.size()));
        m_images.append(image);
    }
    // An image fills the unit square, its head at the top of it.
    const QTransform square(area.width(), 0, 0, -area.height(), area.left(), area.bottom());
    append("q " + matrixOf(square * m_transform) + "cm /I" + QByteArray::number(*number) + " Do Q\n");
}

void PdfEngine::drawTextItem(const QPointF &baseline, const QTextItem &item) {
    const QList<TextShape> shapes = shapesOf(item);
    for (auto first = shapes.begin(); first != shapes.end();) {
        const auto last = std::find_if(first, shapes.end(),
                                       [first](const TextShape &shape) { return shape.font != first->font; });
        drawShapes(baseline, first, last);
        first = last;
    }
}

void PdfEngine::drawShapes(const QPointF &baseline, QList<TextShape>::const_iterator first,
                           QList<TextShape>::const_iterator last) {
    PdfFont &font = fontOf(first->font);
    const double size = first->font.pixelSize();
    QByteArray codes;
    double pen = first->left;
    for (auto shape = first; shape != last; ++shape) {
        constexpr double units = 1000;
        const auto back = std::lround((pen - shape->left) * units / size);
        const int code = font.codeOf(*shape);
        if (back != 0)
            codes += '>' + QByteArray::number(qint64(back)) + '<';
        codes += pdf::code(code);
        pen += double(font.advanceOf(code) - back) * size / units;
    }
    // Letters count upwards.
    const QTransform upright(1, 0, 0, -1, baseline.x() + first->left, baseline.y());
    append(paint(m_pen.color(), Painting::fill) + "BT /" + font.resource() + ' ' + pdf::number(size) +
           " Tf " + (font.hasPictures() ? "3" : "0") + " Tr\n" + matrixOf(upright * m_transform) + "Tm [<" +
           codes + ">] TJ ET\n");
    if (font.hasPictures())
        drawPictures(baseline, {first, last});
}

void PdfEngine::drawPictures(const QPointF &baseline, const QList<TextShape> &shapes) {
    // Fine enough for any screen and for print, and hardly larger than the pictures are in the font.
    constexpr double pixelsPerPoint = 6;
    for (const TextShape &shape : shapes) {
        QGlyphRun run;
        run.setRawFont(shape.font);
        run.setGlyphIndexes(shape.glyphs);
        run.setPositions(shape.places);
        const QRectF area = run.boundingRect().toAlignedRect();
        if (area.isEmpty())
            continue;
        QImage image((area.size() * pixelsPerPoint).toSize(), QImage::Format_ARGB32);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.scale(pixelsPerPoint, pixelsPerPoint);
        painter.translate(-area.topLeft());
        painter.drawGlyphRun({}, run);
        painter.end();
        QByteArray key(reinterpret_cast<const char *>(shape.glyphs.constData()),
                       shape.glyphs.size() * qsizetype(sizeof(quint32)));
        drawImage(area.translated(baseline + QPointF(shape.left, 0)), image,
                  fontOf(shape.font).resource() + key);
    }
}

PdfFont &PdfEngine::fontOf(const QRawFont &face) {
    const auto known = std::find_if(m_fonts.begin(), m_fonts.end(), [&face](const auto &font) {
        return font->isOf(face) && !font->isFull();
    });
    if (known != m_fonts.end())
        return **known;
    m_fonts.push_back(std::make_unique<PdfFont>(face, int(m_fonts.size())));
    return *m_fonts.back();
}

QByteArray PdfEngine::writeResources(PdfFile &file) const {
    QByteArray fonts;
    for (const auto &font : m_fonts)
        fonts += '/' + font->resource() + ' ' + pdf::reference(font->writeTo(file));
    QByteArray images;
    for (qsizetype number = 0; number < m_images.size(); ++number)
        images +=
            "/I" + QByteArray::number(number) + ' ' + pdf::reference(writeImage(file, m_images.at(number)));
    QByteArray opacities;
    for (const int opacity : m_opacities) {
        const QByteArray share = pdf::number(opacity / 255.0);
        opacities += "/A" + QByteArray::number(opacity) + "<</ca " + share + "/CA " + share + ">>";
    }
    return "/Font<<" + fonts + ">>/XObject<<" + images + ">>/ExtGState<<" + opacities + ">>";
}
