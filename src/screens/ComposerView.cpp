#include "screens/ComposerView.h"

#include "screens/AttachmentStrip.h"
#include "screens/ComposerTextView.h"
#include "screens/Look.h"
#include "screens/RoundButton.h"
#include "screens/Shadow.h"
#include "screens/SpeedChip.h"
#include "screens/Style.h"
#include "screens/SymbolButton.h"
#include "screens/ThinkModeChip.h"

#include <QAbstractTextDocumentLayout>
#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QTextDocument>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// The ring around the round button has its room inside the box's padding.
constexpr int ringRoom = style::focusRing + style::focusGap;
} // namespace

ComposerView::ComposerView(const Look &look, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_attachments(new AttachmentStrip(look, this)),
      m_text(new ComposerTextView(look, this)),
      m_speed(new SpeedChip(look, this)),
      m_think(new ThinkModeChip(look, this)),
      m_attach(new SymbolButton(look, Icon::paperclip, u"Attach a file"_s, this)),
      m_send(new RoundButton(look, Icon::arrowUp, u"Send message"_s, RoundButton::Tone::loud, this)),
      m_stop(new RoundButton(look, Icon::stop, u"Stop generating"_s, RoundButton::Tone::loud, this)) {
    constexpr int inset = style::shadowReach + style::composerPadding;
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(inset, inset, inset, inset - ringRoom);
    column->setSpacing(style::composerGap - ringRoom);
    auto *field = new QHBoxLayout;
    field->setContentsMargins(style::composerTextInset, style::composerTextInset / 2, 0, 0);
    field->addWidget(m_text);
    column->addWidget(m_attachments);
    column->addLayout(field);
    column->addLayout(makeTools());

    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAction(Action::send);
    m_text->installEventFilter(this);
    connect(m_text->document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &ComposerView::fitText);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
    tell();
    fitText();
}

QLayout *ComposerView::makeTools() {
    auto *tools = new QHBoxLayout;
    tools->setContentsMargins(0, 0, -ringRoom, 0);
    tools->setSpacing(style::chipGap);
    tools->addWidget(m_speed);
    tools->addWidget(m_think);
    tools->addStretch();
    tools->addWidget(m_attach);
    tools->addWidget(m_send);
    tools->addWidget(m_stop);
    // Who presses with the mouse goes on writing with the keys.
    for (LookButton *button : std::initializer_list<LookButton *>{m_speed, m_think, m_attach, m_send, m_stop})
        button->setFocusPolicy(Qt::TabFocus);
    return tools;
}

void ComposerView::tell() {
    connect(m_text, &ComposerTextView::textChanged, this,
            [this] { Q_EMIT textChanged(m_text->writtenText()); });
    connect(m_text, &ComposerTextView::submitted, this, &ComposerView::sendRequested);
    connect(m_text, &ComposerTextView::filesPasted, this, &ComposerView::filesPasted);
    connect(m_attachments, &AttachmentStrip::removed, this, &ComposerView::attachmentRemoved);
    connect(m_attachments, &AttachmentStrip::focusLost, this, &ComposerView::focusText);
    connect(m_speed, &SpeedChip::speedChosen, this, &ComposerView::speedChosen);
    connect(m_think, &ThinkModeChip::modeChosen, this, &ComposerView::thinkModeChosen);
    connect(m_attach, &LookButton::clicked, this, &ComposerView::attachRequested);
    connect(m_send, &RoundButton::clicked, this, &ComposerView::sendRequested);
    connect(m_stop, &RoundButton::clicked, this, &ComposerView::stopRequested);
}

void ComposerView::setText(const QString &text) {
    m_text->setWrittenText(text);
}

void ComposerView::setAction(Action action) {
    RoundButton *shown = action == Action::send ? m_send : m_stop;
    RoundButton *hidden = action == Action::send ? m_stop : m_send;
    const bool hadFocus = hidden->hasFocus();
    shown->show();
    // The focus must not wander off with the button that goes.
    if (hadFocus)
        shown->setFocus(hidden->showsFocus() ? Qt::TabFocusReason : Qt::OtherFocusReason);
    hidden->hide();
}

void ComposerView::setSpeed(ResponseSpeed speed) {
    m_speed->setSpeed(speed);
}

void ComposerView::setThinkMode(ThinkMode mode) {
    m_think->setMode(mode);
}

void ComposerView::setAttachments(const QList<Attachment> &attachments) {
    m_attachments->setAttachments(attachments);
}

void ComposerView::setIsTarget(bool isTarget) {
    m_isTarget = isTarget;
    update();
}

void ComposerView::setMaximumTextHeight(int height) {
    m_maximumTextHeight = height;
    fitText();
}

void ComposerView::focusText() {
    m_text->setFocus(Qt::OtherFocusReason);
}

void ComposerView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    constexpr int reach = style::shadowReach;
    const QRectF box = QRectF(rect()).adjusted(reach, reach, -reach, -reach);
    const Palette &palette = m_look.palette();
    drawShadow(painter, box, style::radiusBubble, palette.shadow());
    painter.setBrush(palette.background);
    painter.drawRoundedRect(box, style::radiusBubble, style::radiusBubble);
    painter.setBrush(palette.surface);
    const QColor rest = m_text->hasFocus() ? palette.livelyEdge() : palette.edge();
    painter.setPen(QPen(m_isTarget ? palette.accent : rest, style::hairline));
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), style::radiusBubble, style::radiusBubble);
}

void ComposerView::mousePressEvent(QMouseEvent *) {
    m_text->setFocus(Qt::MouseFocusReason);
}

void ComposerView::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape && !m_stop->isHidden())
        Q_EMIT stopRequested();
    else
        QWidget::keyPressEvent(event);
}

bool ComposerView::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    else if (event->type() == QEvent::Resize)
        fitText();
    return QWidget::eventFilter(watched, event);
}

void ComposerView::fitText() {
    const int line = QFontMetrics(m_text->font()).height();
    const int height = std::clamp(m_text->naturalHeight(), line, std::max(line, m_maximumTextHeight));
    if (m_text->height() == height && m_text->minimumHeight() == height)
        return;
    m_text->setFixedHeight(height);
    m_text->setVerticalScrollBarPolicy(m_text->naturalHeight() > height ? Qt::ScrollBarAsNeeded
                                                                        : Qt::ScrollBarAlwaysOff);
    updateGeometry();
}
