#pragma once

#include <QFontMetricsF>
#include <QPainter>
#include <QStringView>
#include <QTextLayout>

/// Text whose digits all take the same room, whatever the font makes of them, so that numbers stand in
/// columns and don't tremble as they change.

double tabularWidth(const QFontMetricsF &metrics, QStringView text);

/// Draws the text with the painter's font and pen, from the left end of its baseline.
void drawTabular(QPainter &painter, const QPointF &baseline, QStringView text);

/// The formats that give the digits of a laid text the same room each.
QList<QTextLayout::FormatRange> tabularFormats(const QFont &font, QStringView text);
