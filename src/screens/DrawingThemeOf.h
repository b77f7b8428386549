#pragma once

#include "pages/drawing/DrawingTheme.h"

class Look;

/// What the drawing of a reply takes from the windows' look.
DrawingTheme drawingThemeOf(const Look &look);
