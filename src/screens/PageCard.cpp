#include "screens/PageCard.h"

#include "screens/Look.h"
#include "screens/PageCardButton.h"
#include "screens/Style.h"

#include <QFontMetrics>

PageCard::PageCard(const Look &look, const PageSnapshot &page, QWidget *parent)
    : RowPart(parent),
      m_look(look),
      m_button(new PageCardButton(look, page.title, this)) {
    connect(m_button, &LookButton::clicked, this, [this, page] { Q_EMIT opened(page); });
    connect(m_button, &LookButton::focusChanged, this, &RowPart::focusChanged);
}

int PageCard::layIn(int width) {
    // The ring reaches beyond the part.
    const QSize size = m_button->sizeHint();
    m_button->setGeometry(0, 0, std::min(size.width(), width), size.height());
    return size.height();
}

QList<QWidget *> PageCard::stops() const {
    return {m_button};
}

int PageCard::estimatedHeight(const Look &look) {
    const QFontMetrics metrics(look.font(TextStyle::callout));
    return style::sheetHeightInSmall + style::spaceSmall + metrics.height() + 2 * style::rowOutset;
}
