#include "screens/Chip.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

Chip::Chip(const Look &look, const QString &name, const QStringList &labels, QWidget *parent)
    : LookButton(look, {}, parent),
      m_labels(labels),
      m_fill(style::chipGlide) {
    Spoken::install();
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(&m_fill, &Glide::moved, this, qOverload<>(&QWidget::update));
}

void Chip::setModel(const ChipModel &model) {
    setText(model.label);
    setToolTip(model.help);
    setAccessibleDescription(model.help);
    if (std::exchange(m_value, model.value) != model.value) {
        QAccessibleValueChangeEvent changed(this, m_value);
        QAccessible::updateAccessibility(&changed);
    }
    m_fill.go(m_fill.value(), model.fraction, isVisible() ? look().motion() : Motion::reduced);
}

QSize Chip::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::control));
    int widest = 0;
    for (const QString &label : m_labels)
        widest = std::max(widest, metrics.horizontalAdvance(label));
    return {widest + 2 * style::chipPadding,
            std::max(style::buttonHeight, metrics.height() + 2 * style::spaceTiny)};
}

QSize Chip::minimumSizeHint() const {
    return sizeHint() - QSize(2 * (style::chipPadding - style::spaceTiny), 0);
}

void Chip::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = look().palette();
    const QRectF pill = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath outline;
    outline.addRoundedRect(pill, pill.height() / 2, pill.height() / 2);
    painter.fillPath(outline, byState(Qt::transparent, palette.cardFill(), palette.quietFill()));
    QRectF filled = pill;
    filled.setWidth(pill.width() * m_fill.value());
    QPainterPath fill;
    fill.addRect(filled);
    painter.fillPath(outline.intersected(fill), palette.chipFill());
    painter.setPen(QPen(palette.livelyEdge(), style::hairline));
    painter.drawPath(outline);
    painter.setFont(look().font(TextStyle::control));
    painter.setPen(palette.ink);
    painter.drawText(rect(), Qt::AlignCenter, text());
    drawFocusRing(painter, rect(), height() / 2.0);
}
