#include "TOLVGraphView.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/foundation/UserDefaults.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/text/NumberText.h"
#include "GraphSnapshot.h"
#include "LabelMargins.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

namespace {

/// White space around everything where a graph has no padding of its own, in points.
constexpr double kFittedPadding = 8.0;

std::string named(std::string_view type)
{
    return std::string(type);
}

/// A field of a table: separators and line ends in it would break the table.
std::string field(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
    return text;
}

std::size_t sampleCount(const TOLVGraphData& series)
{
    return series.X() && series.Y() ? std::min(series.X()->length(), series.Y()->length()) : 0;
}

} // namespace

TOLVGraphViewDataSource::~TOLVGraphViewDataSource() = default;

std::int32_t TOLVGraphViewDataSource::numberOfDataSetsInPlotView(TOLVGraphView&)
{
    return 0;
}

TOLVDataSet TOLVGraphViewDataSource::plotViewDataSetForIndex(TOLVGraphView&, std::int32_t)
{
    return {};
}

std::shared_ptr<TOLVGraphView> TOLVGraphView::initWithFrame(const Rect& frame)
{
    auto view = std::make_shared<TOLVGraphView>(ConstructionKey(), frame);
    view->setGraph(TOLVGraph::graph());
    return view;
}

TOLVGraphView::TOLVGraphView(ConstructionKey, const Rect& frame) : View(frame) {}

TOLVGraphView::~TOLVGraphView()
{
    stopObservingGraph(m_graph);
}

std::shared_ptr<TOLVGraphView> TOLVGraphView::copy() const
{
    auto view = initWithFrame(frame());
    view->setGraph(m_graph);
    view->setFitsMarginsToLabels(m_fitsMarginsToLabels);
    return view;
}

// Properties.

void TOLVGraphView::setDrawsBackground(bool draws)
{
    setProperty(m_drawsBackground, draws, "drawsBackground");
    setNeedsDisplay();
}

void TOLVGraphView::setFitsMarginsToLabels(bool fits)
{
    setProperty(m_fitsMarginsToLabels, fits, "fitsMarginsToLabels");
    m_fittedMargin.reset();
    setNeedsDisplay();
}

std::shared_ptr<TOLVGraphViewDataSource> TOLVGraphView::dataSource() const
{
    const std::lock_guard lock(m_dataSourceMutex);
    return m_dataSource;
}

void TOLVGraphView::setDataSource(std::shared_ptr<TOLVGraphViewDataSource> dataSource)
{
    const std::lock_guard lock(m_dataSourceMutex);
    m_dataSource.swap(dataSource);
}

void TOLVGraphView::setGraph(const std::shared_ptr<TOLVGraph>& graph)
{
    if (graph == m_graph)
        return;
    // Held by a copy: the caller's reference may be the one that is replaced.
    const auto former = std::exchange(m_graph, graph);
    stopObservingGraph(former);
    startObservingGraph(m_graph);
    m_fittedMargin.reset();
    setNeedsDisplay();
}

void TOLVGraphView::startObservingGraph(const std::shared_ptr<TOLVGraph>& graph)
{
    if (!graph)
        return;
    for (const std::string& keyPath : TOLVGraph::keyPathsOfPropertiesAffectingDisplay())
        m_graphTokens.push_back(graph->addObserver(keyPath, [this, keyPath](const PropertyChange&) { graphDidChangeKeyPathAffectingDisplay(keyPath); }));
}

void TOLVGraphView::stopObservingGraph(const std::shared_ptr<TOLVGraph>& graph)
{
    if (!graph)
        return;
    for (const ObserverToken token : std::exchange(m_graphTokens, {}))
        graph->removeObserver(token);
}

void TOLVGraphView::graphDidChangeKeyPathAffectingDisplay(std::string_view)
{
    setNeedsDisplay();
}

void TOLVGraphView::reloadData()
{
    willChangeValueForKey("canDrawGraph");
    if (m_graph)
        m_graph->clearGraphData();
    const auto source = dataSource();
    // The announcement stays open on purpose: there is nothing that could be drawn.
    if (!source || !source->hasDataSets())
        return;
    try {
        const std::int32_t count = source->numberOfDataSetsInPlotView(*this);
        for (std::int32_t i = 0; i < count; ++i) {
            TOLVDataSet set = source->plotViewDataSetForIndex(*this, i);
            if (!m_graph)
                continue;
            m_graph->addGraphData(TOLVGraphData::graphDataWithX(std::move(set.x), std::move(set.y), set.color, std::move(set.lineStyle)));
        }
    } catch (...) {
        didChangeValueForKey("canDrawGraph");
        throw;
    }
    didChangeValueForKey("canDrawGraph");
}

// Margins.

void TOLVGraphView::fitMargins()
{
    if (!m_graph || !m_graph->canDraw())
        return;
    if (m_graph->padding() == EdgeInsets{})
        m_graph->setPadding({kFittedPadding, kFittedPadding, kFittedPadding, kFittedPadding});
    useFittedMargins();
    fitMarginsToLabels(*m_graph, bounds(), m_growingScopes > 0 ? MarginFit::OnlyGrow : MarginFit::Exact);
    if (m_fitsMarginsToLabels)
        m_fittedMargin = m_graph->margin();
}

void TOLVGraphView::useFittedMargins()
{
    if (m_graph && m_fittedMargin && m_graph->margin() != *m_fittedMargin)
        m_graph->setMargin(*m_fittedMargin);
}

MarginsOnlyGrow::MarginsOnlyGrow(std::shared_ptr<TOLVGraphView> view) : m_view(std::move(view))
{
    if (!m_view)
        throw Exception("NullView", "Margins are those of a graph view");
    ++m_view->m_growingScopes;
}

MarginsOnlyGrow::~MarginsOnlyGrow()
{
    --m_view->m_growingScopes;
    if (m_view->fitsMarginsToLabels())
        m_view->setNeedsDisplay();
}

// Drawing.

void TOLVGraphView::drawRect(const Rect& dirtyRect)
{
    DrawingContext* context = currentContext();
    if (!context)
        return;
    if (m_graph && m_graph->needsReloadData())
        m_graph->reloadData();
    if (m_fitsMarginsToLabels)
        fitMargins();
    const GraphicsStateSaver saver(*context);
    Path::pathWithRect(dirtyRect).addClip();
    drawInRect(bounds());
}

void TOLVGraphView::drawInRect(const Rect& rect)
{
    DrawingContext* context = currentContext();
    if (!context)
        return;
    if (m_drawsBackground) {
        const GraphicsStateSaver saver(*context);
        Color::whiteColor().set();
        context->fillRect(bounds());
    }
    if (m_graph && m_graph->canDraw())
        m_graph->drawInRect(rect);
}

// Responding.

bool TOLVGraphView::becomeFirstResponder()
{
    setNeedsDisplay();
    return View::becomeFirstResponder();
}

bool TOLVGraphView::resignFirstResponder()
{
    setNeedsDisplay();
    return View::resignFirstResponder();
}

bool TOLVGraphView::validateUserInterfaceItem(const UserInterfaceItem& item) const
{
    return item.action != "copy" || (m_graph && !m_graph->graphData().empty());
}

void TOLVGraphView::setNilValueForKey(std::string_view key)
{
    if (key == "extentsLocked")
        setValueForKey(std::int64_t{0}, key);
}

bool TOLVGraphView::setPresentValueForKey(const PropertyValue& value, std::string_view key)
{
    const bool isLock = key == "extentsLocked";
    const bool isBackground = key == "drawsBackground";
    if (!isLock && !isBackground && key != "fitsMarginsToLabels")
        return View::setPresentValueForKey(value, key);
    const auto number = numberValue(value);
    if (!number)
        throw Exception("WrongValue", "The property \"" + std::string(key) + "\" is true or false");
    if (isLock)
        setExtentsLocked(*number != 0.0);
    else if (isBackground)
        setDrawsBackground(*number != 0.0);
    else
        setFitsMarginsToLabels(*number != 0.0);
    return true;
}

// Copying.

void TOLVGraphView::writePDFInsideRect(const Rect& rect, Pasteboard& toPasteboard)
{
    toPasteboard.setDataForType(dataWithPDFInsideRect(rect), kPasteboardTypePDF);
}

void TOLVGraphView::writeEPSInsideRect(const Rect& rect, Pasteboard& toPasteboard)
{
    toPasteboard.setDataForType(dataWithEPSInsideRect(rect), kPasteboardTypePostScript);
}

void TOLVGraphView::writeTIFFInsideRect(const Rect& rect, Pasteboard& toPasteboard)
{
    toPasteboard.setDataForType(dataInsideRect(rect, OutputKind::TIFF), kPasteboardTypeTIFF);
}

std::shared_ptr<TOLVGraphView> TOLVGraphView::snapshot()
{
    // The copied graph keeps these margins, whatever keeps them from shrinking.
    if (m_fitsMarginsToLabels)
        fitMargins();
    auto view = std::make_shared<TOLVGraphView>(ConstructionKey(), frame());
    view->setBoundsOrigin(bounds().origin);
    view->m_drawsBackground = m_drawsBackground;
    view->setGraph(m_graph ? snapshotOfGraph(*m_graph) : nullptr);
    return view;
}

void TOLVGraphView::writeDocument(OutputKind kind, std::string_view type, const std::shared_ptr<TOLVGraphView>& shown, Pasteboard& pasteboard)
{
    // Views that this one holds cannot be copied.
    if (!subviews().empty())
        pasteboard.setDataForType(dataInsideRect(bounds(), kind), type);
    else
        pasteboard.setProviderForType([shown, kind] { return shown->dataInsideRect(shown->bounds(), kind); }, type);
}

void TOLVGraphView::writeFurtherTypes(Pasteboard& pasteboard, Pasteboard::Data eps)
{
    pasteboard.addTypes({named(kPasteboardTypeEPS), named(kPasteboardTypeSVG), named(kPasteboardTypePNG), named(kPasteboardTypeText)});
    pasteboard.setDataForType(std::move(eps), kPasteboardTypeEPS);
    const auto shown = snapshot();
    writeDocument(OutputKind::SVG, kPasteboardTypeSVG, shown, pasteboard);
    writeDocument(OutputKind::PNG, kPasteboardTypePNG, shown, pasteboard);
    // Long series make long texts, which few ask for.
    auto series = shown->graph() ? shown->graph()->graphData() : TOLVGraph::Series();
    pasteboard.setProviderForType(
        [series = std::move(series)] {
            const std::string text = tabSeparatedData(series);
            const auto* bytes = reinterpret_cast<const std::byte*>(text.data());
            return Pasteboard::Data(bytes, bytes + text.size());
        },
        kPasteboardTypeText);
}

void TOLVGraphView::copy(const View*)
{
    const auto pasteboard = Pasteboard::generalPasteboard();
    pasteboard->declareTypes({named(kPasteboardTypePDF), named(kPasteboardTypePostScript), named(kPasteboardTypeTIFF)});
    const Size size = bounds().size;
    const auto fittedMargin = m_fittedMargin;
    const auto takeBackSize = [&] {
        setFrameSize(size);
        m_fittedMargin = fittedMargin;
        useFittedMargins();
    };
    const auto defaults = UserDefaults::standardUserDefaults();
    if (defaults->boolForKey(kUsesFixedCopySizeKey))
        setFrameSize({static_cast<double>(defaults->integerForKey(kFixedCopyWidthKey)), static_cast<double>(defaults->integerForKey(kFixedCopyHeightKey))});
    try {
        writePDFInsideRect(bounds(), *pasteboard);
        Pasteboard::Data eps = dataWithEPSInsideRect(bounds());
        pasteboard->setDataForType(eps, kPasteboardTypePostScript);
        writeTIFFInsideRect(bounds(), *pasteboard);
        writeFurtherTypes(*pasteboard, std::move(eps));
    } catch (...) {
        takeBackSize();
        throw;
    }
    if (defaults->boolForKey(kUsesFixedCopySizeKey))
        takeBackSize();
    pasteboard->finish();
}

std::string tabSeparatedData(const std::vector<std::shared_ptr<TOLVGraphData>>& graphData)
{
    auto series = graphData;
    std::erase(series, nullptr);
    if (series.empty())
        return {};
    std::string text;
    std::size_t rows = 0;
    for (std::size_t i = 0; i < series.size(); ++i) {
        text += (i ? "\t" : "") + std::string("x\t") + field(series[i]->name().value_or("y"));
        rows = std::max(rows, sampleCount(*series[i]));
    }
    text += '\n';
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t i = 0; i < series.size(); ++i) {
            text += i ? "\t" : "";
            if (row < sampleCount(*series[i]))
                text += shortestText(series[i]->X()->components()[row]) + "\t" + shortestText(series[i]->Y()->components()[row]);
            else
                text += '\t';
        }
        text += '\n';
    }
    return text;
}

} // namespace TOLVGraphing
