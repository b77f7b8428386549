#include "screens/TextBox.h"

#include <algorithm>

TextBox::TextBox(const Look &look, const TextView::Style &style, int maximumHeight, QWidget *parent)
    : QScrollArea(parent),
      m_maximumHeight(maximumHeight),
      m_text(new TextView(look, style)) {
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(m_text);
    viewport()->setAutoFillBackground(false);
    m_text->setAutoFillBackground(false);
    m_text->setFocusPolicy(Qt::StrongFocus);
    setFocusPolicy(Qt::NoFocus);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(m_text, &TextView::caretMoved, this, [this](const QRect &caret) {
        ensureVisible(caret.center().x(), caret.center().y(), 0, caret.height());
    });
}

void TextBox::setText(const QString &text) {
    m_text->setText(text);
    updateGeometry();
}

QSize TextBox::sizeHint() const {
    return {m_text->sizeHint().width(), heightForWidth(width())};
}

int TextBox::heightForWidth(int width) const {
    // A layout may offer more than the box would take.
    return std::min(m_text->heightForWidth(std::min(width, maximumWidth())), m_maximumHeight);
}
