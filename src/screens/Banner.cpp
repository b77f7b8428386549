#include "screens/Banner.h"

#include "screens/Icon.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/TextBox.h"
#include "screens/WordButton.h"

#include <QHBoxLayout>
#include <QPainter>

namespace {

constexpr double fillOpacity = 0.12;
constexpr int textLeft = style::spaceWide + style::iconSize + style::space;

} // namespace

Banner::Banner(const Look &look, const QString &action, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_text(new TextBox(look, {.text = TextStyle::callout}, style::noticeTextMaximumHeight, this)) {
    auto *button = new WordButton(look, action, WordButton::Tone::quiet, this);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(textLeft, style::space, style::space, style::space);
    row->setSpacing(style::spaceWide);
    row->addWidget(m_text, 1, Qt::AlignVCenter);
    row->addWidget(button, 0, Qt::AlignVCenter);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    connect(button, &WordButton::clicked, this, &Banner::actionRequested);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void Banner::setText(const QString &text) {
    m_text->setText(text);
}

void Banner::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor color = m_look.palette().bad();
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(color, fillOpacity));
    painter.drawRoundedRect(rect(), style::radiusCard, style::radiusCard);
    const double top = (height() - style::iconSize) / 2.0;
    drawIcon(painter, Icon::warning, QRectF(style::spaceWide, top, style::iconSize, style::iconSize), color);
}
