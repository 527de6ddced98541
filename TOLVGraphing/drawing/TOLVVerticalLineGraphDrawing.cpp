#include "TOLVVerticalLineGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "PixelFills.h"
#include "SampleMarks.h"

#include <optional>

namespace TOLVGraphing {

namespace {

constexpr double kLineWidth = 1.0;

class VerticalLines final : public SampleMarks {
public:
    VerticalLines(DrawingContext& context, const Rect& dataRect) : m_context(context), m_dataRect(dataRect) {}

    void beginSeries(const Color& color, std::size_t sampleCount) override
    {
        m_color = color;
        m_fills.emplace(m_context, m_dataRect, sampleCount);
    }

    void drawMark(Point position) override
    {
        const Rect line = intersectionRect({position.x, m_dataRect.y(), kLineWidth, position.y - m_dataRect.y()}, m_dataRect);
        if (line.height() != 0.0)
            m_fills->fill(line, m_color);
    }

    void endSeries() override { m_fills->flush(); }

private:
    DrawingContext& m_context;
    Rect m_dataRect;
    Color m_color;
    std::optional<PixelFills> m_fills;
};

} // namespace

void TOLVVerticalLineGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!graph || !context)
        return;
    VerticalLines lines(*context, graph->dataRectInRect(inRect));
    drawSampleMarks(*context, *graph, inRect, lines);
}

} // namespace TOLVGraphing
