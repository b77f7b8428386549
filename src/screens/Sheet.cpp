#include "screens/Sheet.h"

#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Shadow.h"
#include "screens/SheetBody.h"
#include "screens/Style.h"
#include "screens/TextView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

Sheet::Sheet(const Look &look, const QString &name, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_name(name),
      m_page(new QWidget(this)),
      m_texts(new QVBoxLayout),
      m_buttons(new QHBoxLayout),
      m_veil(style::sheetFade) {
    Spoken::install();
    hide();
    m_page->setFixedWidth(style::sheetWidth);
    m_texts->setSpacing(style::space);
    m_buttons->setSpacing(style::rowSpacing);
    m_buttons->addStretch();
    auto *column = new QVBoxLayout(m_page);
    constexpr int padding = style::sheetPadding;
    column->setContentsMargins(padding, padding, padding, padding);
    column->setSpacing(style::spaceLarge);
    column->addLayout(m_texts);
    column->addLayout(m_buttons);
    auto *middle = new QVBoxLayout(this);
    middle->addWidget(m_page, 0, Qt::AlignCenter);
    parent->installEventFilter(this);
    connect(&m_veil, &Glide::moved, this, qOverload<>(&QWidget::update));
    connect(&m_veil, &Glide::arrived, this, [this] { setVisible(m_isShown); });
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void Sheet::addHeading(const QString &text) {
    auto *heading = new Label(m_look, TextStyle::headline, Label::Ink::main, Label::Fit::wrapped, m_page);
    heading->setText(text);
    m_texts->addWidget(heading);
}

void Sheet::addParagraph(const QString &text) {
    auto *paragraph = new TextView(m_look, {.text = TextStyle::callout}, m_page);
    paragraph->setText(text);
    m_texts->addWidget(paragraph);
}

void Sheet::addField(const QString &name, QWidget *field) {
    auto *caption = new Label(m_look, TextStyle::caption, Label::Ink::secondary, Label::Fit::natural, m_page);
    caption->setText(name);
    auto *column = new QVBoxLayout;
    column->setSpacing(style::spaceTiny);
    column->addWidget(caption);
    column->addWidget(field);
    m_texts->addLayout(column);
    takeFirst(field);
}

void Sheet::addBody(QWidget *fields, QWidget *first) {
    m_texts->addWidget(new SheetBody(fields, m_page));
    takeFirst(first);
}

void Sheet::setPageWidth(int width) {
    m_page->setFixedWidth(width);
}

WordButton *Sheet::addButton(const QString &word, WordButton::Tone tone) {
    auto *button = new WordButton(m_look, word, tone, m_page);
    m_buttons->addWidget(button);
    takeFirst(button);
    return button;
}

WordButton *Sheet::addLeadingButton(const QString &word, WordButton::Tone tone) {
    auto *button = new WordButton(m_look, word, tone, m_page);
    m_buttons->insertWidget(0, button);
    return button;
}

void Sheet::takeFirst(QWidget *control) {
    if (!m_first)
        m_first = control;
}

void Sheet::setShown(bool isShown) {
    if (std::exchange(m_isShown, isShown) == isShown)
        return;
    if (isShown)
        appear();
    else
        disappear();
}

void Sheet::appear() {
    m_focusBefore = window()->focusWidget();
    cover();
    m_page->show();
    show();
    raise();
    m_veil.go(m_veil.value(), 1, m_look.motion());
    if (m_first)
        m_first->setFocus(Qt::OtherFocusReason);
    QAccessibleEvent opened(this, QAccessible::DialogStart);
    QAccessible::updateAccessibility(&opened);
}

void Sheet::disappear() {
    QWidget *const focused = window()->focusWidget();
    const bool hadFocus = isAncestorOf(focused);
    // A field is for keys, a button for both.
    const auto *button = qobject_cast<LookButton *>(focused);
    const bool isByKeys = !button || button->showsFocus();
    // The page goes at once, so that nothing of it can be pressed while the veil fades.
    if (hadFocus && m_focusBefore && m_focusBefore->isVisible())
        m_focusBefore->setFocus(isByKeys ? Qt::TabFocusReason : Qt::OtherFocusReason);
    else if (hadFocus)
        parentWidget()->setFocus(Qt::OtherFocusReason);
    m_page->hide();
    QAccessibleEvent closed(this, QAccessible::DialogEnd);
    QAccessible::updateAccessibility(&closed);
    m_veil.go(m_veil.value(), 0, m_look.motion());
}

QRect Sheet::page() const {
    return m_page->geometry();
}

void Sheet::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = m_look.palette();
    const QColor veil = palette.veil();
    painter.fillRect(rect(), withOpacity(veil, veil.alphaF() * m_veil.value()));
    if (!m_isShown)
        return;
    const QRectF box = page();
    drawShadow(painter, box, style::radiusBubble, palette.shadow());
    painter.setBrush(palette.background);
    painter.setPen(QPen(palette.livelyEdge(), style::hairline));
    painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), style::radiusBubble, style::radiusBubble);
}

void Sheet::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape && m_isShown)
        Q_EMIT escaped();
    else
        QWidget::keyPressEvent(event);
}

void Sheet::mousePressEvent(QMouseEvent *) {
    // The press ends here: what lies behind isn't for the mouse.
}

void Sheet::wheelEvent(QWheelEvent *event) {
    event->accept();
}

bool Sheet::focusNextPrevChild(bool next) {
    // Round and round within the page.
    QWidget *from = window()->focusWidget();
    if (!from || !isAncestorOf(from))
        from = m_first;
    if (!from)
        return true;
    const auto isStop = [this](const QWidget *widget) {
        return m_page->isAncestorOf(widget) && widget->isVisible() && widget->isEnabled() &&
               (widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy();
    };
    QWidget *to = from;
    do {
        to = next ? to->nextInFocusChain() : to->previousInFocusChain();
    } while (to != from && !isStop(to));
    to->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool Sheet::eventFilter(QObject *watched, QEvent *event) {
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        cover();
    return QWidget::eventFilter(watched, event);
}

void Sheet::cover() {
    setGeometry(parentWidget()->rect());
}
