// Any session with a graph: its series, ranges, axes, looks and markers are changed in any order and to anything, it is zoomed, asked, archived and drawn. What must hold after each step is written beside the checks.

#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include <TOLVGraphing/axes/AdaptiveNumberFormatter.h>
#include <TOLVGraphing/axes/SINumberFormatter.h>
#include <TOLVGraphing/axes/TOLVLineAxis.h>
#include <TOLVGraphing/axes/TOLVLinearAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/platform/foundation/Exception.h>
#include <TOLVGraphing/platform/foundation/Log.h>
#include <TOLVGraphing/platform/graphics/CurrentContext.h>
#include <TOLVGraphing/platform/graphics/NullContext.h>
#include <TOLVGraphing/platform/graphics/RecordingContext.h>
#include <TOLVGraphing/views/GraphDescription.h>
#include <TOLVGraphing/views/GraphInteraction.h>
#include <TOLVGraphing/views/GraphSheet.h>
#include <TOLVGraphing/views/GraphSnapshot.h>
#include <TOLVGraphing/views/TOLVPrintView.h>
#include <TOLVMath/TOLVRealVector.h>
#include <desktop/archive/PropertyListArchive.h>
#include <desktop/layout/LayoutJson.h>
#include <desktop/output/GraphicsOutput.h>
#include <desktop/output/PixelDrawing.h>
#include <desktop/text/PangoTextSystem.h>
#include <tests/support/BadData.h>
#include <tests/support/ChangingSamples.h>
#include <tests/support/CheckingContext.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TOLVGraphing::fuzzing {

namespace {

using testing_support::allStrategies;
using testing_support::CheckingContext;

constexpr int kMostSteps = 60;
constexpr int kMostPictures = 6;
constexpr std::size_t kMostSeries = 6;
constexpr std::size_t kMostMarkers = 12;
/// Of one series of random samples, and of one of a few thousand that a rule makes.
constexpr std::size_t kMostSamples = 24;
constexpr std::size_t kLongestSeries = 3000;

bool isSame(double a, double b)
{
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

bool isFiniteRange(const TOLVAxisExtents* range)
{
    return range && std::isfinite(range->min()) && std::isfinite(range->max());
}

bool isNumeric(const std::shared_ptr<TOLVAxis>& axis)
{
    return axis && !std::dynamic_pointer_cast<TOLVBarAxis>(axis);
}

/// The most ticks that a numeric axis may have over its length.
double mostTicks(const TOLVAxis& axis, double length)
{
    const double lines = std::max(length, 0.0) / 4.0;
    const auto* logarithmic = dynamic_cast<const TOLVLogarithmicAxis*>(&axis);
    if (!logarithmic)
        return std::max(1.5 * lines + 13.0, 36.0);
    // Near the end of single precision nothing has a position, and the depth is that of an axis with room for all lines.
    constexpr double kLongestAxis = 1e30;
    if (!(std::abs(length) <= kLongestAxis))
        return axis.extents()->min() > 0.0 ? 90.0 * (std::log10(axis.extents()->max() / axis.extents()->min()) + 2.0) : 0.0;
    if (logarithmic->minorValuesDepth() == 2)
        return lines + 2.0;
    return axis.majorValues().empty() ? 9.0 : 9.0 * (std::log10(axis.extents()->max() / axis.extents()->min()) + 2.0);
}

/// Does what the bytes of an input say. What is read stands in statements of its own, so that every compiler reads in the same order.
class Session {
public:
    explicit Session(InputReader& reader) : m_reader(reader) { m_graph->attachUndoManager(m_undoManager); }

    void run()
    {
        for (int step = 0; step < kMostSteps && !m_reader.isEmpty(); ++step) {
            this->step();
            requireSoundGraph();
        }
        draw(Rect(0.0, 0.0, 100.0, 70.0));
    }

private:
    // What a step is made of.

    Rect rect()
    {
        if (m_reader.yes())
            return m_reader.oneOf(testing_support::badRects()).rect;
        return {m_reader.interestingDouble(), m_reader.interestingDouble(), m_reader.interestingDouble(), m_reader.interestingDouble()};
    }

    Rect ordinaryRect() { return {0.0, 0.0, static_cast<double>(m_reader.below(250)), static_cast<double>(m_reader.below(150))}; }

    std::shared_ptr<TOLVAxisExtents> range()
    {
        if (m_reader.below(4) == 0)
            return nullptr;
        if (m_reader.yes()) {
            const auto bad = m_reader.oneOf(testing_support::badRanges());
            return TOLVAxisExtents::extentsWithMin(bad.min, bad.max);
        }
        const double min = m_reader.interestingDouble();
        return TOLVAxisExtents::extentsWithMin(min, m_reader.interestingDouble());
    }

    std::vector<float> samples()
    {
        if (m_reader.below(4) != 0)
            return m_reader.floats(m_reader.below(kMostSamples));
        std::vector<float> samples(m_reader.below(kLongestSeries));
        const float first = m_reader.interestingFloat();
        const float step = m_reader.interestingFloat();
        const std::size_t modulus = 1 + m_reader.below(65536);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = first + step * static_cast<float>(i * 7 % modulus);
        return samples;
    }

    TOLVGraphData::Samples vector()
    {
        switch (m_reader.below(8)) {
        case 0: return nullptr;
        case 1: return std::make_shared<testing_support::ChangingSamples>(samples());
        default: return TOLVRealVector::vectorWithComponents(samples());
        }
    }

    std::optional<Color> color()
    {
        if (m_reader.below(4) == 0)
            return std::nullopt;
        const double red = m_reader.interestingDouble();
        return Color(red, 0.5, 0.25, m_reader.yes() ? 1.0 : m_reader.interestingDouble());
    }

    std::shared_ptr<TOLVLineStyle> lineStyle()
    {
        if (m_reader.below(8) == 0)
            return nullptr;
        const auto strokeColor = color();
        auto style = TOLVLineStyle::solidLineWithColor(strokeColor, m_reader.yes() ? 1.0 : m_reader.interestingDouble());
        if (m_reader.below(4) == 0)
            style->setPatternValues(m_reader.floats(m_reader.below(5)));
        return style;
    }

    std::shared_ptr<TOLVGraphData> series()
    {
        if (m_reader.yes())
            return m_reader.oneOf(testing_support::badSeries()).series();
        auto x = vector();
        auto y = vector();
        auto data = TOLVGraphData::graphDataWithX(std::move(x), std::move(y), lineStyle());
        if (m_reader.yes())
            data->setName(m_reader.text(12));
        return data;
    }

    TOLVBarAxis::TickLabels tickLabels()
    {
        const std::size_t count = m_reader.below(40);
        return TOLVBarAxis::TickLabels(count, m_reader.text(8));
    }

    std::shared_ptr<TOLVAxis> axis()
    {
        std::shared_ptr<TOLVAxis> axis;
        switch (m_reader.below(8)) {
        case 0: return nullptr;
        case 1: axis = std::make_shared<TOLVBarAxis>(); break;
        case 2: axis = std::make_shared<TOLVLineAxis>(); break;
        case 3:
        case 4: axis = std::make_shared<TOLVLogarithmicAxis>(); break;
        default: axis = std::make_shared<TOLVLinearAxis>(); break;
        }
        if (const auto categories = std::dynamic_pointer_cast<TOLVBarAxis>(axis))
            categories->setTickLabels(tickLabels());
        axis->setDrawsMinorLabels(m_reader.yes());
        if (m_reader.yes())
            axis->setLabel(m_reader.text(8));
        return axis;
    }

    std::shared_ptr<TOLVAxis> axisOfGraph() { return m_reader.yes() ? m_graph->horizontalAxis() : m_graph->verticalAxis(); }

    void changeAxis()
    {
        const auto axis = axisOfGraph();
        if (!axis)
            return;
        switch (m_reader.below(7)) {
        case 0: axis->setTickLabelPadding(m_reader.interestingDouble()); break;
        case 1: axis->setDrawsMajorLines(m_reader.yes()); break;
        case 2: axis->setDrawsMinorLines(m_reader.yes()); break;
        case 3: axis->setTickLabelFormatter(std::make_shared<AdaptiveNumberFormatter>(axis)); break;
        case 4: axis->setTickLabelFormatter(nullptr); break;
        case 5: axis->setTickLabelFormatter(std::make_shared<NumberFormatter>()); break;
        default: axis->setTickLabelFormatter(std::make_shared<SINumberFormatter>(axis)); break;
        }
    }

    EdgeInsets insets() { return {m_reader.interestingDouble(), m_reader.interestingDouble(), m_reader.interestingDouble(), m_reader.interestingDouble()}; }

    SharedTextAttributes attributes()
    {
        if (m_reader.below(4) == 0)
            return nullptr;
        const Font font{m_reader.yes() ? "HelveticaNeue" : "No Such Face", m_reader.yes() ? 11.0 : m_reader.interestingDouble()};
        return makeTextAttributes(font, color());
    }

    std::shared_ptr<TOLVMarker> marker()
    {
        if (m_reader.below(16) == 0)
            return nullptr;
        auto marker = TOLVMarker::markerWithValue(m_reader.interestingDouble());
        marker->setAxisIndex(static_cast<std::int64_t>(m_reader.below(3)));
        return marker;
    }

    IndexSet positions()
    {
        std::vector<std::size_t> positions(m_reader.below(4));
        for (std::size_t& position : positions)
            position = m_reader.below(kMostMarkers + 2);
        return IndexSet(std::move(positions));
    }

    // The steps.

    void step()
    {
        switch (m_reader.below(24)) {
        case 0:
        case 1: addSeries(); break;
        case 2: changeSeries(); break;
        case 3: m_graph->clearGraphData(); break;
        case 4: m_graph->setDrawingStrategy(m_reader.below(8) == 0 ? nullptr : m_reader.oneOf(allStrategies()).make()); break;
        case 5: m_graph->setHorizontalAxis(axis()); break;
        case 6: m_graph->setVerticalAxis(axis()); break;
        case 7: setRanges(); break;
        case 8: m_reader.yes() ? m_graph->setMargin(insets()) : m_graph->setPadding(insets()); break;
        case 9: changeLooks(); break;
        case 10: changeAxis(); break;
        case 11:
        case 12: zoomOrPan(); break;
        case 13: fit(); break;
        case 14: ask(); break;
        case 15:
        case 16: editMarkers(); break;
        case 17: undoAndRedo(); break;
        case 18: archive(); break;
        case 19: interact(); break;
        case 20: drawElsewhere(); break;
        case 21: reportLayout(); break;
        default: draw(rect()); break;
        }
    }

    void addSeries()
    {
        if (m_graph->graphData().size() < kMostSeries)
            m_graph->addGraphData(series());
    }

    void changeSeries()
    {
        const auto allSeries = m_graph->graphData();
        if (allSeries.empty())
            return;
        const auto changed = m_reader.oneOf(allSeries);
        switch (m_reader.below(4)) {
        case 0: changed->setX(vector()); break;
        case 1: changed->setY(vector()); break;
        case 2: changed->setLineStyle(lineStyle()); break;
        default: changed->setColor(color()); break;
        }
    }

    void setRanges()
    {
        const auto extents = m_graph->extents();
        switch (m_reader.below(8)) {
        case 0: m_graph->setExtents(nullptr); break;
        case 1: m_graph->setExtents(m_graph->extentsFittingGraphData()); break;
        case 2: {
            const float min = m_reader.interestingFloat();
            m_graph->zoomXToFixedMin(min, m_reader.interestingFloat());
            break;
        }
        case 3: {
            const double min = m_reader.interestingDouble();
            m_graph->zoomYToFixedMin(min, m_reader.interestingDouble());
            break;
        }
        case 4: {
            const auto fresh = std::make_shared<TOLVGraphExtents>();
            fresh->setX(range());
            fresh->setY(range());
            m_graph->setExtents(fresh);
            break;
        }
        default:
            if (extents)
                m_reader.yes() ? extents->setX(range()) : extents->setY(range());
            break;
        }
    }

    void changeLooks()
    {
        switch (m_reader.below(7)) {
        case 0: m_graph->setTitle(m_reader.text(12)); break;
        case 1: m_graph->setTitleAttributes(attributes()); break;
        case 2: m_graph->setLabelAttributes(attributes()); break;
        case 3: m_graph->setTickLabelAttributes(attributes()); break;
        case 4: m_graph->setMajorLineStyle(lineStyle()); break;
        case 5: m_graph->setMinorLineStyle(lineStyle()); break;
        default: m_graph->setCanZoomX(m_reader.yes()); break;
        }
    }

    void zoomOrPan()
    {
        const Rect rect = m_reader.yes() ? this->rect() : ordinaryRect();
        const auto before = m_graph->extents() ? m_graph->extents()->copy() : nullptr;
        const std::size_t kind = m_reader.below(9);
        for (std::size_t times = 1 + m_reader.below(40); times > 0; --times) {
            switch (kind) {
            case 0: m_graph->zoomInXInRect(rect); break;
            case 1: m_graph->zoomOutXInRect(rect); break;
            case 2: m_graph->zoomInYInRect(rect); break;
            case 3: m_graph->zoomOutYInRect(rect); break;
            case 4: m_graph->zoomInXCenteredAtPoint(m_reader.interestingFloat(), rect); break;
            case 5: m_graph->zoomOutXCenteredAtPoint(m_reader.interestingFloat(), rect); break;
            case 6: m_graph->zoomInYCenteredAtPoint(m_reader.interestingFloat(), rect); break;
            case 7: m_graph->zoomOutYCenteredAtPoint(m_reader.interestingFloat(), rect); break;
            default: {
                const float x = m_reader.interestingFloat();
                m_graph->offsetDisplayByX(x, m_reader.interestingFloat(), rect);
                break;
            }
            }
        }
        if (!before)
            return;
        const bool zoomsX = kind < 2 || kind == 4 || kind == 5;
        requireKeptRange(before->x().get(), m_graph->extents()->x().get());
        requireKeptRange(before->y().get(), m_graph->extents()->y().get());
        if (zoomsX && !m_graph->canZoomX() && before->x())
            require(isSame(before->x()->min(), m_graph->extents()->x()->min()) && isSame(before->x()->max(), m_graph->extents()->x()->max()), "x does not zoom where it may not");
    }

    /// Steps and movements never make a range of numbers into one that is none.
    static void requireKeptRange(const TOLVAxisExtents* before, const TOLVAxisExtents* after)
    {
        if (isFiniteRange(before))
            require(isFiniteRange(after), "a finite range stays finite");
    }

    void fit()
    {
        m_reader.yes() ? m_graph->zoomToFitXInRect(rect()) : m_graph->zoomToFitYInRect(rect());
        const auto fitting = m_graph->extentsFittingGraphData();
        require(!std::isnan(fitting->y()->min()) && !std::isnan(fitting->y()->max()), "ordinates that are NaN are passed over");
        require(fitting->y()->min() <= fitting->y()->max() || fitting->y()->min() == static_cast<double>(std::numeric_limits<float>::max())
                || fitting->y()->max() == -static_cast<double>(std::numeric_limits<float>::max()),
            "the range of the ordinates is not reversed");
    }

    void ask()
    {
        const Rect rect = m_reader.yes() ? this->rect() : ordinaryRect();
        const float at = m_reader.interestingFloat();
        static_cast<void>(m_graph->valueForX(at, rect));
        static_cast<void>(m_graph->valueForY(at, rect));
        static_cast<void>(m_graph->XForValue(at, rect));
        static_cast<void>(m_graph->YForValue(at, rect));
        static_cast<void>(m_graph->deltaForX(at, rect));
        static_cast<void>(m_graph->deltaForY(at, rect));
        static_cast<void>(graphDescription(*m_graph));
        const double x = m_reader.interestingDouble();
        const std::int64_t index = m_graph->indexOfHorizontalAxisMarkerAtPoint(x, m_reader.interestingDouble(), rect);
        require(index == kNotFoundIndex || (index >= 0 && index < static_cast<std::int64_t>(m_graph->countOfMarkers())), "a marker that is found is in the list");
        for (const auto& data : m_graph->graphData()) {
            if (data->X() && data->Y())
                static_cast<void>(data->YValueAtX(at));
        }
    }

    void placeMarkerAtPoint()
    {
        const Rect rect = this->rect();
        m_graph->placeHorizontalAxisMarkerAtPoint(m_reader.interestingDouble(), rect);
    }

    void editMarkers()
    {
        const auto before = objectsOf(*m_graph);
        const bool isFull = m_graph->countOfMarkers() >= kMostMarkers;
        try {
            switch (m_reader.below(8)) {
            case 0:
                if (!isFull)
                    m_graph->placeHorizontalAxisMarkerWithValue(m_reader.interestingDouble());
                break;
            case 1:
                if (!isFull)
                    placeMarkerAtPoint();
                break;
            case 2:
            case 3: {
                const IndexSet positions = this->positions();
                TOLVGraph::Markers markers(m_reader.below(8) == 0 ? 1 : positions.count());
                for (auto& each : markers)
                    each = marker();
                if (!isFull)
                    m_graph->insertMarkers(markers, positions);
                break;
            }
            case 4: m_graph->removeMarkersAtIndexes(positions()); break;
            case 5: {
                const IndexSet positions = this->positions();
                TOLVGraph::Markers markers(positions.count());
                for (auto& each : markers)
                    each = marker();
                m_graph->replaceMarkersAtIndexes(positions, markers);
                break;
            }
            case 6:
                if (m_graph->countOfMarkers() > 0)
                    m_reader.oneOf(m_graph->markers())->setValue(m_reader.interestingDouble());
                break;
            default: {
                // Without a step of its own: what was registered before may no longer fit.
                TOLVGraph::Markers markers(m_reader.below(5));
                for (auto& each : markers)
                    each = marker();
                m_graph->setMarkers(std::move(markers));
                m_undoManager->removeAllActions();
                break;
            }
            }
        } catch (const Exception& error) {
            require(error.name() == "IndexOutOfRange" || error.name() == "NullMarker", "only wrong positions and markers are refused");
            require(objectsOf(*m_graph) == before, "a refused edit changes nothing");
        }
    }

    /// The objects in their order.
    static std::vector<const TOLVMarker*> objectsOf(const TOLVGraph& graph)
    {
        std::vector<const TOLVMarker*> objects;
        for (const auto& marker : graph.markers())
            objects.push_back(marker.get());
        return objects;
    }

    void undoAndRedo()
    {
        const std::size_t steps = 1 + m_reader.below(6);
        const auto before = objectsOf(*m_graph);
        std::size_t undone = 0;
        for (; undone < steps && m_undoManager->canUndo(); ++undone)
            m_undoManager->undo();
        const auto between = objectsOf(*m_graph);
        if (undone > 0)
            require(m_undoManager->canRedo(), "what was undone can be done again");
        const bool goesBack = m_reader.yes();
        for (std::size_t i = 0; i < undone; ++i)
            m_undoManager->redo();
        require(objectsOf(*m_graph) == before, "undo and redo lead back to the same markers");
        if (!goesBack)
            return;
        for (std::size_t i = 0; i < undone; ++i)
            m_undoManager->undo();
        require(objectsOf(*m_graph) == between, "undoing again gives the same markers");
    }

    void archive()
    {
        auto tree = KeyedArchiver::archivedObject(*m_graph);
        if (m_reader.yes())
            tree = archiveObjectFromPropertyList(propertyListData(tree));
        const auto read = std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(tree));
        require(read != nullptr, "an archive of a graph gives a graph");
        require(read->countOfMarkers() == m_graph->countOfMarkers(), "an archive keeps the markers");
        for (std::size_t i = 0; i < read->countOfMarkers(); ++i)
            require(isSame(read->markers()[i]->value(), m_graph->markers()[i]->value()) && read->markers()[i]->axisIndex() == m_graph->markers()[i]->axisIndex(),
                "an archive keeps markers as they are");
        requireSameRange(m_graph->extents() ? m_graph->extents()->x().get() : nullptr, read->extents()->x().get());
        requireSameRange(m_graph->extents() ? m_graph->extents()->y().get() : nullptr, read->extents()->y().get());
        if (m_graph->horizontalAxis())
            require(read->horizontalAxis()->archiveClassName() == m_graph->horizontalAxis()->archiveClassName(), "an archive keeps the kind of an axis");
        drawInto(*read, Rect(0.0, 0.0, 100.0, 70.0));
    }

    static void requireSameRange(const TOLVAxisExtents* written, const TOLVAxisExtents* read)
    {
        if (written)
            require(read && isSame(written->min(), read->min()) && isSame(written->max(), read->max()), "an archive keeps ranges to the last bit");
    }

    void interact()
    {
        const auto view = TOLVGraphView::initWithFrame(m_reader.yes() ? rect() : ordinaryRect());
        view->setGraph(m_graph);
        view->setFitsMarginsToLabels(m_reader.yes());
        GraphInteraction interaction(view);
        const auto point = [&] {
            return m_reader.yes() ? Point{m_reader.interestingDouble(), m_reader.interestingDouble()}
                                  : Point{static_cast<double>(m_reader.below(200)), static_cast<double>(m_reader.below(120))};
        };
        for (std::size_t i = m_reader.below(8); i > 0; --i) {
            const KeyModifiers modifiers{m_reader.yes(), m_reader.yes()};
            const PointerButton button = m_reader.yes() ? PointerButton::Primary : PointerButton::Secondary;
            switch (m_reader.below(7)) {
            case 0: interaction.pointerMoved(point()); break;
            case 1: interaction.pointerPressed(point(), button); break;
            case 2: interaction.pointerReleased(point(), button); break;
            case 3:
                if (m_graph->countOfMarkers() < kMostMarkers)
                    interaction.pointerDoubleClicked(point());
                break;
            case 4: {
                const double steps = m_reader.interestingDouble();
                interaction.wheelTurned(steps, point(), modifiers);
                break;
            }
            case 5: interaction.pointerLeft(); break;
            default:
                if (m_graph->countOfMarkers() < kMostMarkers)
                    interaction.keyPressed(static_cast<GraphKey>(m_reader.below(14)), modifiers);
                break;
            }
            static_cast<void>(interaction.readoutText());
            static_cast<void>(interaction.selectionBox());
            static_cast<void>(interaction.pointerLook());
        }
        NullContext null;
        CheckingContext context(null);
        view->displayInContext(context);
        require(context.isBalanced(), "a view restores what it saves");
    }

    static CheckingContext& drawInto(TOLVGraph& graph, const Rect& rect, CheckingContext& context)
    {
        const CurrentContextScope scope(context);
        graph.drawInRect(rect);
        require(context.isBalanced(), "every state that is saved is restored");
        return context;
    }

    static void drawInto(TOLVGraph& graph, const Rect& rect)
    {
        NullContext null;
        CheckingContext context(null);
        drawInto(graph, rect, context);
    }

    void draw(const Rect& rect)
    {
        NullContext null;
        CheckingContext context(null);
        drawInto(*m_graph, rect, context);
        std::size_t samples = 0;
        for (const auto& data : m_graph->graphData())
            samples += (data->X() ? data->X()->length() : 0) + (data->Y() ? data->Y()->length() : 0);
        // An axis has at most a few thousand ticks, and a sample a mark, a dot of thirteen points and its ring, a callout.
        require(context.calls() <= 20'000 + 20 * samples && context.points() <= 200'000 + 60 * samples, "a drawing is as long as the data and the axes");
        if (rect.valid()) {
            requireSoundTicks(m_graph->horizontalAxis(), m_graph->dataRectInRect(rect).width());
            requireSoundTicks(m_graph->verticalAxis(), m_graph->dataRectInRect(rect).height());
        }
    }

    void requireSoundTicks(const std::shared_ptr<TOLVAxis>& axis, double length) const
    {
        const bool isPrepared = m_graph->horizontalAxis() && m_graph->verticalAxis();
        if (!isPrepared || !isNumeric(axis) || !std::isfinite(length))
            return;
        const std::size_t count = axis->majorValues().size() + axis->minorValues().size();
        const auto range = axis->extents();
        if (!isFiniteRange(range.get()) || range->min() > range->max()) {
            require(count == 0, "a range that is reversed or no numbers has no ticks");
            return;
        }
        require(static_cast<double>(count) <= mostTicks(*axis, length), "the number of ticks follows the length of the axis");
        for (const auto* values : {&axis->majorValues(), &axis->minorValues()}) {
            require(std::ranges::all_of(*values, [](double value) { return std::isfinite(value); }), "ticks are numbers");
            require(std::is_sorted(values->begin(), values->end()), "ticks do not descend");
        }
    }

    /// On images, as documents, on pages: what takes its time is done a few times only.
    void drawElsewhere()
    {
        if (++m_pictures > kMostPictures)
            return;
        const Rect rect = m_reader.yes() ? this->rect() : ordinaryRect();
        switch (m_reader.below(6)) {
        case 0: {
            OutputSettings settings;
            settings.size = {120.0, 80.0};
            settings.scale = 1.0;
            const OutputKind kinds[] = {OutputKind::SVG, OutputKind::PDF, OutputKind::EPS, OutputKind::PNG};
            const OutputKind kind = m_reader.oneOf(kinds);
            const auto bytes = renderToBytes(kind, settings, [&](DrawingContext&, const Rect&) { m_graph->drawInRect(rect); });
            require(!bytes.empty(), "every graph gives a document");
            break;
        }
        case 1: {
            PrintInfo info;
            info.leftMargin = m_reader.interestingDouble();
            info.topMargin = m_reader.interestingDouble();
            const auto view = TOLVGraphView::initWithFrame(rect);
            view->setGraph(m_graph);
            const auto page = TOLVPrintView::initWithPrintInfo(info, *view, legendEntriesOfGraph(*m_graph));
            RecordingContext context;
            page->displayInContext(context);
            require(context.depth() == 0 && !context.hasUnmatchedRestore(), "a page restores what it saves");
            break;
        }
        case 2: {
            GraphSheet sheet(m_graph->copy());
            std::vector<LegendEntry> entries;
            for (const auto& data : m_graph->graphData())
                entries.push_back({data->name().value_or("series"), data->lineStyle()});
            sheet.setLegendEntries(std::move(entries));
            NullContext null;
            CheckingContext context(null);
            const CurrentContextScope scope(context);
            sheet.drawInRect(rect);
            require(context.isBalanced(), "a sheet restores what it saves");
            break;
        }
        case 3: {
            const auto snapshot = snapshotOfGraph(*m_graph);
            require(recorded(*snapshot, rect) == recorded(*m_graph, rect), "a snapshot draws what its graph draws");
            break;
        }
        default: {
            std::vector<std::uint32_t> pixels(std::size_t{140} * 100, 0xFFFFFFFFU);
            drawOnPixels({reinterpret_cast<unsigned char*>(pixels.data()), 140, 100, std::ptrdiff_t{140} * 4}, m_reader.yes() ? 1.0 : 1.5,
                [&](DrawingContext&) { m_graph->drawInRect(rect); });
            break;
        }
        }
    }

    static std::string recorded(TOLVGraph& graph, const Rect& rect)
    {
        RecordingContext context;
        const CurrentContextScope scope(context);
        graph.drawInRect(rect);
        return context.text();
    }

    void reportLayout()
    {
        const GraphLayout layout = m_graph->layoutInRect(m_reader.yes() ? rect() : ordinaryRect());
        require(!layoutJson(layout).empty(), "every layout has a report");
        for (const auto* axis : {&layout.horizontalAxis, &layout.verticalAxis}) {
            if (!*axis)
                continue;
            for (const LabelLayout& label : (*axis)->labels)
                require((label.fate == LabelFate::NotFinite) == !label.rect.valid() || label.fate == LabelFate::Outside, "a label without a place says so");
        }
    }

    /// What holds whatever was done.
    void requireSoundGraph() const
    {
        const auto ranges = m_graph->xExtentsConstrainedGraphDataRanges();
        if (!ranges)
            return;
        const auto allSeries = m_graph->graphData();
        require(ranges->size() == allSeries.size(), "each series has its visible range");
        for (std::size_t i = 0; i < ranges->size(); ++i) {
            const std::size_t length = allSeries[i]->X() ? allSeries[i]->X()->length() : 0;
            require((*ranges)[i].location <= length && (*ranges)[i].length <= length - (*ranges)[i].location, "a visible range lies in its series");
        }
    }

    InputReader& m_reader;
    std::shared_ptr<TOLVGraph> m_graph = TOLVGraph::graph();
    std::shared_ptr<UndoManager> m_undoManager = std::make_shared<UndoManager>();
    int m_pictures = 0;
};

} // namespace

Verdict tryInput(std::span<const std::byte> input)
{
    const TextSystemScope text(text::PangoTextSystem::shared());
    // Pages and lookups without a sample write to the log.
    const LogSinkScope log([](std::string_view) {});
    InputReader reader(input);
    Session(reader).run();
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
