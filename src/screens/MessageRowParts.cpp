/// The half of MessageRow that says which parts a row has, and what they show.

#include "pages/drawing/MarkdownWidget.h"
#include "screens/ActionLine.h"
#include "screens/AttachmentChip.h"
#include "screens/DrawingThemeOf.h"
#include "screens/Look.h"
#include "screens/MessageRow.h"
#include "screens/ReplyExtrasView.h"
#include "screens/ThinkingDisclosure.h"
#include "screens/TypingIndicator.h"

#include <QDesktopServices>

namespace {

using Kind = MessageRowModel::Kind;

TextView::Style textStyleOf(Kind kind) {
    if (kind == Kind::user)
        return {.ground = TextView::Ground::accent};
    return {.text = TextStyle::callout, .ink = TextView::Ink::secondary, .alignment = Qt::AlignHCenter};
}

} // namespace

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
