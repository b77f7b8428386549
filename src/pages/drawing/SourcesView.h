#pragma once

#include "pages/drawing/ListView.h"

/// What a text stands on, each behind its number in brackets.
class SourcesView : public ListView {
public:
    explicit SourcesView(const DrawingTheme &theme) : ListView(theme, Marker::source) {}
};
