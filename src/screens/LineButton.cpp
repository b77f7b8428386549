#include "screens/LineButton.h"

#include "screens/Look.h"
#include "screens/PlainTip.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <cmath>

// The button itself has no text: an ampersand in it would be a key to press.
LineButton::LineButton(const Look &look, const QString &line, QWidget *parent)
    : RowButton(look, QString(), parent),
      m_line(line.simplified()) {
    setAccessibleName(m_line);
}

QSize LineButton::sizeHint() const {
    const QFontMetricsF metrics(look().font(TextStyle::callout));
    // Rounded up: a line that is a fraction too wide would be cut.
    return {textLeft() + int(std::ceil(metrics.horizontalAdvance(m_line))) + textRight(),
            std::max(style::footHeight, int(std::ceil(metrics.height())))};
}

int LineButton::textLeft() const {
    return style::rowOutset;
}

int LineButton::textRight() const {
    return style::rowOutset;
}

QColor LineButton::ink() const {
    const Palette &palette = look().palette();
    return byState(palette.secondaryInk(), palette.ink, palette.secondaryInk());
}

QString LineButton::shownLine() const {
    const QFontMetrics metrics(look().font(TextStyle::callout));
    return metrics.elidedText(m_line, Qt::ElideRight, width() - textLeft() - textRight());
}

void LineButton::drawLine(QPainter &painter) const {
    painter.setFont(look().font(TextStyle::callout));
    painter.setPen(ink());
    painter.drawText(rect().adjusted(textLeft(), 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, shownLine());
}

void LineButton::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    drawLine(painter);
    drawFocusRing(painter, rect(), style::radiusMark);
}

bool LineButton::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty())
        return RowButton::event(event);
    const bool isCut = shownLine() != m_line;
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), isCut ? plainTip(m_line) : QString(),
                       this);
    return true;
}
