#include "screens/HouseStyle.h"

#include "screens/Icon.h"
#include "screens/Palette.h"
#include "screens/Style.h"

#include <QAction>
#include <QMenu>
#include <QPainter>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

constexpr double handleOpacity = 0.18;
constexpr double livelyHandleOpacity = 0.32;
constexpr double markOpacity = 0.1;
constexpr double edgeOpacity = 0.14;
constexpr int menuRadius = 7;
constexpr int markInset = 4;
constexpr int checkMark = 12;

constexpr const char *destructive = "destructive";

bool isDestructive(const QStyleOptionMenuItem &item, const QWidget *menu) {
    const auto *owner = qobject_cast<const QMenu *>(menu);
    const QAction *entry = owner ? owner->actionAt(item.rect.center()) : nullptr;
    return entry && entry->property(destructive).toBool();
}

QColor inkOf(const QStyleOption &option, double opacity) {
    return withOpacity(option.palette.color(QPalette::Normal, QPalette::WindowText), opacity);
}

void drawMark(QPainter &painter, const QRectF &area, const QColor &color, double radius) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(area, radius, radius);
    painter.restore();
}

void drawCheckMark(const QStyleOption &option, QPainter &painter) {
    QRectF sign(0, 0, checkMark, checkMark);
    sign.moveCenter(QRectF(option.rect).center());
    drawIcon(painter, Icon::check, sign, option.palette.color(QPalette::Normal, QPalette::WindowText));
}

void drawScrollBar(const QStyleOptionSlider &bar, const QRect &slider, QPainter &painter) {
    if (bar.maximum <= bar.minimum)
        return;
    const bool isVertical = bar.orientation == Qt::Vertical;
    const double inset = (style::scrollBar - style::scrollHandle) / 2.0;
    const QRectF handle = QRectF(slider).adjusted(isVertical ? inset : 0, isVertical ? 0 : inset,
                                                  isVertical ? -inset : 0, isVertical ? 0 : -inset);
    const bool isLively =
        bar.state.testFlag(QStyle::State_MouseOver) || bar.state.testFlag(QStyle::State_Sunken);
    drawMark(painter, handle, inkOf(bar, isLively ? livelyHandleOpacity : handleOpacity),
             style::scrollHandle / 2.0);
}

} // namespace

HouseStyle::HouseStyle() : QProxyStyle(u"fusion"_s) {}

void HouseStyle::setDestructive(QAction &entry) {
    entry.setProperty(destructive, true);
}

int HouseStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return style::scrollBar;
    case PM_ScrollBarSliderMin:
        return style::scrollHandleShortest;
    case PM_MenuBarPanelWidth:
        return 0;
    case PM_MenuBarVMargin:
    case PM_MenuBarHMargin:
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return markInset;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int HouseStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                          QStyleHintReturn *result) const {
    if (hint == SH_ScrollBar_Transient || hint == SH_UnderlineShortcut || hint == SH_EtchDisabledText)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

QRect HouseStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                 const QWidget *widget) const {
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || !bar)
        return QProxyStyle::subControlRect(control, option, part, widget);
    // A handle in a groove, without arrows.
    const bool isVertical = bar->orientation == Qt::Vertical;
    const int groove = isVertical ? bar->rect.height() : bar->rect.width();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    const qint64 natural = range > 0 ? qint64(groove) * bar->pageStep / (range + bar->pageStep) : groove;
    const int length =
        int(std::clamp<qint64>(natural, std::min(style::scrollHandleShortest, groove), groove));
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              groove - length, bar->upsideDown);
    const auto piece = [&](int from, int size) {
        return isVertical ? QRect(0, from, bar->rect.width(), size)
                          : QRect(from, 0, size, bar->rect.height());
    };
    switch (part) {
    case SC_ScrollBarGroove:
        return piece(0, groove);
    case SC_ScrollBarSlider:
        return piece(start, length);
    case SC_ScrollBarSubPage:
        return piece(0, start);
    case SC_ScrollBarAddPage:
        return piece(start + length, groove - start - length);
    default:
        return {};
    }
}

QSize HouseStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &contents,
                                   const QWidget *widget) const {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    return type == CT_MenuItem ? size + QSize(style::spaceLarge, markInset) : size;
}

void HouseStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                    QPainter *painter, const QWidget *widget) const {
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control == CC_ScrollBar && bar)
        drawScrollBar(*bar, subControlRect(control, option, SC_ScrollBarSlider, widget), *painter);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

void HouseStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const {
    const auto *item = qstyleoption_cast<const QStyleOptionMenuItem *>(option);
    if (element == CE_MenuBarEmptyArea || (element == CE_MenuBarItem && item)) {
        painter->fillRect(option->rect, option->palette.window());
        if (element == CE_MenuBarEmptyArea)
            return;
        if (item->state.testFlag(State_Selected))
            drawMark(*painter, item->rect, inkOf(*item, markOpacity), menuRadius);
        drawItemText(painter, item->rect, Qt::AlignCenter | Qt::TextHideMnemonic | Qt::TextSingleLine,
                     item->palette, true, item->text, QPalette::WindowText);
    } else if (element == CE_MenuItem && item && item->menuItemType != QStyleOptionMenuItem::Separator) {
        // Fusion marks the chosen item with the accent; here a touch of the ink is enough.
        QStyleOptionMenuItem calm = *item;
        // One mark for whatever is chosen, whether others may be chosen beside it or not.
        if (calm.checkType == QStyleOptionMenuItem::Exclusive)
            calm.checkType = QStyleOptionMenuItem::NonExclusive;
        if (item->state.testFlag(State_Selected) && item->state.testFlag(State_Enabled))
            drawMark(*painter, QRectF(item->rect), inkOf(*item, markOpacity), menuRadius - 2);
        calm.state &= ~State_Selected;
        if (isDestructive(*item, widget))
            calm.palette.setColor(QPalette::Text, calm.palette.color(QPalette::BrightText));
        QProxyStyle::drawControl(element, &calm, painter, widget);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void HouseStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const {
    if (element == PE_PanelMenu || element == PE_FrameMenu) {
        painter->fillRect(option->rect, option->palette.color(QPalette::AlternateBase));
        painter->setPen(inkOf(*option, edgeOpacity));
        painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    } else if (element == PE_IndicatorCheckBox && qobject_cast<const QMenu *>(widget)) {
        if (option->state.testFlag(State_On))
            drawCheckMark(*option, *painter);
    } else if (element != PE_PanelMenuBar) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}
