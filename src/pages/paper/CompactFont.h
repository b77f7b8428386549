#pragma once

#include <QByteArray>
#include <QList>
#include <QPainterPath>
#include <QRectF>

/// What a glyph looks like, in thousandths of the size of its type: y goes up from the baseline.
struct GlyphOutline {
    QPainterPath path;
    int advance = 0;
};

/// The box around all of them.
QRectF boundsOf(const QList<GlyphOutline> &glyphs);

/// A font of these glyphs in Adobe's Compact Font Format (technical notes 5176 and 5177), keyed by
/// character identifiers that are the places in the list. The first glyph is the one for what is missing.
/// Needs one glyph at least and 65,535 at most. Any thread.
QByteArray compactFont(const QByteArray &name, const QList<GlyphOutline> &glyphs);
