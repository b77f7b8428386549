#include "screens/MessageRow.h"

#include "pages/drawing/Focus.h"
#include "pages/drawing/MarkdownWidget.h"
#include "screens/ActionLine.h"
#include "screens/AttachmentChip.h"
#include "screens/DrawingThemeOf.h"
#include "screens/Look.h"
#include "screens/ReplyExtrasView.h"
#include "screens/ThinkingDisclosure.h"
#include "screens/TypingIndicator.h"

#include <QDesktopServices>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

using Kind = MessageRowModel::Kind;

TextView::Style textStyleOf(Kind kind) {
    if (kind == Kind::user)
        return {.ground = TextView::Ground::accent};
    return {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignHCenter};
}

/// The line at a reply's foot has the dots first and the actions then, so that a reply that ends moves
/// nothing.
bool hasFoot(const MessageRowModel &model) {
    return model.isStreaming || model.hasActions();
}

/// How many lines a text takes if as many characters go into one. Between the blocks of a reply is less room
/// than an empty line takes.
double guessedLines(const MessageRowModel &model, double charactersInLine) {
    const double emptyLine = model.kind == Kind::assistant ? 0.5 : 1;
    double lines = 0;
    for (const QStringView line : QStringView(model.text).tokenize(u'\n'))
        lines += line.isEmpty() ? emptyLine : std::ceil(double(line.size()) / charactersInLine);
    return lines;
}

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
    if (hasFoot(m_model)) {
        const int top = topOfNext(style::footGap, style::footHeight);
        m_actions->setGeometry(0, top, width + 2 * style::rowOutset, style::footHeight);
        if (m_typing)
            m_typing->setGeometry(style::rowOutset, top, m_typing->sizeHint().width(), style::footHeight);
    }
    return bottom - style::rowOutset;
}

int MessageRow::estimatedHeight(const Look &look, const MessageRowModel &model, int width) {
    const QFontMetricsF metrics(look.font(TextStyle::body));
    const bool isUser = model.kind == Kind::user;
    const int inner = width - 2 * style::rowOutset;
    const int textWidth =
        isUser ? std::min(style::bubbleMaximumWidth, inner) - 2 * style::bubblePaddingX : inner;
    const double lines = guessedLines(model, std::max(textWidth, 1) / metrics.averageCharWidth());
    const int spacing = lineSpacing(look.text().size);
    const double text = lines * (metrics.height() + spacing) - spacing;
    const int foot = hasFoot(model) ? style::footGap + style::footHeight : 0;
    const int thinking =
        model.reasoning.isEmpty() ? 0 : ThinkingDisclosure::initialHeight(look) + style::partGap;
    const int chips =
        int(model.attachments.size()) * (AttachmentChip::lineHeight(look) + style::attachmentGap);
    const int bubble = isUser ? 2 * style::bubblePaddingY : 0;
    return 2 * style::rowOutset + chips + thinking + (model.text.isEmpty() ? 0 : int(text) + bubble) + foot +
           ReplyExtrasView::estimatedHeight(look, model.extras);
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

void MessageRow::showAttachments() {
    QStringList shown;
    for (const AttachmentChip *chip : m_attachments)
        shown.append(chip->name());
    if (shown == m_model.attachments)
        return;
    qDeleteAll(std::exchange(m_attachments, {}));
    for (const QString &name : m_model.attachments) {
        m_attachments.append(new AttachmentChip(m_look, name, AttachmentChip::Use::shown, this));
        m_attachments.last()->show();
    }
}

void MessageRow::showThinking() {
    if (m_model.reasoning.isEmpty())
        return delete std::exchange(m_thinking, nullptr);
    if (!m_thinking) {
        m_thinking = new ThinkingDisclosure(m_look, this);
        m_thinking->show();
        connect(m_thinking, &ThinkingDisclosure::heightChanged, this, &MessageRow::heightChanged);
        connect(m_thinking, &ThinkingDisclosure::focusChanged, this, &MessageRow::followFocus);
    }
    m_thinking->setReasoning(m_model.reasoning, m_model.isReasoningStreaming());
}

void MessageRow::showText() {
    if (m_model.text.isEmpty())
        return delete std::exchange(m_text, nullptr);
    if (!m_text) {
        m_text = newText();
        m_text->show();
        connect(m_text, &SelectableWidget::left, this, &MessageRow::left);
        connect(m_text, &SelectableWidget::focusChanged, this, &MessageRow::followFocus);
        connect(m_text, &SelectableWidget::caretMoved, this,
                [this](const QRect &caret) { Q_EMIT caretMoved(caret.translated(m_text->pos())); });
    }
    m_text->setText(m_model.text);
}

SelectableWidget *MessageRow::newText() {
    if (m_model.kind != Kind::assistant)
        return new TextView(m_look, textStyleOf(m_model.kind), this);
    auto *reply = new MarkdownWidget(drawingThemeOf(m_look), this);
    connect(&m_look, &Look::changed, reply, [this, reply] { reply->setTheme(drawingThemeOf(m_look)); });
    connect(reply, &MarkdownWidget::linkActivated, reply,
            [](const QUrl &address) { QDesktopServices::openUrl(address); });
    return reply;
}

void MessageRow::showTyping() {
    if (!m_model.isStreaming)
        return delete std::exchange(m_typing, nullptr);
    if (m_typing)
        return;
    m_typing = new TypingIndicator(m_look, this);
    m_typing->show();
}

void MessageRow::showExtras() {
    if (m_model.extras.isEmpty())
        return delete std::exchange(m_extras, nullptr);
    if (!m_extras) {
        m_extras = new ReplyExtrasView(m_look, this);
        m_extras->show();
        connect(m_extras, &RowPart::heightChanged, this, &MessageRow::heightChanged);
        connect(m_extras, &RowPart::focusChanged, this, &MessageRow::followFocus);
        connect(m_extras, &RowPart::left, this, &MessageRow::left);
        connect(m_extras, &ReplyExtrasView::pageOpened, this, &MessageRow::pageOpened);
        connect(m_extras, &ReplyExtrasView::pageRetried, this, &MessageRow::pageRetried);
        connect(m_extras, &ReplyExtrasView::searchAnswered, this, &MessageRow::searchAnswered);
        connect(m_extras, &ReplyExtrasView::pageAnswered, this, &MessageRow::pageAnswered);
        connect(m_extras, &ReplyExtrasView::memoryAnswered, this, &MessageRow::memoryAnswered);
    }
    m_extras->setExtras(m_model.extras);
}

void MessageRow::showActions() {
    if (m_model.kind != Kind::assistant)
        return;
    if (!m_actions) {
        m_actions = new ActionLine(m_look, m_clock, this);
        connect(m_actions, &ActionLine::copyRequested, this, &MessageRow::copyRequested);
        connect(m_actions, &ActionLine::regenerateRequested, this, &MessageRow::regenerateRequested);
        connect(m_actions, &ActionLine::focusChanged, this, &MessageRow::followFocus);
    }
    if (!m_model.hasActions())
        takeFocusFromActions();
    m_actions->setCanRegenerate(m_model.canRegenerate);
    m_actions->setOffered(m_model.hasActions());
}

void MessageRow::takeFocusFromActions() {
    QWidget *focused = window()->focusWidget();
    if (!m_actions->isAncestorOf(focused))
        return;
    if (m_text)
        m_text->setFocus(Qt::TabFocusReason);
    else
        focused->clearFocus();
}
