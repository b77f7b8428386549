#include "screens/Banner.h"

#include "screens/Icon.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/TextBox.h"
#include "screens/WordButton.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr int textLeft = style::spaceWide + style::iconSize + style::space;

Icon iconOf(Banner::Tone tone) {
    switch (tone) {
    case Banner::Tone::problem:
        return Icon::warning;
    case Banner::Tone::remark:
        return Icon::information;
    case Banner::Tone::offer:
        return Icon::download;
    }
    Q_UNREACHABLE();
}

} // namespace

Banner::Banner(const Look &look, Tone tone, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_tone(tone),
      m_text(new TextBox(look, {.text = TextStyle::callout}, style::noticeTextMaximumHeight, this)),
      m_parts(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      m_buttons(new QHBoxLayout) {
    Spoken::install();
    m_parts->setContentsMargins(textLeft, style::space, style::space, style::space);
    m_parts->setSpacing(style::space);
    m_parts->addWidget(m_text, 1, Qt::AlignVCenter);
    m_parts->addLayout(m_buttons);
    m_buttons->setSpacing(style::spaceSmall);
    // In a low window the text scrolls in less room.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(&look, &Look::changed, this, &Banner::takeLook);
    takeLook();
    setText({});
}

WordButton *Banner::addButton(const QString &word) {
    auto *button = new WordButton(m_look, word, WordButton::Tone::quiet, this);
    m_buttons->addWidget(button);
    placeButtons();
    return button;
}

void Banner::setText(const QString &text) {
    m_text->setText(text);
    setVisible(!text.isEmpty());
}

QString Banner::spokenName() const {
    return m_text->textView()->text();
}

void Banner::takeLook() {
    // However low the window is, there is a line to read.
    m_text->setMinimumHeight(QFontMetrics(m_look.font(TextStyle::callout)).height());
    placeButtons();
    update();
}

void Banner::resizeEvent(QResizeEvent *) {
    placeButtons();
}

void Banner::placeButtons() {
    const int beside = m_buttons->sizeHint().width() + m_parts->spacing();
    const int left = width() - textLeft - style::space - beside;
    const bool isNarrow = m_buttons->count() > 0 && left < style::noticeTextMinimumWidth;
    const auto direction = isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight;
    if (m_parts->direction() == direction)
        return;
    m_parts->setDirection(direction);
    m_buttons->setAlignment(isNarrow ? Qt::AlignLeft : Qt::AlignVCenter);
    updateGeometry();
}

void Banner::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = m_look.palette();
    const bool isProblem = m_tone == Tone::problem;
    painter.setPen(Qt::NoPen);
    painter.setBrush(isProblem ? palette.problemFill() : palette.bannerFill());
    painter.drawRoundedRect(rect(), style::radiusCard, style::radiusCard);
    const double top = (height() - style::iconSize) / 2.0;
    drawIcon(painter, iconOf(m_tone), QRectF(style::spaceWide, top, style::iconSize, style::iconSize),
             isProblem ? palette.bad() : palette.accent);
}
