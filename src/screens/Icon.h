#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// The program's own symbols: one line weight on a grid of sixteen, tinted as they are drawn.
<<<<<<< /tmp/row-src/src/screens/Icon.h
enum class Icon { arrowUp, chevron, chip, clock, download, information, page, palette, stop, trash, warning };
=======
enum class Icon {
    arrowUp,
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
>>>>>>> /tmp/h

/// Draws a symbol into a square area.
void drawIcon(QPainter &painter, Icon icon, const QRectF &area, const QColor &color);
