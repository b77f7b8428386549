#pragma once

#include <QStringView>

class QTextLayout;

/// Where a paragraph that is long beyond measure can be laid in pieces with nothing to see of it.
namespace longParagraph {

/// A piece is found in as many UTF-16 code units of the paragraph, so laying it costs at most that.
constexpr int pieceReach = 1024;

/// True if all of the text runs from the left, whatever comes after it. Text that turns is ordered in
/// one go and can't be laid in pieces.
bool runsFromTheLeft(QStringView text);

/// How many of the first lines of a layout stay as they are however the paragraph goes on, with the
/// text after them laid as if it stood alone. Zero if it can't be told apart anywhere. The layout is of
/// text that runs from the left.
int separableLines(const QTextLayout &layout);

} // namespace longParagraph
