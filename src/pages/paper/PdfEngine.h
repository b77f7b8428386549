#pragma once

#include "pages/paper/PdfFont.h"

#include <QHash>
#include <QImage>
#include <QPaintEngine>
#include <QPainterPath>
#include <QPen>

#include <optional>
#include <set>
#include <vector>

/// What a painter does, as the content of a page of a PDF (ISO 32000-1, 8 and 9). The content counts from the
/// top left corner downwards. Each piece of it says all that it depends on, so that none depends on another.
class PdfEngine : public QPaintEngine {
public:
    PdfEngine();

    const QByteArray &content() const { return m_content; }
    /// Writes what the content refers to, and gives the entries of the page's resources.
    QByteArray writeResources(PdfFile &file) const;

    bool begin(QPaintDevice *device) override;
    bool end() override;
    void updateState(const QPaintEngineState &now) override;
    void drawPath(const QPainterPath &path) override;
    void drawPolygon(const QPointF *points, int count, PolygonDrawMode mode) override;
    void drawPixmap(const QRectF &area, const QPixmap &pixmap, const QRectF &part) override;
    void drawTextItem(const QPointF &baseline, const QTextItem &item) override;
    Type type() const override { return User; }

private:
    enum class Painting { fill, stroke };

    void append(const QByteArray &drawing);
    QByteArray paint(const QColor &color, Painting painting);
    void drawImage(const QRectF &area, const QImage &image, const QByteArray &key);
    void drawPictures(const QPointF &baseline, const QList<TextShape> &shapes);
    void drawShapes(const QPointF &baseline, QList<TextShape>::const_iterator first,
                    QList<TextShape>::const_iterator last);
    PdfFont &fontOf(const QRawFont &face);

    QByteArray m_content;
    std::vector<std::unique_ptr<PdfFont>> m_fonts;
    QHash<QByteArray, int> m_imageNumbers;
    QList<QImage> m_images;
    std::set<int> m_opacities; ///< in 255ths

    QPen m_pen;
    QBrush m_brush;
    QTransform m_transform;
    double m_opacity = 1;
    std::optional<QByteArray> m_clip; ///< the path to which drawing is kept; nothing if it isn't
};
