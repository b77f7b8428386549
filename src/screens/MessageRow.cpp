#include "screens/MessageRow.h"

#include "pages/drawing/Focus.h"
#include "screens/ActionLine.h"
#include "screens/AttachmentChip.h"
#include "screens/Look.h"
#include "screens/ReplyExtrasView.h"
#include "screens/Style.h"
#include "screens/ThinkingDisclosure.h"
#include "screens/TypingIndicator.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using Kind = MessageRowModel::Kind;

QRect grown(const QRect &rect, int x, int y) {
    return rect.adjusted(-x, -y, x, y);
}

} // namespace

MessageRow::MessageRow(const Look &look, Clock &clock, const MessageRowModel &model, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_clock(clock) {
    Spoken::install();
    setAttribute(Qt::WA_StaticContents);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    setModel(model);
}

MessageRow::~MessageRow() {
    // A part that goes with the row tells that it loses the focus, and there is no row to hear it.
    for (QObject *part : children())
        part->disconnect(this);
}

void MessageRow::setModel(const MessageRowModel &model) {
    m_model = model;
    showAttachments();
    showThinking();
    showText();
    showTyping();
    showExtras();
    showActions();
}

int MessageRow::layIn(int width) {
    const int inner = width - 2 * style::rowOutset;
    m_outlineBefore = std::exchange(m_outline, {.thinking = style::rowOutset});
    const int height = m_model.kind == Kind::user ? layQuestion(inner) : layParts(inner);
    m_outline.whole = height + 2 * style::rowOutset;
    return m_outline.whole;
}

int MessageRow::placeNow(int before) const {
    if (before >= m_outlineBefore.whole)
        return before - m_outlineBefore.whole + m_outline.whole;
    if (before >= m_outlineBefore.thinking)
        return before - m_outlineBefore.thinking + m_outline.thinking;
    if (!m_thinking || m_outline.thinking >= m_outlineBefore.thinking)
        return before;
    // Where the thinking shrinks under the reader, what will be left of it stays in sight.
    return std::min(before, m_thinking->geometry().bottom() + 1 - m_thinking->settledHeight());
}

int MessageRow::layQuestion(int width) {
    int height = 0;
    for (AttachmentChip *chip : m_attachments) {
        chip->setMaximumWidth(std::min(style::bubbleMaximumWidth, width));
        chip->resize(chip->sizeHint());
        chip->move(style::rowOutset + width - chip->width(), style::rowOutset + height);
        height += chip->height() + style::attachmentGap;
    }
    return m_text ? height + layBubble(height, width) : std::max(0, height - style::attachmentGap);
}

int MessageRow::layBubble(int top, int width) {
    const int widest = std::min(style::bubbleMaximumWidth, width) - 2 * style::bubblePaddingX;
    m_text->layIn(widest);
    const int used = m_text->sizeHint().width();
    const int height = m_text->layIn(used);
    const int left = style::rowOutset + width - style::bubblePaddingX - used;
    m_text->setGeometry(left, style::rowOutset + top + style::bubblePaddingY, used, height);
    return height + 2 * style::bubblePaddingY;
}

int MessageRow::layParts(int width) {
    int bottom = style::rowOutset;
    const auto topOfNext = [&bottom](int gap, int height) {
        const int top = bottom == style::rowOutset ? bottom : bottom + gap;
        bottom = top + height;
        return top;
    };
    if (m_thinking) {
        const int outer = width + 2 * style::rowOutset;
        const int height = m_thinking->layIn(outer);
        m_thinking->setGeometry(0, topOfNext(0, height), outer, height);
        m_outline.thinking = bottom + style::partGap;
    }
    if (m_text) {
        const int margin = m_text->margin();
        const int height = m_text->layIn(width + 2 * margin) - 2 * margin;
        const QRect area(style::rowOutset, topOfNext(style::partGap, height), width, height);
        m_text->setGeometry(grown(area, margin, margin));
    }
    if (m_extras) {
        const int height = m_extras->layIn(width + 2 * style::rowOutset);
        m_extras->setGeometry(0, topOfNext(m_extras->gapAbove(), height), width + 2 * style::rowOutset,
                              height);
    }
    if (m_model.hasFoot()) {
        const int top = topOfNext(style::footGap, style::footHeight);
        m_actions->setGeometry(0, top, width + 2 * style::rowOutset, style::footHeight);
        if (m_typing)
            m_typing->setGeometry(style::rowOutset, top, m_typing->sizeHint().width(), style::footHeight);
    }
    return bottom - style::rowOutset;
}

QString MessageRow::spokenName() const {
    switch (m_model.kind) {
    case Kind::user:
        return u"You"_s;
    case Kind::assistant:
        return u"Ostrelin"_s;
    case Kind::note:
        return u"Note"_s;
    }
    Q_UNREACHABLE();
}

void MessageRow::paintEvent(QPaintEvent *) {
    if (!m_text)
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isUser = m_model.kind == Kind::user;
    QRect area = m_text->textArea();
    if (isUser) {
        area = grown(area, style::bubblePaddingX, style::bubblePaddingY);
        painter.setPen(Qt::NoPen);
        painter.setBrush(m_look.palette().accent);
        painter.drawRoundedRect(area, style::radiusBubble, style::radiusBubble);
    }
    if (m_text->showsFocus())
        drawRing(painter, grown(area, style::rowOutset, style::rowOutset),
                 isUser ? style::radiusBubble + style::rowOutset : style::radiusButton,
                 m_look.palette().accent);
}

void MessageRow::setHovering(bool isHovering) {
    if (std::exchange(m_isHovering, isHovering) != isHovering)
        attend();
}

void MessageRow::enterEvent(QEnterEvent *) {
    Q_EMIT pointerCrossed();
}

void MessageRow::leaveEvent(QEvent *) {
    Q_EMIT pointerCrossed();
}

void MessageRow::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Up)
        Q_EMIT left(TextView::Edge::top);
    else if (event->key() == Qt::Key_Down)
        Q_EMIT left(TextView::Edge::bottom);
    else
        QWidget::keyPressEvent(event);
}

bool MessageRow::focusNextPrevChild(bool next) {
    const QList<QWidget *> stops = focusStops();
    const auto here = stops.indexOf(window()->focusWidget());
    QWidget *stop = here < 0 ? nullptr : stops.value(here + (next ? 1 : -1));
    if (!stop)
        return QWidget::focusNextPrevChild(next);
    stop->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    Q_EMIT caretMoved(QRect(stop->mapTo(this, QPoint()), stop->size()));
    return true;
}

QWidget *MessageRow::entry() const {
    return m_text ? m_text : focusStops().value(0);
}

QList<QWidget *> MessageRow::focusStops() const {
    QList<QWidget *> stops;
    if (m_thinking) {
        for (QWidget *button : m_thinking->buttons())
            stops.append(button);
    }
    if (m_text)
        stops.append(m_text);
    if (m_extras)
        stops.append(m_extras->stops());
    if (m_actions) {
        for (QWidget *button : m_actions->buttons())
            stops.append(button);
    }
    return stops;
}

void MessageRow::followFocus() {
    update();
    attend();
}

bool MessageRow::showsFocus() const {
    const QList<QWidget *> stops = focusStops();
    return std::any_of(stops.begin(), stops.end(), [](const QWidget *stop) {
        if (const auto *button = qobject_cast<const LookButton *>(stop))
            return button->showsFocus();
        return qobject_cast<const SelectableWidget *>(stop)->showsFocus();
    });
}

void MessageRow::attend() {
    if (m_actions)
        m_actions->setAttended(m_isHovering || showsFocus());
}
