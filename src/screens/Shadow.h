#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

/// A soft shadow around a box with round corners: style::shadowReach wide and a little lower than the box.
void drawShadow(QPainter &painter, const QRectF &box, double radius, const QColor &step);
