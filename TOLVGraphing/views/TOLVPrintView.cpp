#include "TOLVPrintView.h"

#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Log.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <utility>

namespace TOLVGraphing {

namespace {

/// How many times as wide as high the plot is.
constexpr double kPlotAspect = 2.5;
constexpr double kLegendGap = 5.0;

Rect printableArea(const PrintInfo& info)
{
    const Rect area(0.0, 0.0, info.paperSize.width - (info.leftMargin + info.rightMargin), info.paperSize.height - (info.topMargin + info.bottomMargin));
    return area.valid() ? area : Rect();
}

double roundedToFloat(double length)
{
    return static_cast<double>(std::rint(static_cast<float>(length)));
}

/// Six decimals and a point, whatever the locale: "500.000000".
std::string decimals(double number)
{
    // The largest double has 309 digits before the point.
    std::array<char, 400> buffer{};
    return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed, 6).ptr};
}

/// "Printing portrait to rect (0.000000,0.000000,500.000000,700.000000)".
std::string pageText(const Rect& page)
{
    const std::string orientation = page.width() > page.height() ? "landscape" : "portrait";
    return "Printing " + orientation + " to rect (" + decimals(page.x()) + "," + decimals(page.y()) + "," + decimals(page.width()) + "," + decimals(page.height()) + ")";
}

} // namespace

TOLVPrintView::TOLVPrintView(const PrintInfo& printInfo) : View(printableArea(printInfo)), m_printInfo(printInfo) {}

std::shared_ptr<TOLVPrintView> TOLVPrintView::initWithPrintInfo(const PrintInfo& printInfo, const TOLVGraphView& view, Entries entries)
{
    auto page = std::make_shared<TOLVPrintView>(printInfo);
    page->m_plotView = view.copy();
    page->m_entries = std::move(entries);
    return page;
}

void TOLVPrintView::setPrintInfo(const PrintInfo& printInfo)
{
    if (m_printInfo == printInfo)
        return;
    m_printInfo = printInfo;
    setNeedsDisplay();
}

void TOLVPrintView::setEntries(Entries entries)
{
    if (m_entries == entries)
        return;
    m_entries = std::move(entries);
    setNeedsDisplay();
}

void TOLVPrintView::setPlotView(const std::shared_ptr<const TOLVGraphView>& view)
{
    if (m_plotView)
        m_plotView->removeFromSuperview();
    m_plotView = view ? view->copy() : nullptr;
    setNeedsDisplay();
}

void TOLVPrintView::drawRect(const Rect&)
{
    const Rect page = bounds();
    writeLog("(ERROR) TOLVGraphing/TOLVPrintView : " + pageText(page));
    const double plotWidth = roundedToFloat(page.width());
    const double plotHeight = roundedToFloat(page.width() / kPlotAspect);
    if (m_plotView) {
        m_plotView->setFrame({page.x(), page.y(), plotWidth, plotHeight});
        if (m_plotView->superview().get() != this)
            addSubview(m_plotView);
    }
    // The height is that of the rest of the page, the gap not taken off.
    const Rect legendFrame(page.x(), page.y() + plotHeight + kLegendGap, page.width(), page.height() - plotHeight);
    if (!m_legendView)
        m_legendView = TOLVLegendView::initWithEntries(m_entries, legendFrame);
    if (m_legendView->superview().get() != this)
        addSubview(m_legendView);
    m_legendView->setEntries(m_entries);
    m_legendView->setFrame(legendFrame);
    m_legendView->setDataSource(m_plotView);
}

TOLVLegendView::Entries legendEntriesOfGraph(const TOLVGraph& graph)
{
    TOLVLegendView::Entries entries;
    for (const auto& series : graph.graphData())
        entries.push_back({series->name().value_or("Series " + std::to_string(entries.size() + 1)), series->color()});
    return entries;
}

} // namespace TOLVGraphing
