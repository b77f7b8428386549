#pragma once

#include "pages/drawing/Focus.h"
#include "screens/Palette.h"
#include "screens/Style.h"

#include <QPainter>
#include <QPen>

/// Draws what every field to write in has around it: the ground and the edge just inside `area`, and the ring
/// where it has the keyboard. Leaves the painter smoothing.
inline void drawFieldFrame(QPainter &painter, const QRectF &area, const Palette &palette, bool hasFocus) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(palette.surface);
    painter.setPen(QPen(palette.livelyEdge(), style::hairline));
    painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), style::radiusButton, style::radiusButton);
    if (hasFocus)
        drawRing(painter, area, style::radiusButton, palette.accent);
}
