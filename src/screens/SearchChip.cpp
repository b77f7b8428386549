#include "screens/SearchChip.h"

#include "pages/drawing/LinkAddress.h"
#include "screens/LineButton.h"
#include "screens/Look.h"
#include "screens/SearchHead.h"
#include "screens/Style.h"

#include <QDesktopServices>
#include <QFontMetrics>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {

QString lineOf(const SearchEvent &event) {
    return (event.status == SearchStatus::denied ? u"Not searched: "_s : u"Searched: "_s) + event.query;
}

} // namespace

SearchChip::SearchChip(const Look &look, const SearchEvent &event, QWidget *parent)
    : RowPart(parent),
      m_look(look),
      m_head(new SearchHead(look, lineOf(event), !event.sources.isEmpty(), this)),
      m_body(new QWidget(this)),
      m_fold(style::thinkingFold) {
    for (const SearchSource &source : event.sources)
        addSource(source, m_sources.size() + 1);
    m_body->hide();
    connect(m_head, &LookButton::clicked, this,
            [this] { setExpanded(!m_isExpanded && !m_sources.isEmpty()); });
    connect(m_head, &LookButton::focusChanged, this, &RowPart::focusChanged);
    connect(&m_fold, &Glide::moved, this, &RowPart::heightChanged);
    connect(&m_fold, &Glide::arrived, this, [this] {
        m_body->setVisible(m_isExpanded);
        Q_EMIT heightChanged();
    });
}

void SearchChip::addSource(const SearchSource &source, qsizetype place) {
    const QString title = source.title.isEmpty() ? source.url : source.title;
    auto *button = new LineButton(m_look, u"[%1] "_s.arg(place) + title, m_body);
    connect(button, &LookButton::focusChanged, this, &RowPart::focusChanged);
    const std::optional<QUrl> address = linkAddress(source.url);
    // A title may promise anything: where it leads is seen before it is followed.
    if (address && address->scheme().startsWith(u"http"_s)) {
        button->setToolTip(Qt::convertFromPlainText(shownAddress(*address)));
        button->setAccessibleDescription(shownAddress(*address));
        connect(button, &LookButton::clicked, this, [url = *address] { QDesktopServices::openUrl(url); });
    }
    m_sources.append(button);
}

void SearchChip::setExpanded(bool isExpanded) {
    if (std::exchange(m_isExpanded, isExpanded) == isExpanded)
        return;
    m_head->setExpanded(isExpanded);
    m_body->show();
    m_fold.go(m_fold.value(), isExpanded ? 1 : 0, m_look.motion());
}

int SearchChip::layIn(int width) {
    const int height = estimatedHeight(m_look);
    m_head->setGeometry(0, 0, std::min(m_head->sizeHint().width(), width), height);
    int bottom = style::spaceTiny;
    for (LineButton *source : m_sources) {
        const QSize size = source->sizeHint();
        source->setGeometry(style::attachmentPaddingX, bottom,
                            std::min(size.width(), width - style::attachmentPaddingX), size.height());
        bottom += size.height();
    }
    const int shown = qRound(m_fold.value() * (m_sources.isEmpty() ? 0 : bottom));
    m_body->setGeometry(0, height, width, shown);
    return height + shown;
}

QList<QWidget *> SearchChip::stops() const {
    QList<QWidget *> stops{m_head};
    if (m_isExpanded) {
        for (LineButton *source : m_sources)
            stops.append(source);
    }
    return stops;
}

int SearchChip::estimatedHeight(const Look &look) {
    const QFontMetrics metrics(look.font(TextStyle::callout));
    return std::max(metrics.height(), style::iconSize) + 2 * style::attachmentPaddingY;
}
