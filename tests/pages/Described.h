#pragma once

#include "pages/MarkdownBlock.h"

#include <iosfwd>

/// Blocks as text that a person can compare, one a line: `chart [Rent = 12.5] green`. Equal blocks have
/// equal descriptions, also those with a number that isn't equal to itself.
QString described(const QList<MarkdownBlock> &blocks);

/// For what a failed expectation prints.
void PrintTo(const MarkdownBlock &block, std::ostream *stream);
