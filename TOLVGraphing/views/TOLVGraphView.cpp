#include "TOLVGraphView.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"
#include "../platform/foundation/UserDefaults.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/text/NumberText.h"

#include <algorithm>
#include <utility>

namespace TOLVGraphing {

namespace {

std::string named(std::string_view type)
{
    return std::string(type);
}

/// A field of a table: separators and line ends in it would break the table.
std::string field(std::string text)
{
    std::replace_if(text.begin(), text.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; }, ' ');
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

TOLVGraphView::TOLVGraphView(ConstructionKey, const Rect& frame)
    : View(frame)
{
}

TOLVGraphView::~TOLVGraphView()
{
    stopObservingGraph(m_graph);
}

std::shared_ptr<TOLVGraphView> TOLVGraphView::copy() const
{
    auto view = initWithFrame(frame());
    view->setGraph(m_graph);
    return view;
}

// Properties.

void TOLVGraphView::setDrawsBackground(bool draws)
{
    setProperty(m_drawsBackground, draws, "drawsBackground");
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
    const std::int32_t count = source->numberOfDataSetsInPlotView(*this);
    for (std::int32_t i = 0; i < count; ++i) {
        TOLVDataSet set = source->plotViewDataSetForIndex(*this, i);
        if (!m_graph)
            continue;
        m_graph->addGraphData(TOLVGraphData::graphDataWithX(std::move(set.x), std::move(set.y), set.color, std::move(set.lineStyle)));
    }
    didChangeValueForKey("canDrawGraph");
}

// Drawing.

void TOLVGraphView::drawRect(const Rect& dirtyRect)
{
    DrawingContext* context = currentContext();
    if (!context)
        return;
    if (m_graph && m_graph->needsReloadData())
        m_graph->reloadData();
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
    if (!isLock && key != "drawsBackground")
        return View::setPresentValueForKey(value, key);
    const auto number = numberValue(value);
    if (!number)
        throw Exception("WrongValue", "The property \"" + std::string(key) + "\" is true or false");
    if (isLock)
        setExtentsLocked(*number != 0.0);
    else
        setDrawsBackground(*number != 0.0);
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

void TOLVGraphView::writeFurtherTypes(Pasteboard& pasteboard, Pasteboard::Data eps)
{
    pasteboard.addTypes({named(kPasteboardTypeEPS), named(kPasteboardTypeSVG), named(kPasteboardTypePNG), named(kPasteboardTypeText)});
    pasteboard.setDataForType(std::move(eps), kPasteboardTypeEPS);
    pasteboard.setDataForType(dataInsideRect(bounds(), OutputKind::SVG), kPasteboardTypeSVG);
    pasteboard.setDataForType(dataInsideRect(bounds(), OutputKind::PNG), kPasteboardTypePNG);
    // Long series make long texts, which few ask for. Copies of the series (with the same samples) are held, so that the text is that of the picture.
    auto series = m_graph ? m_graph->graphData() : TOLVGraph::Series();
    for (auto& one : series)
        one = std::make_shared<TOLVGraphData>(*one);
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
        setFrameSize(size);
        throw;
    }
    if (defaults->boolForKey(kUsesFixedCopySizeKey))
        setFrameSize(size);
    pasteboard->finish();
}

std::string tabSeparatedData(const std::vector<std::shared_ptr<TOLVGraphData>>& series)
{
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
