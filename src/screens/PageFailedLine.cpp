#include "screens/PageFailedLine.h"

#include "screens/BorderlessButton.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QFontMetrics>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {
const QString text = u"Couldn't build the page."_s;
}

PageFailedLine::PageFailedLine(const Look &look, QWidget *parent)
    : RowPart(parent),
      m_look(look),
      m_retry(new BorderlessButton(look, u"Try again"_s, this, BorderlessButton::Tone::action)) {
    m_retry->setAccessibleDescription(text);
    connect(m_retry, &LookButton::clicked, this, &PageFailedLine::retried);
    connect(m_retry, &LookButton::focusChanged, this, &RowPart::focusChanged);
}

int PageFailedLine::layIn(int) {
    const QFontMetrics metrics(m_look.font(TextStyle::callout));
    const int left = metrics.horizontalAdvance(text) + style::failedPageGap - style::rowOutset;
    m_retry->setGeometry({{left, 0}, m_retry->sizeHint()});
    return m_retry->height();
}

QList<QWidget *> PageFailedLine::stops() const {
    return {m_retry};
}

void PageFailedLine::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setFont(m_look.font(TextStyle::callout));
    painter.setPen(m_look.palette().secondaryInk());
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, text);
}
