#pragma once

#include "pages/drawing/BarRowsView.h"

/// How far things have come, each in percent.
class ProgressListView : public BarRowsView {
public:
    explicit ProgressListView(const DrawingTheme &theme);

private:
    Bars barsOf(const BlockContent &content) const override;
};
