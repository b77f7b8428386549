#include "screens/LoadingWordmark.h"

#include "screens/Look.h"

#include <QFontMetricsF>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double shineOpacity = 0.85;
/// Half of the shine's band, in widths of the name.
constexpr double shineReach = 0.3;
/// Letters may reach beyond their advance by that much.
constexpr int overhang = 2;

const QString word = u"Ostrelin"_s;

QBrush sunOver(const QRectF &letters) {
    QLinearGradient sun(letters.topLeft(), letters.bottomLeft());
    const auto colors = sunColors();
    sun.setStops({{0, colors[0]}, {0.5, colors[1]}, {1, colors[2]}});
    return sun;
}

void drawWord(QPainter &painter, const QPointF &origin, const QBrush &brush, const QRectF &clip) {
    painter.save();
    painter.setClipRect(clip);
    painter.setPen(QPen(brush, 1));
    painter.drawText(origin, word);
    painter.restore();
}

} // namespace

LoadingWordmark::LoadingWordmark(const Look &look, QWidget *parent) : MovingWidget(look, parent) {
    Spoken::install();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&look, &Look::changed, this, &QWidget::updateGeometry);
}

void LoadingWordmark::setFilling(double filling) {
    if (m_filling == filling)
        return;
    m_filling = filling;
    update();
}

void LoadingWordmark::setWaking(bool isWaking) {
    m_isWaking = isWaking;
    setHasMotion(isWaking);
}

QSize LoadingWordmark::sizeHint() const {
    const QFontMetricsF metrics(look().font(TextStyle::wordmark));
    return {int(std::ceil(metrics.horizontalAdvance(word))) + 2 * overhang, int(std::ceil(metrics.height()))};
}

QString LoadingWordmark::spokenName() const {
    return word;
}

double LoadingWordmark::shineAt(std::chrono::milliseconds time) {
    const double passed = double((time % style::wordmarkShine).count());
    return -shineReach + (1 + 2 * shineReach) * passed / double(style::wordmarkShine.count());
}

void LoadingWordmark::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const QFont font = look().font(TextStyle::wordmark);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    const double advance = metrics.horizontalAdvance(word);
    const QPointF origin(overhang, metrics.ascent());
    const QRectF letters = metrics.tightBoundingRect(word).translated(origin);

    // Side by side rather than over each other: nothing of the lower colour shows around the letters.
    const double within = letters.left() + m_filling * letters.width();
    const double edge = m_filling <= 0 ? 0 : m_filling >= 1 ? width() : within;
    drawWord(painter, origin, sunOver(letters), QRectF(0, 0, edge, height()));
    drawWord(painter, origin, look().palette().ink, QRectF(edge, 0, width() - edge, height()));
    if (isMoving())
        drawShine(painter, origin, advance);
}

void LoadingWordmark::drawShine(QPainter &painter, const QPointF &origin, double width) const {
    const double middle = origin.x() + shineAt(motionTime()) * width;
    const double reach = shineReach * width;
    QLinearGradient band(middle - reach, 0, middle + reach, 0);
    const QColor clear = withOpacity(Qt::white, 0);
    band.setStops({{0, clear}, {0.5, withOpacity(Qt::white, shineOpacity)}, {1, clear}});
    drawWord(painter, origin, band, rect());
}
