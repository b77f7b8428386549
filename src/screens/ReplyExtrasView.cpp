#include "screens/ReplyExtrasView.h"

#include "records/CodePoint.h"
#include "screens/ConsentCard.h"
#include "screens/Look.h"
#include "screens/PageCard.h"
#include "screens/PageFailedLine.h"
#include "screens/SearchChip.h"
#include "screens/Style.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// A text in which nothing is hidden and nothing turns the order of what is read: what the person agrees to
/// is what they see.
QString inFull(QString text) {
    for (qsizetype place = 0; place < text.size();) {
        const CodePoint point = codePointAt(text, place);
        const bool isJoiner = point.value == 0x200C || point.value == 0x200D;
        const bool isHidden = QChar::category(point.value) == QChar::Other_Format && !isJoiner;
        if (isHidden)
            text.replace(place, point.length, QChar::ReplacementCharacter);
        place += isHidden ? 1 : point.length;
    }
    return text;
}

ConsentCard::Content contentOf(const PendingSearch &asked) {
    return {.symbol = Icon::globe,
            .question = u"Search the web?"_s,
            .text = inFull(asked.query),
            .detail = {},
            .answers = {u"Search"_s, u"Always allow"_s, u"Don't search"_s}};
}

ConsentCard::Content contentOf(const PendingPageOffer &) {
    return {.symbol = Icon::richPage,
            .text = u"Can I build a page for you? It will appear on the side and then you will be able to "
                    "save it as an image or PDF."_s,
            .detail = {},
            .answers = {u"Yes"_s, u"No"_s}};
}

ConsentCard::Content contentOf(const PendingMemory &asked) {
    return {.symbol = Icon::brain,
            .text = u"Want me to remember this?"_s,
            .detail = inFull(asked.fact),
            .answers = {u"Remember"_s, u"Not now"_s}};
}

PermissionChoice choiceAt(int answer) {
    constexpr std::array choices{PermissionChoice::allow, PermissionChoice::always, PermissionChoice::deny};
    return choices.at(size_t(answer));
}

} // namespace

ReplyExtrasView::ReplyExtrasView(const Look &look, QWidget *parent) : RowPart(parent), m_look(look) {}

void ReplyExtrasView::setExtras(const ReplyExtras &extras) {
    const ReplyExtras before = std::exchange(m_extras, extras);
    if (before.search != extras.search)
        showSearch();
    if (before.page != extras.page)
        showPage();
    if (before.hasFailedPage != extras.hasFailedPage)
        showFailedPage();
    if (before.asked != extras.asked)
        showAsked();
}

void ReplyExtrasView::replace(RowPart *&part, RowPart *other) {
    delete part;
    part = other;
    if (!part)
        return;
    part->show();
    connect(part, &RowPart::heightChanged, this, &RowPart::heightChanged);
    connect(part, &RowPart::focusChanged, this, &RowPart::focusChanged);
    connect(part, &RowPart::left, this, &RowPart::left);
}

void ReplyExtrasView::showSearch() {
    replace(m_search, m_extras.search ? new SearchChip(m_look, *m_extras.search, this) : nullptr);
}

void ReplyExtrasView::showPage() {
    if (!m_extras.page)
        return replace(m_page, nullptr);
    auto *card = new PageCard(m_look, *m_extras.page, this);
    connect(card, &PageCard::opened, this, &ReplyExtrasView::pageOpened);
    replace(m_page, card);
}

void ReplyExtrasView::showFailedPage() {
    if (!m_extras.hasFailedPage)
        return replace(m_failedPage, nullptr);
    auto *line = new PageFailedLine(m_look, this);
    connect(line, &PageFailedLine::retried, this, &ReplyExtrasView::pageRetried);
    replace(m_failedPage, line);
}

void ReplyExtrasView::showAsked() {
    replace(m_card, newCard());
}

RowPart *ReplyExtrasView::newCard() {
    return std::visit(
        [this](const auto &asked) -> RowPart * {
            if constexpr (std::is_same_v<decltype(asked), const std::monostate &>) {
                return nullptr;
            } else {
                auto *card = new ConsentCard(m_look, contentOf(asked), this);
                connect(card, &ConsentCard::answered, this,
                        [this, asked](int place) { answer(asked, place); });
                return card;
            }
        },
        m_extras.asked);
}

void ReplyExtrasView::answer(const PendingSearch &, int place) {
    Q_EMIT searchAnswered(choiceAt(place));
}

void ReplyExtrasView::answer(const PendingPageOffer &, int place) {
    Q_EMIT pageAnswered(place == 0);
}

void ReplyExtrasView::answer(const PendingMemory &, int place) {
    Q_EMIT memoryAnswered(place == 0);
}

int ReplyExtrasView::layIn(int width) {
    const int inner = width - 2 * style::rowOutset;
    int bottom = 0;
    for (RowPart *part : parts()) {
        // A page's card has the room for its ring in itself.
        const int outset = part == m_page ? style::rowOutset : 0;
        bottom += bottom > 0 ? gapOver(part) : 0;
        const int height = part->layIn(inner + 2 * outset);
        part->setGeometry(style::rowOutset - outset, bottom, inner + 2 * outset, height);
        bottom += height;
    }
    return bottom;
}

int ReplyExtrasView::gapAbove() const {
    const QList<RowPart *> all = parts();
    return all.isEmpty() ? 0 : gapOver(all.first());
}

int ReplyExtrasView::gapOver(const RowPart *part) const {
    return part == m_failedPage ? style::footGap : style::partGap;
}

QList<RowPart *> ReplyExtrasView::parts() const {
    QList<RowPart *> parts{m_search, m_page, m_failedPage, m_card};
    parts.removeAll(nullptr);
    return parts;
}

QList<QWidget *> ReplyExtrasView::stops() const {
    QList<QWidget *> stops;
    for (const RowPart *part : parts())
        stops.append(part->stops());
    return stops;
}

int ReplyExtrasView::estimatedHeight(const Look &look, const ReplyExtras &extras) {
    int height = 0;
    if (extras.search)
        height += SearchChip::estimatedHeight(look) + style::partGap;
    if (extras.page)
        height += PageCard::estimatedHeight(look) + style::partGap;
    if (extras.hasFailedPage)
        height += style::footHeight + style::partGap;
    if (extras.asks())
        height += ConsentCard::estimatedHeight(look) + style::partGap;
    return height;
}
