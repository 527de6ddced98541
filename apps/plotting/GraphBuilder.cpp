#include "GraphBuilder.h"

#include "Categories.h"
#include "OptionValues.h"
#include "PositiveSamples.h"
#include "SeriesLooks.h"
#include "TickFormats.h"
#include "VisibleRanges.h"

#include <TOLVGraphing/axes/TOLVBarAxis.h>
#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/BarGraphDrawing.h>
#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/LineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVVerticalLineGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVXGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

namespace TOLVGraphing::app {

namespace {

class Builder {
public:
    Builder(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes)
        : m_files(files)
        , m_options(options)
        , m_notes(notes)
        , m_graph(TOLVGraph::graph())
    {
        if (options.hasCategories())
            m_categories.emplace(files);
    }

    GraphSheet build()
    {
        addSeries();
        installAxes();
        m_notes = notesOnHiddenSamples(m_files, m_options);
        setRanges();
        completeCurves(*m_graph, m_options);
        setTickFormats(*m_graph, m_options, xIsDate(), m_categories ? &*m_categories : nullptr);
        m_graph->setDrawingStrategy(strategy());
        setTexts();
        for (const std::string& marker : m_options.markers)
            placeMarker(marker);
        GraphSheet sheet(m_graph);
        sheet.setMargin(m_options.margin);
        if (m_options.legend)
            sheet.setLegendEntries(m_legend);
        sheet.layoutInRect({{}, m_options.size});
        dropUnevenMinorLabels(*m_graph, sheet.graphRect());
        return sheet;
    }

private:
    bool xIsDate() const
    {
        return std::all_of(m_files.begin(), m_files.end(), [](const FileSeries& file) { return file.selection.xIsDate; });
    }

    void addSeries()
    {
        std::size_t position = 0;
        for (const FileSeries& file : m_files) {
            const std::string prefix = m_files.size() > 1 ? std::filesystem::path(file.file).filename().string() : "";
            for (const auto& series : file.selection.series) {
                series.data->setLineStyle(lineStyleForSeries(position++, m_options));
                m_graph->addGraphData(series.data);
                m_legend.push_back({legendTitle(file, series, prefix), legendStyle(*series.data)});
            }
        }
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
        const std::string name = series.data->name().value_or("");
        if (prefix.empty())
            return name;
        return file.selection.series.size() == 1 ? prefix : prefix + ": " + name;
    }

    void installAxes()
    {
        m_graph->setHorizontalAxis(axisOfKind(m_options.xAxis));
        m_graph->setVerticalAxis(axisOfKind(m_options.yAxis));
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

    template <typename Axis> std::shared_ptr<Axis> categoryAxis() const
    {
        auto axis = std::make_shared<Axis>(m_graph);
        axis->setTickLabels(m_categories->texts());
        return axis;
    }

    void setRanges()
    {
        const Range x = visibleXRange(*m_graph, m_options, xIsDate(), m_notes);
        const Range y = visibleYRange(*m_graph, m_options);
        m_graph->zoomXToFixedMin(static_cast<float>(x.from), static_cast<float>(x.to));
        m_graph->zoomYToFixedMin(y.from, y.to);
    }

    /// The values that line graphs show are written as those of the y axis, which has its formatter by now.
    std::shared_ptr<TOLVGraphDrawing> strategy() const
    {
        switch (m_options.drawing) {
        case DrawingKind::Curve: break;
        case DrawingKind::PlainCurve: return std::make_shared<TOLVCurveGraphDrawing>();
        case DrawingKind::Dotted: return std::make_shared<TOLVDottedCurveGraphDrawing>();
        case DrawingKind::Line: return std::make_shared<LineGraphDrawing>(m_graph->verticalAxis()->tickLabelFormatter());
        case DrawingKind::Bar: return std::make_shared<BarGraphDrawing>();
        case DrawingKind::X: return std::make_shared<TOLVXGraphDrawing>();
        case DrawingKind::Impulse: return std::make_shared<TOLVVerticalLineGraphDrawing>();
        }
        return std::make_shared<CurveGraphDrawing>();
    }

    /// Categories are marked by their text or their abscissa; outside of the visible ones there is nothing to mark.
    void placeMarker(const std::string& text)
    {
        const auto category = m_categories ? m_categories->abscissaOf(text) : std::nullopt;
        const double value = category ? *category : parseNumberOrDate("--marker", text, xIsDate());
        const auto& range = *m_graph->extents()->x();
        if (!m_categories || (value >= range.min() && value <= range.max()))
            m_graph->placeHorizontalAxisMarkerWithValue(value);
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
        const bool same = std::all_of(m_files.begin(), m_files.end(),
            [&](const FileSeries& file) { return withUnit(file.selection.xName, file.selection.xUnit) == label; });
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
    const Options& m_options;
    std::vector<std::string>& m_notes;
    std::shared_ptr<TOLVGraph> m_graph;
    std::optional<Categories> m_categories;
    std::vector<LegendEntry> m_legend;
};

} // namespace

GraphSheet buildSheet(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes)
{
    return Builder(files, options, notes).build();
}

} // namespace TOLVGraphing::app
