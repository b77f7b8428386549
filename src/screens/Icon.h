#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The program's own symbols: one line weight on a grid of sixteen, tinted as they are drawn.
enum class Icon {
    arrowUp,
    chevron,
    chip,
    clock,
    close,
    download,
    information,
    page,
    palette,
    paperclip,
    stop,
    trash,
    warning
};

/// Draws a symbol into a square area.
void drawIcon(QPainter &painter, Icon icon, const QRectF &area, const QColor &color);
