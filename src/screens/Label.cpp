#include "screens/Label.h"

#include "screens/Look.h"
#include "screens/PlainTip.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

Label::Label(const Look &look, TextStyle style, Ink ink, Fit fit, QWidget *parent)
    : QLabel(parent),
      m_look(look),
      m_style(style),
      m_ink(ink),
      m_fit(fit) {
    setTextFormat(Qt::PlainText);
    setWordWrap(fit == Fit::wrapped);
    connect(&look, &Look::changed, this, &Label::takeLook);
    takeLook();
}

QSize Label::minimumSizeHint() const {
    const QSize hint = QLabel::minimumSizeHint();
    return m_fit == Fit::elided ? QSize(0, hint.height()) : hint;
}

int Label::heightForWidth(int width) const {
    // A layout offers all that it has, also to a text that is kept narrower.
    return QLabel::heightForWidth(std::min(width, maximumWidth()));
}

void Label::paintEvent(QPaintEvent *event) {
    if (m_fit != Fit::elided)
        return QLabel::paintEvent(event);
    QPainter painter(this);
    painter.drawText(rect(), int(alignment()) | Qt::TextSingleLine, shownText());
}

bool Label::event(QEvent *event) {
    if (m_fit != Fit::elided || event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const QString tip = shownText() == text() ? QString() : plainTip(text());
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), tip, this);
    return true;
}

QString Label::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, width());
}

void Label::takeLook() {
    setFont(m_look.font(m_style));
    QPalette colors = palette();
    const Palette &from = m_look.palette();
    colors.setColor(QPalette::WindowText, m_ink == Ink::main ? from.ink : from.secondaryInk());
    setPalette(colors);
}
