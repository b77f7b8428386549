#pragma once

#include <QStringView>
#include <QTextLayout>

/// Places in a text where its characters must be shaped one by one, as formats that change nothing.
///
/// Fonts such as Inter draw brackets, colons and dashes by other glyphs beside capitals and digits, and
/// "->" as an arrow ("calt" in the OpenType feature registry). Such a glyph stands for no character, so that
/// what is drawn into a PDF can't be found or copied there. The toolkit can't be told to leave the feature
/// out, but no glyph sees across the border of two formats.
///
/// Each costs the layout as much as a line of letters does, so that a text gets at most `mostGlyphsApart`:
/// what consists of such signs is nothing to be searched for.
QList<QTextLayout::FormatRange> glyphsApart(QStringView text);
inline constexpr qsizetype mostGlyphsApart = 256;
