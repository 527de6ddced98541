#include "TOLVXGraphDrawing.h"

#include "../graph/TOLVGraph.h"
#include "../platform/graphics/CurrentContext.h"
#include "../platform/graphics/DrawingContext.h"
#include "../platform/graphics/Path.h"
#include "MarkRepeats.h"
#include "SampleMarks.h"

#include <optional>
#include <vector>

namespace TOLVGraphing {

namespace {

/// How far the arms reach from the sample's position along both axes, in points.
constexpr double kArm = 4.0;
constexpr double kLineWidth = 1.0;
/// So many marks take longer than counting them.
constexpr std::size_t kManyMarks = 2048;
/// So many marks are handed over at once.
constexpr std::size_t kMostKept = 4096;
/// Marks farther than this from the data area, in points, touch no pixel of it while pixels are not many points wide.
constexpr double kSurroundings = 100.0;

void addX(Path& path, Point center)
{
    path.moveToX(center.x - kArm, center.y - kArm);
    path.addLineToX(center.x + kArm, center.y + kArm);
    path.moveToX(center.x - kArm, center.y + kArm);
    path.addLineToX(center.x + kArm, center.y - kArm);
}

class XMarks final : public SampleMarks {
public:
    XMarks(DrawingContext& context, const Rect& dataRect) : m_context(context), m_hasRoom(!dataRect.isEmpty()), m_surroundings(insetRect(dataRect, -kSurroundings, -kSurroundings))
    {
    }

    void beginSeries(const Color&, std::size_t sampleCount) override
    {
        m_repeats.reset();
        m_isQuick = false;
        if (sampleCount < kManyMarks || !m_hasRoom)
            return;
        // Once for all marks, and restored with the clip.
        m_context.setLineWidth(kLineWidth);
        // Where marks are painted quickly it takes longer to find those that change nothing.
        m_isQuick = m_context.drawsRepeatsQuickly();
        if (!m_isQuick)
            m_repeats.emplace(m_surroundings);
    }

    void drawMark(Point position) override
    {
        if (m_isQuick)
            keep(position);
        else if (!m_repeats)
            drawByItself(position);
        else if (isNear(position) && m_repeats->paints(position))
            drawOneOfMany(position);
    }

    void endSeries() override { drawKept(); }

private:
    static void drawByItself(Point position)
    {
        Path path;
        path.setLineWidth(kLineWidth);
        addX(path, position);
        path.stroke();
    }

    void keep(Point position)
    {
        if (!isNear(position))
            return;
        m_kept.push_back(position);
        if (m_kept.size() == kMostKept)
            drawKept();
    }

    void drawKept()
    {
        if (m_kept.empty())
            return;
        m_path.removeAllPoints();
        addX(m_path, {});
        m_context.drawStrokedRepeats(m_path, m_kept);
        m_kept.clear();
    }

    void drawOneOfMany(Point position)
    {
        m_path.removeAllPoints();
        addX(m_path, position);
        m_context.drawStrokedPath(m_path);
    }

    [[nodiscard]] bool isNear(Point position) const
    {
        return position.x >= m_surroundings.x() && position.x <= m_surroundings.maxX() && position.y >= m_surroundings.y() && position.y <= m_surroundings.maxY();
    }

    DrawingContext& m_context;
    bool m_hasRoom;
    Rect m_surroundings;
    bool m_isQuick = false;
    std::vector<Point> m_kept;
    /// Nothing for a series of few marks and where marks are quick.
    std::optional<MarkRepeats> m_repeats;
    Path m_path;
};

} // namespace

void TOLVXGraphDrawing::drawGraph(const std::shared_ptr<TOLVGraph>& graph, const Rect& inRect)
{
    DrawingContext* context = currentContext();
    if (!graph || !context)
        return;
    XMarks marks(*context, graph->dataRectInRect(inRect));
    drawSampleMarks(*context, *graph, inRect, marks);
}

} // namespace TOLVGraphing
