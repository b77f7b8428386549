#include "screens/PaneList.h"

#include "screens/Look.h"
#include "screens/Style.h"

#include <QFocusEvent>
#include <QPainter>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace {

constexpr int nameLeft = style::rowSpacing + style::iconSize + style::rowSpacing;

/// Draws a pane's row: its symbol, its name, and the marker of the chosen one.
class PaneDelegate : public QStyledItemDelegate {
public:
    PaneDelegate(const Look &look, PaneList &list) : QStyledItemDelegate(&list), m_look(look), m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const override {
        const QFontMetrics metrics(m_look.font(TextStyle::callout));
        const int name = metrics.horizontalAdvance(index.data().toString());
        return {nameLeft + name + style::spaceTiny,
                std::max(style::paneRowHeight, metrics.height() + 2 * style::spaceSmall)};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        const Palette &palette = m_look.palette();
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        const bool isLively = option.state.testFlag(QStyle::State_MouseOver);
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(isChosen   ? palette.livelyFill()
                          : isLively ? palette.cardFill()
                                     : QColor(Qt::transparent));
        painter->drawRoundedRect(option.rect, style::radiusMark, style::radiusMark);
        const QRect &row = option.rect;
        const double top = row.top() + (row.height() - style::iconSize) / 2.0;
        drawIcon(*painter, iconOf(settingsPanes.at(size_t(index.row()))),
                 QRectF(row.left() + style::rowSpacing, top, style::iconSize, style::iconSize), palette.ink);
        painter->setFont(m_look.font(TextStyle::callout));
        painter->setPen(palette.ink);
        painter->drawText(row.adjusted(nameLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                          index.data().toString());
        if (isChosen && m_list.showsFocus())
            drawRing(*painter, option.rect, style::radiusMark, palette.accent);
    }

private:
    const Look &m_look;
    PaneList &m_list;
};

} // namespace

PaneList::PaneList(const Look &look, QWidget *parent) : QListWidget(parent) {
    setAccessibleName(u"Settings"_s);
    setFrameShape(QFrame::NoFrame);
    setItemDelegate(new PaneDelegate(look, *this));
    setMouseTracking(true);
    setSpacing(1);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    for (const SettingsPane pane : settingsPanes)
        addItem(nameOf(pane));
    connect(this, &QListWidget::currentRowChanged, this, [this] { Q_EMIT paneChanged(pane()); });
    connect(this, &QListWidget::itemSelectionChanged, this, &PaneList::followSelection);
    connect(&look, &Look::changed, this, [this] { scheduleDelayedItemsLayout(); });
}

void PaneList::followSelection() {
    QList<QListWidgetItem *> chosen = selectedItems();
    if (chosen.isEmpty() && currentItem())
        currentItem()->setSelected(true);
    chosen.removeAll(currentItem());
    if (!chosen.isEmpty())
        setCurrentItem(chosen.first());
}

SettingsPane PaneList::pane() const {
    return settingsPanes.at(size_t(std::max(0, currentRow())));
}

void PaneList::setPane(SettingsPane pane) {
    setCurrentRow(int(pane));
}

void PaneList::focusInEvent(QFocusEvent *event) {
    m_keyFocus.take(event->reason());
    QListWidget::focusInEvent(event);
}

void PaneList::keyPressEvent(QKeyEvent *event) {
    m_keyFocus.takeKey();
    QListWidget::keyPressEvent(event);
}
