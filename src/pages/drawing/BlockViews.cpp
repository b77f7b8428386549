#include "pages/drawing/BlockViews.h"

#include "pages/drawing/BarChartView.h"
#include "pages/drawing/CalloutView.h"
#include "pages/drawing/CardsView.h"
#include "pages/drawing/CodeBlock.h"
#include "pages/drawing/ColoredRule.h"
#include "pages/drawing/CompareView.h"
#include "pages/drawing/DonutChartView.h"
#include "pages/drawing/FlowDiagramView.h"
#include "pages/drawing/LineChartView.h"
#include "pages/drawing/ListView.h"
#include "pages/drawing/MetricRow.h"
#include "pages/drawing/ProgressListView.h"
#include "pages/drawing/ProseView.h"
#include "pages/drawing/QuoteView.h"
#include "pages/drawing/RuleView.h"
#include "pages/drawing/SourcesView.h"
#include "pages/drawing/SpecView.h"
#include "pages/drawing/TableView.h"
#include "pages/drawing/TimelineListView.h"

namespace {

using View = std::unique_ptr<BlockView>;

/// A view of the class that a kind of block has.
struct ViewMaker {
    const DrawingTheme &theme;

    View operator()(const block::Paragraph &like) const { return std::make_unique<ProseView>(theme, like); }
    View operator()(const block::Heading &like) const { return std::make_unique<ProseView>(theme, like); }
    View operator()(const block::Subtitle &like) const { return std::make_unique<ProseView>(theme, like); }
    View operator()(const block::Bullet &) const { return list(ListView::Marker::bullet); }
    View operator()(const block::Numbered &) const { return list(ListView::Marker::number); }
    View operator()(const block::Quote &) const { return std::make_unique<QuoteView>(theme); }
    View operator()(const block::Code &) const { return std::make_unique<CodeBlock>(theme); }
    View operator()(const block::Divider &) const { return std::make_unique<ColoredRule>(theme); }
    View operator()(const block::Table &) const { return std::make_unique<TableView>(theme); }
    View operator()(const block::Metric &) const { return std::make_unique<MetricRow>(theme); }
    View operator()(const block::Chart &) const { return std::make_unique<BarChartView>(theme); }
    View operator()(const block::Line &) const { return std::make_unique<LineChartView>(theme); }
    View operator()(const block::Donut &) const { return std::make_unique<DonutChartView>(theme); }
    View operator()(const block::Progress &) const { return std::make_unique<ProgressListView>(theme); }
    View operator()(const block::Callout &) const { return std::make_unique<CalloutView>(theme); }
    View operator()(const block::Timeline &) const { return std::make_unique<TimelineListView>(theme); }
    View operator()(const block::Sources &) const { return std::make_unique<SourcesView>(theme); }
    View operator()(const block::Flow &) const { return std::make_unique<FlowDiagramView>(theme); }
    View operator()(const block::Compare &) const { return std::make_unique<CompareView>(theme); }
    View operator()(const block::Cards &) const { return std::make_unique<CardsView>(theme); }
    View operator()(const block::Spec &) const { return std::make_unique<SpecView>(theme); }
    View operator()(const block::Rule &) const { return std::make_unique<RuleView>(theme); }

    View list(ListView::Marker marker) const { return std::make_unique<ListView>(theme, marker); }
};

} // namespace

std::unique_ptr<BlockView> makeBlockView(const BlockContent &like, const DrawingTheme &theme) {
    return std::visit(ViewMaker{theme}, like);
}

bool areOfOneKind(const BlockContent &one, const BlockContent &other) {
    const auto *heading = std::get_if<block::Heading>(&one);
    const auto *otherHeading = std::get_if<block::Heading>(&other);
    if (heading && otherHeading)
        return (heading->level <= 2) == (otherHeading->level <= 2);
    return one.index() == other.index();
}
