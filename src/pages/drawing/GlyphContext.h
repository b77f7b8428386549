#pragma once

#include <QStringView>
#include <QTextLayout>

/// Places in a text where its characters must be shaped one by one, as formats that change nothing.
///
/// Fonts such as Inter draw some signs by other glyphs beside capitals and digits ("calt" in the OpenType
/// feature registry): "0x1F" with a sign of multiplication, "->" as an arrow, "=>" as another. What a model
/// wrote is to be read as it wrote it. The toolkit can't be told to leave the feature out, but no glyph sees
/// across the border of two formats.
///
/// Each costs the layout as much as a line of letters does, so that a text gets at most `mostGlyphsApart`:
/// what consists of such signs alone may be drawn as the font likes.
QList<QTextLayout::FormatRange> glyphsApart(QStringView text);
inline constexpr qsizetype mostGlyphsApart = 256;
