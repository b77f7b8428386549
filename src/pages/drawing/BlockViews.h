#pragma once

#include "pages/drawing/BlockView.h"

#include <memory>

/// A view for blocks of the kind of this one, without a block as yet. `theme` must outlive it.
std::unique_ptr<BlockView> makeBlockView(const BlockContent &like, const DrawingTheme &theme);

/// True if a view that was made for the one can show the other.
bool areOfOneKind(const BlockContent &one, const BlockContent &other);
