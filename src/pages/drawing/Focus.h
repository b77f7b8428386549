#pragma once

#include <QColor>
#include <QKeyEvent>
#include <QPainter>
#include <Qt>

/// How the windows show where the keyboard is, and what keys do everywhere.

/// The ring's weight in device-independent pixels.
inline constexpr int focusRingWeight = 2;

/// True if a focus that came for this reason is one to show: the person moves by keys.
inline bool isKeyboardReason(Qt::FocusReason reason) {
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

/// True if a focus that goes for this reason comes back at once.
inline bool isPassing(Qt::FocusReason reason) {
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

/// What a widget remembers of how the keyboard's focus came to it.
class KeyFocus {
public:
    /// The focus has come for that reason. Where it only comes back, it is as it was.
    void take(Qt::FocusReason reason) {
        if (!isPassing(reason))
            m_isByKey = isKeyboardReason(reason);
    }
    /// A key was pressed here.
    void takeKey() { m_isByKey = true; }

    /// True if it came by a key.
    bool isByKey() const { return m_isByKey; }

private:
    bool m_isByKey = false;
};

/// True for the keys that open a menu where the keyboard is; the toolkit knows only the key made for that.
inline bool opensMenu(const QKeyEvent &event) {
    return event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier;
}

/// Draws the ring just inside `area`.
inline void drawRing(QPainter &painter, const QRectF &area, double radius, const QColor &color) {
    const double inset = focusRingWeight / 2.0;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, focusRingWeight));
    painter.drawRoundedRect(area.adjusted(inset, inset, -inset, -inset), radius, radius);
}
