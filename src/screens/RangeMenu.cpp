#include "screens/RangeMenu.h"

#include "screens/Icon.h"
#include "screens/Look.h"
#include "screens/Style.h"

#include <QActionGroup>
#include <QFontMetrics>
#include <QMenu>
#include <QPainter>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {
constexpr int afterWord = style::spaceTiny + style::chevron + style::chatRowPadding;
}

RangeMenu::RangeMenu(const Look &look, QWidget *parent)
    : LookButton(look, {}, parent),
      m_menu(new QMenu(this)),
      m_choices(new QActionGroup(this)) {
    Spoken::install();
    const QString help = u"Show chats from"_s;
    setToolTip(help);
    setAccessibleDescription(help);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    for (const SessionRange range : sessionRanges) {
        QAction *choice = m_menu->addAction(labelOf(range), this, [this, range] { Q_EMIT picked(range); });
        choice->setCheckable(true);
        m_choices->addAction(choice);
    }
    connect(this, &QAbstractButton::clicked, this, &RangeMenu::openMenu);
}

void RangeMenu::openMenu() {
    // Under the word, from its beginning on.
    const int left = isRightToLeft() ? width() - m_menu->sizeHint().width() : 0;
    m_menu->popup(mapToGlobal(QPoint(left, height())));
}

void RangeMenu::setRange(SessionRange range) {
    m_choices->actions().at(int(range))->setChecked(true);
    setName(labelOf(range));
}

QSize RangeMenu::sizeHint() const {
    const QFontMetrics metrics(look().font(TextStyle::caption));
    return {style::chatRowPadding + metrics.horizontalAdvance(text()) + afterWord,
            metrics.height() + style::spaceSmall};
}

void RangeMenu::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const Palette &palette = look().palette();
    const QColor ink = byState(palette.secondaryInk(), palette.ink, palette.ink);
    const auto placed = [this](const QRect &area) {
        return QStyle::visualRect(layoutDirection(), rect(), area);
    };
    painter.setFont(look().font(TextStyle::caption));
    painter.setPen(ink);
    painter.drawText(placed(rect().adjusted(style::chatRowPadding, 0, -afterWord, 0)), Qt::AlignCenter,
                     text());
    const int left = width() - style::chevron - style::chatRowPadding;
    const int top = (height() - style::chevron) / 2 + 1;
    drawIcon(painter, Icon::chevron, placed({left, top, style::chevron, style::chevron}), ink);
    drawFocusRing(painter, rect(), style::radiusMark);
}
