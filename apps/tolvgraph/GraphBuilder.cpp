#include "GraphBuilder.h"

#include "OptionValues.h"
#include "SeriesLooks.h"

#include <desktop/input/CalendarDate.h>

#include <TOLVGraphing/drawing/CurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/drawing/TOLVDottedCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/text/DayDateFormatter.h>
#include <TOLVMath/TOLVRealVector.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>

namespace TOLVGraphing::app {

namespace {

/// The part of the y range that is left free on either side.
constexpr double kFreePart = 0.05;
/// Room for a callout above the highest point, as a part of the picture's height in points.
constexpr double kCalloutRoom = 26.0;
/// The free space behind the last sample of a curve, in points of the picture's width: room for the column that completes it.
constexpr double kSpaceBehindCurve = 4.0;
/// Curves of more samples fill every column; that the last column is missing cannot be seen in them.
constexpr std::size_t kMostSamplesCompleted = 100'000;
/// The widest step between abscissae may differ from the mean by this part before samples count as unevenly spaced.
constexpr double kEvenSpacingTolerance = 0.1;

struct Range {
    double from;
    double to;
};

double numberOrDate(const std::string& option, const std::string& text, bool isDate)
{
    if (const auto number = numberFromText(text))
        return *number;
    if (isDate) {
        const auto days = input::daysOfDate(text);
        if (days && std::isfinite(*days))
            return *days;
        throw UsageError(option, text, "a number or a date such as 2026-11-21");
    }
    throw UsageError(option, text, "a number");
}

/// An empty range gets some width, so that something can be seen.
Range widenedIfEmpty(Range range)
{
    if (range.from < range.to)
        return range;
    const double half = range.from == 0.0 ? 0.5 : std::abs(range.from) * 0.1;
    return {range.from - half, range.to + half};
}

Range chosenRange(const std::string& option, const std::optional<RangeText>& text, Range fitting, bool isDate)
{
    Range range = fitting;
    if (text && !text->from.empty())
        range.from = numberOrDate(option, text->from, isDate);
    if (text && !text->to.empty())
        range.to = numberOrDate(option, text->to, isDate);
    if (!(static_cast<float>(range.from) < static_cast<float>(range.to)))
        throw UsageError(option, text ? text->from + ":" + text->to : "", "an end greater than the start");
    return range;
}

class Builder {
public:
    Builder(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes)
        : m_files(files)
        , m_options(options)
        , m_notes(notes)
        , m_graph(TOLVGraph::graph())
    {
    }

    GraphSheet build()
    {
        addSeries();
        setStrategy();
        setExtents();
        completeCurves();
        setFormatters();
        setTexts();
        for (const std::string& marker : m_options.markers)
            m_graph->placeHorizontalAxisMarkerWithValue(numberOrDate("--marker", marker, xIsDate()));
        GraphSheet sheet(m_graph);
        sheet.setMargin(m_options.margin);
        if (m_options.legend)
            sheet.setLegendEntries(m_legend);
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
                m_legend.push_back({legendTitle(file, series, prefix), series.data->lineStyle()});
            }
        }
    }

    static std::string legendTitle(const FileSeries& file, const input::SelectedSeries& series, const std::string& prefix)
    {
        const std::string name = series.data->name().value_or("");
        if (prefix.empty())
            return name;
        return file.selection.series.size() == 1 ? prefix : prefix + ": " + name;
    }

    void setStrategy()
    {
        switch (m_options.drawing) {
        case DrawingKind::Curve: m_graph->setDrawingStrategy(std::make_shared<CurveGraphDrawing>()); break;
        case DrawingKind::PlainCurve: m_graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>()); break;
        case DrawingKind::Dotted: m_graph->setDrawingStrategy(std::make_shared<TOLVDottedCurveGraphDrawing>()); break;
        }
    }

    Range fittingX()
    {
        const Range data{static_cast<double>(m_graph->minXValue()), static_cast<double>(m_graph->maxXValue())};
        if (m_options.drawing == DrawingKind::Dotted)
            return widenedIfEmpty(cellsAround(data));
        const Range shown = widenedIfEmpty(data);
        return {shown.from, shown.to + (shown.to - shown.from) * kSpaceBehindCurve / m_options.size.width};
    }

    /// A curve draws a pixel column when the next one begins, so the last sample of a short series would be missing. A further sample close behind it, with its ordinate, begins that column and is not drawn
    /// itself.
    void completeCurves()
    {
        if (m_options.drawing == DrawingKind::Dotted)
            return;
        const auto& range = m_graph->extents()->x();
        const double step = (range->max() - range->min()) * 0.75 * kSpaceBehindCurve / m_options.size.width;
        for (const auto& series : m_graph->graphData()) {
            const std::size_t count = series->X()->length();
            const float last = series->X()->components()[count - 1];
            const auto next = static_cast<float>(std::min(range->max(), static_cast<double>(last) + step));
            if (count > kMostSamplesCompleted || !(last < next))
                continue;
            std::vector<float> x(series->X()->components(), series->X()->components() + count);
            std::vector<float> y(series->Y()->components(), series->Y()->components() + count);
            x.push_back(next);
            y.push_back(y.back());
            series->setX(TOLVRealVector::vectorWithComponents(std::move(x)));
            series->setY(TOLVRealVector::vectorWithComponents(std::move(y)));
        }
    }

    /// Dots stand in the middle of cells of equal width: with half a step on either side the axis tells where they are.
    Range cellsAround(Range data)
    {
        const auto first = m_graph->graphData().front();
        const std::size_t count = first->X()->length();
        const float* x = first->X()->components();
        if (count < 2)
            return data;
        const double step = (data.to - data.from) / static_cast<double>(count - 1);
        bool even = true;
        for (std::size_t i = 1; i < count && even; ++i)
            even = std::abs(static_cast<double>(x[i]) - static_cast<double>(x[i - 1]) - step) <= kEvenSpacingTolerance * step;
        for (const auto& series : m_graph->graphData())
            even = even && series->X()->length() == count;
        if (!even)
            m_notes.emplace_back("--draw dotted spreads the samples evenly, but their x values are not evenly spaced: the x axis does not tell where they are");
        return {data.from - step * 0.5, data.to + step * 0.5};
    }

    Range fittingY() const
    {
        const Range data = widenedIfEmpty({static_cast<double>(m_graph->minYValue()), static_cast<double>(m_graph->maxYValue())});
        const double span = data.to - data.from;
        const bool hasCallouts = m_options.drawing == DrawingKind::Curve && !m_options.markers.empty();
        const double above = hasCallouts ? std::max(kFreePart, kCalloutRoom / m_options.size.height) : kFreePart;
        return {data.from - span * kFreePart, data.to + span * above};
    }

    void setExtents()
    {
        const Range x = chosenRange("--x-range", m_options.xRange, fittingX(), xIsDate());
        const Range y = chosenRange("--y-range", m_options.yRange, fittingY(), false);
        m_graph->zoomXToFixedMin(static_cast<float>(x.from), static_cast<float>(x.to));
        m_graph->zoomYToFixedMin(y.from, y.to);
    }

    /// Major values stand on powers of ten only; where few of them are in range, minor values are labelled as well.
    static void labelMinorValuesWhereMajorOnesAreFew(TOLVAxis& axis)
    {
        constexpr double kFewMajorSteps = 4.0;
        const double span = axis.extents()->max() - axis.extents()->min();
        axis.setDrawsMinorLabels(span < kFewMajorSteps * std::pow(10.0, std::floor(std::log10(span))));
    }

    /// As many fraction digits as a tenth of the major step needs, and never fewer than the style's own three.
    static std::shared_ptr<NumberFormatter> decimalFormatter(const TOLVAxisExtents& range)
    {
        constexpr int kFewestDigits = 3;
        constexpr int kMostDigits = 18;
        const double span = range.max() - range.min();
        const double digits = std::clamp(1.0 - std::floor(std::log10(span)), 0.0, static_cast<double>(kMostDigits));
        return std::make_shared<NumberFormatter>(std::max(kFewestDigits, static_cast<int>(digits)));
    }

    void setFormatters()
    {
        if (xIsDate())
            m_graph->horizontalAxis()->setTickLabelFormatter(std::make_shared<DayDateFormatter>());
        else
            m_graph->horizontalAxis()->setTickLabelFormatter(decimalFormatter(*m_graph->extents()->x()));
        m_graph->verticalAxis()->setTickLabelFormatter(decimalFormatter(*m_graph->extents()->y()));
        labelMinorValuesWhereMajorOnesAreFew(*m_graph->horizontalAxis());
        labelMinorValuesWhereMajorOnesAreFew(*m_graph->verticalAxis());
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
    std::vector<LegendEntry> m_legend;
};

} // namespace

GraphSheet buildSheet(const std::vector<FileSeries>& files, const Options& options, std::vector<std::string>& notes)
{
    return Builder(files, options, notes).build();
}

} // namespace TOLVGraphing::app
