#include "screens/TextView.h"

#include "screens/Look.h"

#include <QPaintEvent>
#include <QPainter>

#include <cmath>

TextView::TextView(const Look &look, const Style &style, QWidget *parent)
    : SelectableWidget(parent),
      m_look(look),
      m_style(style) {
    Spoken::install();
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&look, &Look::changed, this, &TextView::takeLook);
    takeLook();
}

void TextView::setText(const QString &text) {
    if (m_flow.text().isSharedWith(text))
        return;
    const auto before = m_flow.height();
    const double changedFrom = m_flow.setText(text);
    keepSelectionInside();
    const auto bottom = std::max(before, m_flow.height());
    update(0, int(changedFrom), width(), int(std::ceil(bottom - changedFrom)) + 1);
    updateGeometry();
    if (QAccessible::isActive()) {
        QAccessibleEvent renamed(this, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}

int TextView::layIn(int width) {
    m_flow.setWidth(width);
    return int(std::ceil(m_flow.height()));
}

int TextView::usedWidth() const {
    return int(std::ceil(m_flow.usedWidth()));
}

QSize TextView::sizeHint() const {
    return {usedWidth(), int(std::ceil(m_flow.height()))};
}

int TextView::heightForWidth(int width) const {
    // A layout asks for many widths, and may then leave the widget as it is.
    const double before = m_flow.width();
    m_flow.setWidth(width);
    const double height = m_flow.height();
    m_flow.setWidth(before);
    return int(std::ceil(height));
}

void TextView::paintEvent(QPaintEvent *event) {
    QPainter painter(this);
    const Palette &palette = m_look.palette();
    const bool isOnAccent = m_style.ground == Ground::accent;
    const QColor plain = m_style.ink == Ink::main ? palette.ink : palette.secondaryInk();
    painter.setPen(isOnAccent ? palette.onAccent() : plain);
    m_flow.draw(painter, event->rect(), selection(),
                isOnAccent ? palette.selectionOnAccent() : palette.selection(),
                isOnAccent ? palette.onAccent() : palette.ink);
    if (showsFocus())
        painter.fillRect(m_flow.caretAt(selection().caret), painter.pen().color());
}

void TextView::resizeEvent(QResizeEvent *) {
    m_flow.setWidth(width());
}

void TextView::takeLook() {
    m_flow.setFormat(m_look.font(m_style.text), lineSpacing(m_look.text().size), m_style.alignment);
    updateGeometry();
    update();
}
