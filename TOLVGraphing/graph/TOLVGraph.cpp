#include "TOLVGraph.h"

#include "../axes/TOLVLineAxis.h"
#include "../axes/TOLVLinearAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../drawing/CurveGraphDrawing.h"
#include "../platform/text/TextSystem.h"

#include <array>
#include <typeinfo>
#include <utility>

namespace TOLVGraphing {

namespace {

const ArchiveClassRegistration registration("TOLVGraph", &TOLVGraph::initWithCoder);
// A program that reads a graph need not name the classes of its axes to have them linked in.
const ArchiveClassRegistration barAxisRegistration("TOLVBarAxis", &TOLVBarAxis::initWithCoder);
const ArchiveClassRegistration lineAxisRegistration("TOLVLineAxis", &TOLVLineAxis::initWithCoder);

/// The line height of a text in the attributes.
double fontHeight(const SharedTextAttributes& attributes)
{
    return textSystem()->lineHeight(attributes ? attributes->fontOrDefault() : Font());
}

std::shared_ptr<TOLVLineStyle> copied(const std::shared_ptr<const TOLVLineStyle>& style)
{
    return style ? style->copy() : nullptr;
}

bool isExactlyLogarithmic(const std::shared_ptr<TOLVAxis>& axis)
{
    if (!axis)
        return false;
    const TOLVAxis& object = *axis;
    return typeid(object) == typeid(TOLVLogarithmicAxis);
}

} // namespace

std::shared_ptr<TOLVGraph> TOLVGraph::graph()
{
    auto graph = std::make_shared<TOLVGraph>(ConstructionKey());
    graph->initialize();
    return graph;
}

TOLVGraph::TOLVGraph(ConstructionKey) {}

TOLVGraph::~TOLVGraph()
{
    // Without an announcement: whoever observes may be on its way out together with the graph.
    stopObservingExtents();
}

void TOLVGraph::initialize()
{
    setDrawingStrategy(std::make_shared<CurveGraphDrawing>());
    setExtents(std::make_shared<TOLVGraphExtents>());
    setTitleAttributes(makeTextAttributes(Font{"HelveticaNeue-Bold", 12.0}));
    setLabelAttributes(makeTextAttributes(Font{"HelveticaNeue", 14.0}, Color::blackColor()));
    setTickLabelAttributes(makeTextAttributes(Font{"HelveticaNeue-Light", 12.0}, Color::blackColor()));
    m_majorLineStyle = TOLVLineStyle::solidLineWithColor(Color::grayColor(), 1.0);
    m_minorLineStyle = TOLVLineStyle::solidLineWithColor(Color::lightGrayColor(), 0.5);
    m_horizontalAxis = std::make_shared<TOLVLinearAxis>(weak_from_this());
    m_verticalAxis = std::make_shared<TOLVLinearAxis>(weak_from_this());
    addObserver(
        "labelAttributes", [this](const PropertyChange&) { setLabelFontHeight(fontHeight(m_labelAttributes)); }, InitialDelivery::Yes);
    addObserver(
        "tickLabelAttributes", [this](const PropertyChange&) { setTickLabelFontHeight(fontHeight(m_tickLabelAttributes)); }, InitialDelivery::Yes);
}

std::shared_ptr<TOLVGraph> TOLVGraph::copy() const
{
    auto result = graph();
    result->m_markers = m_markers;
    result->m_markersAreEditable = false;
    result->m_margin = m_margin;
    result->m_padding = m_padding;
    result->m_title = m_title;
    result->setExtents(m_extents);
    result->m_graphDataArray = m_graphDataArray;
    // Stored without an announcement: the copy keeps the font heights of the default attributes.
    result->m_titleAttributes = m_titleAttributes;
    result->m_labelAttributes = m_labelAttributes;
    result->m_tickLabelAttributes = m_tickLabelAttributes;
    result->m_canZoomX = m_canZoomX;
    result->m_canZoomY = m_canZoomY;
    result->m_majorLineStyle = m_majorLineStyle;
    result->m_minorLineStyle = m_minorLineStyle;
    result->setHorizontalAxis(m_horizontalAxis);
    result->setVerticalAxis(m_verticalAxis);
    result->m_drawingStrategy = m_drawingStrategy;
    return result;
}

void TOLVGraph::encodeWithCoder(KeyedArchiver& coder) const
{
    coder.encodeObject(m_horizontalAxis.get(), "horizontalAxis");
    coder.encodeObject(m_verticalAxis.get(), "verticalAxis");
    coder.encodeObject(m_extents.get(), "extents");
    coder.encodeObjects({m_markers.begin(), m_markers.end()}, "markers");
}

std::shared_ptr<TOLVGraph> TOLVGraph::initWithCoder(KeyedUnarchiver& coder)
{
    auto result = graph();
    if (auto strategy = coder.decodeObject<TOLVGraphDrawing>("drawingStrategy", "a drawing strategy"))
        result->setDrawingStrategy(std::move(strategy));
    if (const auto axis = coder.decodeObject<TOLVAxis>("horizontalAxis", "an axis"))
        result->setHorizontalAxis(axis);
    if (const auto axis = coder.decodeObject<TOLVAxis>("verticalAxis", "an axis"))
        result->setVerticalAxis(axis);
    if (auto markers = coder.decodeObjects<TOLVMarker>("markers", "markers"))
        result->setMarkers(std::move(*markers));
    if (const auto extents = coder.decodeObject<TOLVGraphExtents>("extents", "an object of class TOLVGraphExtents"))
        result->setExtents(extents);
    return result;
}

// Properties.

void TOLVGraph::installAxis(std::shared_ptr<TOLVAxis>& axis, const std::shared_ptr<const TOLVAxis>& newAxis, std::string_view key)
{
    const PropertyChangeScope change(*this, std::string(key));
    axis = newAxis ? newAxis->copy() : nullptr;
    if (axis)
        axis->setGraph(weak_from_this());
}

void TOLVGraph::setHorizontalAxis(const std::shared_ptr<const TOLVAxis>& axis)
{
    installAxis(m_horizontalAxis, axis, "horizontalAxis");
}

void TOLVGraph::setVerticalAxis(const std::shared_ptr<const TOLVAxis>& axis)
{
    installAxis(m_verticalAxis, axis, "verticalAxis");
}

void TOLVGraph::setMajorLineStyle(const std::shared_ptr<const TOLVLineStyle>& style)
{
    setProperty(m_majorLineStyle, copied(style), "majorLineStyle");
}

void TOLVGraph::setMinorLineStyle(const std::shared_ptr<const TOLVLineStyle>& style)
{
    setProperty(m_minorLineStyle, copied(style), "minorLineStyle");
}

void TOLVGraph::setExtents(const std::shared_ptr<TOLVGraphExtents>& extents)
{
    if (extents == m_extents)
        return;
    const PropertyChangeScope change(*this, "extents");
    stopObservingExtents();
    m_extents = extents ? extents->copy() : nullptr;
    observeExtents();
}

void TOLVGraph::observeExtents()
{
    if (!m_extents)
        return;
    m_extents->setGraph(weak_from_this());
    constexpr std::array kKeys = {"x", "y", "z"};
    // No token may be lost once its observer is there.
    m_extentsTokens.reserve(kKeys.size());
    for (const char* key : kKeys) {
        m_extentsTokens.push_back(m_extents->addObserver(key, [this](const PropertyChange&) { const PropertyChangeScope change(*this, "canDraw"); }));
    }
}

void TOLVGraph::stopObservingExtents()
{
    if (!m_extents)
        return;
    m_extents->setGraph({});
    for (const ObserverToken token : std::exchange(m_extentsTokens, {}))
        m_extents->removeObserver(token);
}

void TOLVGraph::setMarkers(Markers markers)
{
    requireMarkers(markers, markers.size());
    m_markersAreEditable = true;
    setProperty(m_markers, std::move(markers), "markers");
}

double TOLVGraph::verticalTickLabelPadding() const
{
    return m_verticalAxis ? m_verticalAxis->tickLabelPadding() : 0.0;
}

void TOLVGraph::setVerticalTickLabelPadding(double padding)
{
    if (m_verticalAxis)
        m_verticalAxis->setTickLabelPadding(padding);
}

double TOLVGraph::horizontalTickLabelPadding() const
{
    return m_horizontalAxis ? m_horizontalAxis->tickLabelPadding() : 0.0;
}

void TOLVGraph::setHorizontalTickLabelPadding(double padding)
{
    if (m_horizontalAxis)
        m_horizontalAxis->setTickLabelPadding(padding);
}

// Series.

void TOLVGraph::addGraphData(std::shared_ptr<TOLVGraphData> data)
{
    if (data)
        m_graphDataArray.push_back(std::move(data));
}

void TOLVGraph::clearGraphData()
{
    m_graphDataArray.clear();
}

bool TOLVGraph::XIsLog() const
{
    return isExactlyLogarithmic(m_horizontalAxis);
}

bool TOLVGraph::YIsLog() const
{
    return isExactlyLogarithmic(m_verticalAxis);
}

// Announcements.

std::vector<std::string> TOLVGraph::keyPathsOfPropertiesAffectingDisplay()
{
    return {"canDraw"};
}

std::vector<std::string> TOLVGraph::keyPathsOfPropertiesAffectingReloadData()
{
    return {};
}

std::vector<std::string> TOLVGraph::keysAffectingValueOfKey(std::string_view key) const
{
    if (key == "labelFontHeight")
        return {"labelAttributes"};
    if (key == "tickLabelFontHeight")
        return {"tickLabelAttributes"};
    if (key == "canDraw")
        return {"extents"};
    return {};
}

} // namespace TOLVGraphing
