#pragma once

#include "pages/MarkdownBlock.h"

#include <QStringView>

/// What a fence makes. `info` is what stands behind the opening backticks, trimmed: the name
/// of a directive with, after a colon, its colour. A name that is none makes a block of code. `body` is
/// what stands between the fence lines, as it was written. Never fails: a row of the body that can't be
/// read is left out. The views are parts of the two. Any thread.
BlockContent directiveBlock(QStringView info, QStringView body);
