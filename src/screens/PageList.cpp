#include "screens/PageList.h"

#include "pages/PageDate.h"
#include "screens/HouseStyle.h"
#include "screens/Look.h"
#include "screens/PlainTip.h"
#include "screens/ShownTitle.h"
#include "screens/Style.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr int idRole = Qt::UserRole;
constexpr int dateRole = Qt::UserRole + 1;

QUuid idOf(const QListWidgetItem *item) {
    return item ? item->data(idRole).toUuid() : QUuid();
}

/// A row without the gap to the next one, and where its text stands.
QRect framed(const QRect &row) {
    return row.adjusted(0, 0, 0, -style::chatRowGap);
}
QRect inside(const QRect &frame) {
    return frame.adjusted(style::chatRowPadding, style::pageRowPaddingY, -style::chatRowPadding,
                          -style::pageRowPaddingY);
}

} // namespace

/// Draws a page's row: its title, and below that its date.
class PageList::Delegate : public QStyledItemDelegate {
public:
    explicit Delegate(PageList &list) : QStyledItemDelegate(&list), m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override {
        const int lines = QFontMetrics(font(TextStyle::callout)).height() + style::pageRowLineGap +
                          QFontMetrics(font(TextStyle::caption)).height();
        return {0, lines + 2 * style::pageRowPaddingY + style::chatRowGap};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        const Palette &palette = m_list.m_look.palette();
        const QRect frame = framed(option.rect);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        if (isChosen || option.state.testFlag(QStyle::State_MouseOver)) {
            painter->setPen(Qt::NoPen);
            painter->setBrush(isChosen ? palette.marker() : palette.cardFill());
            painter->drawRoundedRect(frame, style::radiusMark, style::radiusMark);
        }
        drawLines(*painter, option.direction, inside(frame), index);
        if (m_list.showsFocus() && index == m_list.currentIndex())
            drawRing(*painter, frame, style::radiusMark, palette.accent);
        painter->restore();
    }

    bool helpEvent(QHelpEvent *event, QAbstractItemView *, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override {
        const QString title = index.data().toString();
        const int width = QFontMetrics(font(TextStyle::callout)).horizontalAdvance(title);
        const bool fits = width <= inside(framed(option.rect)).width();
        QToolTip::showText(event->globalPos(), fits ? QString() : plainTip(title), &m_list, option.rect);
        return true;
    }

private:
    QFont font(TextStyle style) const { return m_list.m_look.font(style); }

    void drawLines(QPainter &painter, Qt::LayoutDirection direction, const QRect &place,
                   const QModelIndex &index) const {
        const Palette &palette = m_list.m_look.palette();
        const auto drawLine = [&](const QString &text, TextStyle step, const QColor &ink,
                                  Qt::Alignment edge) {
            painter.setFont(font(step));
            painter.setPen(ink);
            const QString shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width());
            painter.drawText(
                place, int(QStyle::visualAlignment(direction, Qt::AlignLeft | edge)) | Qt::TextSingleLine,
                shown);
        };
        drawLine(index.data().toString(), TextStyle::callout, palette.ink, Qt::AlignTop);
        drawLine(index.data(dateRole).toString(), TextStyle::caption, palette.secondaryInk(),
                 Qt::AlignBottom);
    }

    PageList &m_list;
};

PageList::PageList(const Look &look, QWidget *parent) : QListWidget(parent), m_look(look) {
    setAccessibleName(u"Pages"_s);
    setItemDelegate(new Delegate(*this));
    setUniformItemSizes(true);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    setTabKeyNavigation(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        if (const QListWidgetItem *item = chosenItem())
            Q_EMIT chosen(idOf(item));
    });
    connect(&look, &Look::changed, this, [this] { scheduleDelayedItemsLayout(); });
}

void PageList::setPages(const QList<PageSummary> &pages) {
    const QSignalBlocker silence(this);
    const QUuid chosenID = idOf(chosenItem());
    const int row = currentRow();
    clear();
    for (const PageSummary &page : pages) {
        const QString title = shownTitle(page.title, u"Page");
        const QString date = shownDateAndTime(page.updatedAt);
        auto *item = new QListWidgetItem(title, this);
        item->setData(idRole, page.id);
        item->setData(dateRole, date);
        item->setData(Qt::AccessibleTextRole, QString(title + u", "_s + date));
        if (page.id == chosenID)
            setCurrentItem(item);
    }
    // The keyboard stays near where it was.
    if (!currentItem())
        setCurrentRow(std::min(row, count() - 1), QItemSelectionModel::NoUpdate);
}

QListWidgetItem *PageList::chosenItem() const {
    return selectedItems().value(0);
}

void PageList::openMenu(const QListWidgetItem *item, const QPoint &place) {
    auto *menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    HouseStyle::setDestructive(
        *menu->addAction(u"Delete"_s, this, [this, id = idOf(item)] { Q_EMIT deleteRequested(id); }));
    menu->popup(place);
}

QItemSelectionModel::SelectionFlags PageList::selectionCommand(const QModelIndex &index,
                                                               const QEvent *event) const {
    // The right button opens the menu, and only that.
    const bool isRight = event && event->isSinglePointEvent() &&
                         static_cast<const QSinglePointEvent *>(event)->button() == Qt::RightButton;
    return isRight ? QItemSelectionModel::NoUpdate : QListWidget::selectionCommand(index, event);
}

void PageList::focusInEvent(QFocusEvent *event) {
    m_keyFocus.take(event->reason());
    QListWidget::focusInEvent(event);
}

void PageList::keyPressEvent(QKeyEvent *event) {
    m_keyFocus.takeKey();
    if (opensMenu(*event) && currentItem())
        openMenu(currentItem(), viewport()->mapToGlobal(visualItemRect(currentItem()).center()));
    else if (event->matches(QKeySequence::Delete) && !event->isAutoRepeat() && chosenItem())
        Q_EMIT deleteRequested(idOf(chosenItem()));
    else
        QListWidget::keyPressEvent(event);
}

void PageList::contextMenuEvent(QContextMenuEvent *event) {
    const bool isByMouse = event->reason() == QContextMenuEvent::Mouse;
    const QListWidgetItem *item = isByMouse ? itemAt(event->pos()) : currentItem();
    if (item)
        openMenu(item,
                 isByMouse ? event->globalPos() : viewport()->mapToGlobal(visualItemRect(item).center()));
}
