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

/// The formats that give the digits of a laid text the same room each. Each format costs the layout as much
/// as a line of letters does, so that a text gets at most `mostTabularDigits`: longer ones stand in no
/// column.
QList<QTextLayout::FormatRange> tabularFormats(const QFont &font, QStringView text);
inline constexpr qsizetype mostTabularDigits = 256;
