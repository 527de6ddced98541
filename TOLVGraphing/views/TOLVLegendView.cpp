#include "TOLVLegendView.h"

#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/text/AttributedString.h"

#include <utility>

namespace TOLVGraphing {

namespace {

constexpr double kFontSize = 10.0;
constexpr double kSwatchSide = 10.0;
constexpr double kSwatchInset = 2.0;
/// The clear space between title and swatch, besides one line height.
constexpr double kTitleGap = 4.0;

} // namespace

TOLVLegendViewDataSource::~TOLVLegendViewDataSource() = default;

TOLVLegendViewDataSource::Entries TOLVLegendViewDataSource::entriesForLegendView(TOLVLegendView&)
{
    return {};
}

std::shared_ptr<TOLVLegendView> TOLVLegendView::initWithEntries(Entries entries, const Rect& frame)
{
    auto view = std::make_shared<TOLVLegendView>(frame);
    view->setEntries(std::move(entries));
    return view;
}

void TOLVLegendView::setEntries(Entries entries)
{
    if (m_entries == entries)
        return;
    m_entries = std::move(entries);
    setNeedsDisplay();
}

void TOLVLegendView::setDataSource(std::weak_ptr<TOLVLegendViewDataSource> dataSource)
{
    const bool isSame = dataSource.lock() == m_dataSource.lock();
    m_dataSource = std::move(dataSource);
    if (!isSame)
        setNeedsDisplay();
}

void TOLVLegendView::drawRect(const Rect& dirtyRect)
{
    DrawingContext* context = currentContext();
    if (!context)
        return;
    const Rect own = bounds();
    const auto attributes = makeTextAttributes(Font{"Helvetica", kFontSize});
    const auto source = dataSource();
    if (source && source->hasEntriesForLegendView())
        m_entries = source->entriesForLegendView(*this);

    std::vector<AttributedString> titles;
    double y = 0.0;
    for (const TOLVLegendEntry& entry : m_entries) {
        titles.emplace_back(entry.title, attributes);
        y = y + titles.back().size().height;
        const Rect square(own.x() + own.width() - kSwatchSide, own.y() + y - kSwatchSide, kSwatchSide, kSwatchSide);
        if (entry.color)
            context->fill(offsetRect(insetRect(square, kSwatchInset, kSwatchInset), 0.0, kSwatchInset), entry.color);
    }
    double titleY = dirtyRect.y();
    for (const AttributedString& title : titles) {
        const Size size = title.size();
        title.drawInRect({dirtyRect.x() + dirtyRect.width() - size.width - kTitleGap - size.height, titleY + kSwatchInset, size.width, size.height});
        titleY = titleY + size.height;
    }
}

} // namespace TOLVGraphing
