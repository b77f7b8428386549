#include "screens/AttachmentChip.h"

#include "screens/Look.h"
#include "screens/PlainTip.h"
#include "screens/Style.h"
#include "screens/SymbolButton.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
constexpr int textLeft = style::attachmentPaddingX + style::iconSize + style::attachmentSymbolGap;
}

AttachmentChip::AttachmentChip(const Look &look, const QString &name, Use use, QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_name(name) {
    Spoken::install();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&look, &Look::changed, this, [this] {
        updateGeometry();
        update();
    });
    if (use == Use::shown)
        return;
    m_remove = new SymbolButton(look, Icon::close, u"Remove"_s, this);
    m_remove->setAccessibleDescription(name);
    m_remove->setFocusPolicy(Qt::TabFocus);
    connect(m_remove, &LookButton::clicked, this, &AttachmentChip::removed);
}

int AttachmentChip::lineHeight(const Look &look) {
    const QFontMetrics metrics(look.font(TextStyle::callout));
    return std::max(metrics.height(), style::iconSize) + 2 * style::attachmentPaddingY;
}

QSize AttachmentChip::sizeHint() const {
    const QFontMetrics metrics(m_look.font(TextStyle::callout));
    return {textLeft + metrics.horizontalAdvance(shownName()) + textRight(), lineHeight(m_look)};
}

void AttachmentChip::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const Palette &palette = m_look.palette();
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.quietFill());
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    const double top = (height() - style::iconSize) / 2.0;
    drawIcon(painter, Icon::page, QRectF(style::attachmentPaddingX, top, style::iconSize, style::iconSize),
             palette.secondaryInk());
    painter.setFont(m_look.font(TextStyle::callout));
    painter.setPen(palette.ink);
    painter.drawText(rect().adjusted(textLeft, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, shownName());
}

void AttachmentChip::resizeEvent(QResizeEvent *) {
    if (m_remove)
        m_remove->setGeometry(width() - height(), 0, height(), height());
}

bool AttachmentChip::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const bool isCut = shownName() != m_name.simplified();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), isCut ? plainTip(m_name) : QString(),
                       this);
    return true;
}

int AttachmentChip::textRight() const {
    return m_remove ? lineHeight(m_look) : style::attachmentPaddingX;
}

QString AttachmentChip::shownName() const {
    const QFontMetrics metrics(m_look.font(TextStyle::callout));
    return metrics.elidedText(m_name.simplified(), Qt::ElideMiddle, maximumWidth() - textLeft - textRight());
}
