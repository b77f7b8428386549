#pragma once

#include "pages/MarkdownBlock.h"

#include <QStringList>

#include <iosfwd>

/// Blocks as text that a person can compare, one a line: `chart [Rent = 12.5] green`. Equal blocks have
/// equal descriptions, also those with a number that isn't equal to itself.
QString described(const QList<MarkdownBlock> &blocks);

/// What descriptions are made of.
QString quoted(QStringView text);
QString listed(const QStringList &items);
QString paired(QStringView left, QStringView right);
QString numbered(QStringView label, double value);

/// For what a failed expectation prints.
void PrintTo(const MarkdownBlock &block, std::ostream *stream);
