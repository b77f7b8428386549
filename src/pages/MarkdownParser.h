#pragma once

#include "pages/MarkdownBlock.h"

#include <QString>

/// Reads a text of the page dialect. Every text has a reading: what is malformed becomes the next
/// simpler thing that can be drawn. One pass, in time and memory linear in the text. Any thread.
QList<MarkdownBlock> parseMarkdownBlocks(const QString &text);
