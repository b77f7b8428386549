#include "pages/drawing/Tabular.h"

#include <algorithm>

namespace {

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

double digitWidth(const QFontMetricsF &metrics) {
    double widest = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        widest = std::max(widest, metrics.horizontalAdvance(QChar(digit)));
    return widest;
}

/// Calls `use` with each digit, and with what stands between digits, and how wide it is.
template<typename Use>
void forEachPiece(const QFontMetricsF &metrics, QStringView text, Use use) {
    const double digit = digitWidth(metrics);
    while (!text.isEmpty()) {
        const auto others = std::find_if(text.begin(), text.end(), isDigit) - text.begin();
        const QString piece = text.first(others > 0 ? others : 1).toString();
        use(piece, others > 0 ? metrics.horizontalAdvance(piece) : digit);
        text = text.sliced(piece.size());
    }
}

} // namespace

double tabularWidth(const QFontMetricsF &metrics, QStringView text) {
    double width = 0;
    forEachPiece(metrics, text, [&](const QString &, double pieceWidth) { width += pieceWidth; });
    return width;
}

void drawTabular(QPainter &painter, const QPointF &baseline, QStringView text) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    QPointF place = baseline;
    forEachPiece(metrics, text, [&](const QString &piece, double width) {
        const double spare = width - metrics.horizontalAdvance(piece);
        painter.drawText(place + QPointF(spare / 2, 0), piece);
        place.rx() += width;
    });
}

QList<QTextLayout::FormatRange> tabularFormats(const QFont &font, QStringView text) {
    const QFontMetricsF metrics(font);
    const double digit = digitWidth(metrics);
    const auto spareOf = [&](qsizetype place) {
        const bool isSpare = place < text.size() && isDigit(text[place]);
        return isSpare ? digit - metrics.horizontalAdvance(text[place]) : 0;
    };
    QList<QTextLayout::FormatRange> formats;
    for (qsizetype place = 0; place < text.size() && formats.size() < mostTabularDigits; ++place) {
        // A digit stands in the middle of its room, so a half of what it spares comes before it.
        const double spare = (spareOf(place) + spareOf(place + 1)) / 2;
        if (spare <= 0)
            continue;
        QTextCharFormat format;
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(font.letterSpacing() + spare);
        formats.append({int(place), 1, format});
    }
    return formats;
}
