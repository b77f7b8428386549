#pragma once

#include <QPainter>

/// Fills the area. An edge between two pixels is seen as such, so that a hairline stays in a picture that
/// is made smaller.
inline void fill(QPainter &painter, const QRectF &area, const QColor &color) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(area, color);
}
