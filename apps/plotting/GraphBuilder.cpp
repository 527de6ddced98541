#include "GraphBuilder.h"

#include "Categories.h"
#include "OptionValues.h"
#include "PositiveSamples.h"
#include "SeriesLooks.h"
#include "TickFormats.h"
#include "VisibleRanges.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/axes/TOLVDateAxis.h>
#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/drawing/WholeCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <tuple>
#include <typeinfo>
#include <utility>

namespace TOLVGraphing::app {

namespace {

/// Numbers are shown in single precision.
Range narrowed(Range range)
{
    return {static_cast<double>(static_cast<float>(range.from)), static_cast<double>(static_cast<float>(range.to))};
}

template <typename Axis>
bool isExactly(const TOLVAxis& axis)
{
    return typeid(axis) == typeid(Axis);
}

bool isOfKind(const std::shared_ptr<TOLVAxis>& axis, AxisKind kind)
{
    if (!axis)
        return false;
    switch (kind) {
    case AxisKind::Linear: break;
    case AxisKind::Logarithmic: return isExactly<TOLVLogarithmicAxis>(*axis);
    case AxisKind::Bar: return isExactly<TOLVBarAxis>(*axis);
    case AxisKind::Line: return isExactly<TOLVLineAxis>(*axis);
    }
    return isExactly<TOLVLinearAxis>(*axis) || isExactly<TOLVDateAxis>(*axis);
}

/// A series for one graph: the samples and the name are shared, the style is its own.
std::shared_ptr<TOLVGraphData> ownSeries(const TOLVGraphData& series, std::shared_ptr<TOLVLineStyle> style)
{
    auto own = TOLVGraphData::graphDataWithX(series.X(), series.Y(), std::move(style));
    own->setName(series.name());
    return own;
}

class Builder {
public:
    Builder(std::shared_ptr<TOLVGraph> graph, const std::vector<FileSeries>& files, const Options& options, const KeptView& kept)
        : m_files(files)
        , m_options(options)
        , m_kept(kept)
        , m_dateOrigin(dateOriginOf(files))
        , m_graph(std::move(graph))
        , m_draft(TOLVGraph::graph())
        , m_notes(notesOnHiddenSamples(files, options))
    {
        if (options.hasCategories())
            m_categories.emplace(files);
        // Room is made for the markers that the graph will have.
        if (kept.markers)
            m_options.markers.resize(m_graph->countOfMarkers());
    }

    std::vector<LegendEntry> configure(std::vector<std::string>& notes)
    {
        // Whatever can fail comes before the first change.
        requireFewSeries();
        addSeriesToDraft();
        const Range fittingX = narrowed(visibleXRange(*m_draft, m_options, m_dateOrigin, m_notes));
        std::optional<Range> x;
        if (!keepsRange(m_kept.xRange, m_graph->horizontalAxis(), m_options.xAxis))
            x = fittingX;
        // Fitting y looks at every sample, so it is only done where it is needed.
        std::optional<Range> y;
        if (!keepsRange(m_kept.yRange, m_graph->verticalAxis(), m_options.yAxis))
            y = visibleYRange(*m_draft, m_options);
        const TOLVGraph::Markers markers = m_kept.markers ? TOLVGraph::Markers() : newMarkers(x.value_or(rangeOf(m_graph->horizontalAxis())));

        takeSeries();
        installAxes();
        setRanges(x, y);
        setTickFormats(*m_graph, m_options, m_dateOrigin, m_categories ? &*m_categories : nullptr);
        m_graph->setDrawingStrategy(strategy());
        setTexts();
        if (!m_kept.markers)
            replaceMarkers(markers);
        notes = std::move(m_notes);
        return std::move(m_legend);
    }

private:
    void addSeriesToDraft()
    {
        std::size_t position = 0;
        for (const FileSeries& file : m_files) {
            const std::string prefix = m_files.size() > 1 ? std::filesystem::path(file.file).filename().string() : "";
            for (const auto& series : file.selection.series) {
                const auto own = ownSeries(*series.data, lineStyleForSeries(position++, m_options));
                m_draft->addGraphData(own);
                m_legend.push_back({legendTitle(file, series, prefix), legendStyle(*own)});
            }
        }
    }

    void takeSeries()
    {
        m_graph->clearGraphData();
        for (const auto& series : m_draft->graphData())
            m_graph->addGraphData(series);
    }

    /// Bars are told by a piece as thick as a small bar.
    std::shared_ptr<const TOLVLineStyle> legendStyle(const TOLVGraphData& series) const
    {
        constexpr double kBarThickness = 6.0;
        if (m_options.drawing != DrawingKind::Bar)
            return series.lineStyle();
        return TOLVLineStyle::solidLineWithColor(series.color(), kBarThickness);
    }

    static std::string legendTitle(const FileSeries& file, const input::SelectedSeries& series, const std::string& prefix)
    {
        std::string name = series.data->name().value_or("");
        if (prefix.empty())
            return name;
        return file.selection.series.size() == 1 ? prefix : prefix + ": " + name;
    }

    /// Axes that stay get the texts of their categories; a new one draws the grid lines of the former one.
    void installAxes()
    {
        const auto& former = m_graph->horizontalAxis();
        if (!isOfKind(former, m_options.xAxis) || isExactly<TOLVDateAxis>(*former) != hasAxisOfDates())
            m_graph->setHorizontalAxis(inPlaceOf(former, hasAxisOfDates() ? std::make_shared<TOLVDateAxis>(m_graph) : axisOfKind(m_options.xAxis)));
        else if (m_options.hasCategories())
            std::static_pointer_cast<TOLVBarAxis>(m_graph->horizontalAxis())->setTickLabels(m_categories->texts());
        if (hasAxisOfDates())
            std::static_pointer_cast<TOLVDateAxis>(m_graph->horizontalAxis())->setOrigin(m_dateOrigin.value_or(0.0));
        if (!isOfKind(m_graph->verticalAxis(), m_options.yAxis))
            m_graph->setVerticalAxis(inPlaceOf(m_graph->verticalAxis(), axisOfKind(m_options.yAxis)));
    }

    /// Dates along x, unless they are to be written as other numbers, and numbers that are to be written as dates.
    bool hasAxisOfDates() const
    {
        return m_options.xAxis == AxisKind::Linear && m_options.xFormat.value_or(m_dateOrigin ? NumberStyle::Date : NumberStyle::Adaptive) == NumberStyle::Date;
    }

    static std::shared_ptr<TOLVAxis> inPlaceOf(const std::shared_ptr<TOLVAxis>& former, std::shared_ptr<TOLVAxis> axis)
    {
        if (former) {
            axis->setDrawsMajorLines(former->drawsMajorLines());
            axis->setDrawsMinorLines(former->drawsMinorLines());
        }
        return axis;
    }

    std::shared_ptr<TOLVAxis> axisOfKind(AxisKind kind) const
    {
        switch (kind) {
        case AxisKind::Linear: break;
        case AxisKind::Logarithmic: return std::make_shared<TOLVLogarithmicAxis>(m_graph);
        case AxisKind::Bar: return categoryAxis<TOLVBarAxis>();
        case AxisKind::Line: return categoryAxis<TOLVLineAxis>();
        }
        return std::make_shared<TOLVLinearAxis>(m_graph);
    }

    template <typename Axis>
    std::shared_ptr<Axis> categoryAxis() const
    {
        auto axis = std::make_shared<Axis>(m_graph);
        axis->setTickLabels(m_categories->texts());
        return axis;
    }

    static Range rangeOf(const std::shared_ptr<TOLVAxis>& axis)
    {
        const auto extents = axis ? axis->extents() : nullptr;
        return extents ? Range{extents->min(), extents->max()} : Range{};
    }

    bool keepsRange(bool isKept, const std::shared_ptr<TOLVAxis>& axis, AxisKind kind) const
    {
        return isKept && isOfKind(axis, kind) && canShowRange(*m_draft, rangeOf(axis), kind);
    }

    void setRanges(const std::optional<Range>& x, const std::optional<Range>& y)
    {
        if (!m_graph->extents())
            m_graph->setExtents(std::make_shared<TOLVGraphExtents>());
        if (x)
            m_graph->zoomXToFixedMin(static_cast<float>(x->from), static_cast<float>(x->to));
        if (y)
            m_graph->zoomYToFixedMin(y->from, y->to);
    }

    /// The values that line graphs show are written as those of the y axis, which has its formatter by now.
    std::shared_ptr<TOLVGraphDrawing> strategy() const
    {
        switch (m_options.drawing) {
        case DrawingKind::Curve: break;
        case DrawingKind::PlainCurve: return std::make_shared<WholeCurveGraphDrawing>(false);
        case DrawingKind::Dotted: return std::make_shared<TOLVDottedCurveGraphDrawing>();
        case DrawingKind::Line: return std::make_shared<LineGraphDrawing>(m_graph->verticalAxis()->tickLabelFormatter());
        case DrawingKind::Bar: return std::make_shared<BarGraphDrawing>();
        case DrawingKind::X: return std::make_shared<TOLVXGraphDrawing>();
        case DrawingKind::Impulse: return std::make_shared<TOLVVerticalLineGraphDrawing>();
        }
        return std::make_shared<WholeCurveGraphDrawing>();
    }

    /// Categories are marked by their text or their abscissa; outside of the visible ones there is nothing to mark.
    TOLVGraph::Markers newMarkers(Range visible) const
    {
        TOLVGraph::Markers markers;
        for (const std::string& text : m_options.markers) {
            const auto category = m_categories ? m_categories->abscissaOf(text) : std::nullopt;
            const double value = category ? *category : parseNumberOrDate("--marker", text, m_dateOrigin);
            if (!m_categories || (value >= visible.from && value <= visible.to))
                markers.push_back(TOLVMarker::markerWithValue(value));
        }
        return markers;
    }

    void requireFewSeries() const
    {
        std::size_t count = 0;
        for (const FileSeries& file : m_files)
            count += file.selection.series.size();
        if (count > kMaximumSeriesCount)
            throw UsageError("FILE", std::to_string(count) + " series", "at most " + std::to_string(kMaximumSeriesCount) + " in one graph; --y chooses some of them");
    }

    void replaceMarkers(const TOLVGraph::Markers& markers)
    {
        m_graph->setMarkers(markers);
        if (m_graph->undoManager())
            m_graph->undoManager()->removeAllActions();
    }

    static std::string withUnit(const std::string& name, const std::string& unit)
    {
        if (unit.empty() || name.empty())
            return name.empty() ? unit : name;
        return name + " (" + unit + ")";
    }

    /// The name that all files give their abscissae, or nothing.
    std::string commonXLabel() const
    {
        const auto& first = m_files.front().selection;
        const std::string label = withUnit(first.xName, first.xUnit);
        const bool same = std::all_of(m_files.begin(), m_files.end(), [&](const FileSeries& file) { return withUnit(file.selection.xName, file.selection.xUnit) == label; });
        return same ? label : "";
    }

    /// The only series' name, or the unit that all series share.
    std::string commonYLabel() const
    {
        std::string unit;
        bool isFirst = true;
        for (const FileSeries& file : m_files) {
            for (const auto& series : file.selection.series) {
                if (m_graph->graphData().size() == 1)
                    return withUnit(series.name, series.unit);
                if (!isFirst && series.unit != unit)
                    return "";
                unit = series.unit;
                isFirst = false;
            }
        }
        return unit;
    }

    void setTexts()
    {
        const auto text = [](const std::string& label) { return label.empty() ? std::nullopt : std::optional<std::string>(label); };
        m_graph->setTitle(text(m_options.title.value_or("")));
        m_graph->horizontalAxis()->setLabel(text(m_options.xLabel.value_or(commonXLabel())));
        m_graph->verticalAxis()->setLabel(text(m_options.yLabel.value_or(commonYLabel())));
    }

    const std::vector<FileSeries>& m_files;
    Options m_options;
    KeptView m_kept;
    std::optional<double> m_dateOrigin;
    std::shared_ptr<TOLVGraph> m_graph;
    /// Holds the new series while everything else is worked out.
    std::shared_ptr<TOLVGraph> m_draft;
    std::vector<std::string> m_notes;
    std::optional<Categories> m_categories;
    std::vector<LegendEntry> m_legend;
};

} // namespace

std::vector<LegendEntry> configureGraph(
    const std::shared_ptr<TOLVGraph>& graph, const std::vector<FileSeries>& files, const Options& options, const KeptView& kept, std::vector<std::string>& notes)
{
    return Builder(graph, files, options, kept).configure(notes);
}

bool needFilesBeReadAgain(const Options& former, const Options& wanted)
{
    const auto columns = [](const Options& options) { return std::tuple(options.files, options.x, options.y, options.hasCategories(), options.categoryColumn, options.channels); };
    return columns(former) != columns(wanted);
}

GraphSheet sheetOfGraph(std::shared_ptr<TOLVGraph> graph, std::vector<LegendEntry> legend, const Options& options)
{
    GraphSheet sheet(std::move(graph));
    sheet.setMargin(options.margin);
    if (options.legend)
        sheet.setLegendEntries(std::move(legend));
    return sheet;
}

void layoutSheet(GraphSheet& sheet, const Options& options, const Rect& rect)
{
    chooseMinorLabels(*sheet.graph(), options);
    // A margin that is asked for holds no distances that an earlier layout has fitted to the labels.
    if (options.margin) {
        sheet.graph()->setHorizontalTickLabelPadding(0.0);
        sheet.graph()->setVerticalTickLabelPadding(0.0);
    }
    sheet.layoutInRect(rect);
    dropUnevenMinorLabels(*sheet.graph(), sheet.graphRect());
}

GraphSheet buildSheet(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes)
{
    const auto graph = TOLVGraph::graph();
    GraphSheet sheet = sheetOfGraph(graph, configureGraph(graph, files, options, {}, notes), options);
    layoutSheet(sheet, options, {{}, options.size});
    return sheet;
}

} // namespace TOLVGraphing::app
