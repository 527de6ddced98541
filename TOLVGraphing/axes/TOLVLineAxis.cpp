#include "TOLVLineAxis.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/GraphicsStateSaver.h"
#include "../platform/graphics/Path.h"

#include <algorithm>

namespace TOLVGraphing {

namespace {

/// More than any drawing can show; a count that a host has set may be anything.
constexpr std::uint64_t kMostLines = 1'000'000;

} // namespace

std::shared_ptr<TOLVAxis> TOLVLineAxis::copy() const
{
    auto axis = std::make_shared<TOLVLineAxis>(graph());
    copyPropertiesInto(*axis);
    copyTickLabelsInto(*axis);
    return axis;
}

std::shared_ptr<TOLVLineAxis> TOLVLineAxis::initWithCoder(KeyedUnarchiver& coder)
{
    auto axis = std::make_shared<TOLVLineAxis>();
    axis->decodeFlags(coder);
    return axis;
}

void TOLVLineAxis::drawMajorLinesInRect(const Rect& rect) const
{
    drawFrameInRect(rect);
    DrawingContext* context = currentContext();
    if (!context || dataPointCount() == 0)
        return;
    const Rect dataRect = dataRectInRect(rect);
    const std::uint64_t count = std::min(dataPointCount(), kMostLines);
    Path lines;
    for (std::uint64_t i = 0; i < count; ++i) {
        const Point foot{pointForDataAtIndex(i, dataRect) - 0.5, dataRect.y() + 1.0};
        const Point head{foot.x, dataRect.y() + dataRect.height() - 1.0};
        if (!foot.valid() || !head.valid())
            continue;
        lines.moveToPoint(foot);
        lines.addLineToPoint(head);
    }
    const auto owner = graph();
    const GraphicsStateSaver saver(*context);
    if (owner && owner->majorLineStyle())
        owner->majorLineStyle()->set();
    lines.stroke();
}

} // namespace TOLVGraphing
