#pragma once

#include "pages/MarkdownBlock.h"

#include <QString>

/// The page dialect read as plainly as can be, without a thought of speed: what the parser is compared
/// with.
QList<MarkdownBlock> plainBlocksOf(const QString &text);

/// The same for the rule that hides a page while it streams.
QString plainlyHiddenPage(const QString &text);
