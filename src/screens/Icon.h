#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The program's own symbols: one line weight on a grid of sixteen, tinted as they are drawn.
enum class Icon {
    arrowUp,
    brain,
    check,
    chevron,
    chip,
    clock,
    close,
    download,
    gear,
    globe,
    information,
    magnifier,
    page,
    palette,
    paperclip,
    plus,
    richPage,
    sparkles,
    stop,
    trash,
    warning
};

/// Draws a symbol into a square area.
void drawIcon(QPainter &painter, Icon icon, const QRectF &area, const QColor &color);
