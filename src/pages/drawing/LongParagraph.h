#pragma once

#include <QStringView>

class QTextLayout;

/// Where a paragraph that is long beyond measure can be laid in pieces with nothing to see of it.
namespace longParagraph {

/// A piece is found in as many UTF-16 code units of the paragraph, so laying it costs at most that.
constexpr int pieceReach = 1024;

/// A paragraph of more than this was not written to be read, and is laid in pieces of as much however it
/// looks: the time for one that can't be divided grows with the square of its length.
constexpr int endless = 16 * pieceReach;

/// True if all of the text runs from the left, whatever comes after it. Text that turns is ordered in
/// one go and can't be laid in pieces.
bool runsFromTheLeft(QStringView text);

/// How many of the first lines of a layout stay as they are however the paragraph goes on, with the
/// text after them laid as if it stood alone. Zero if it can't be told apart anywhere. The layout is of
/// text that runs from the left.
int separableLines(const QTextLayout &layout);

/// How many of the first lines can be told from the rest at all.
int cuttableLines(const QTextLayout &layout);

} // namespace longParagraph
