#pragma once

#include "../platform/geometry/Point.h"
#include "../platform/geometry/Rect.h"

#include <cstddef>

namespace TOLVGraphing {

class Color;
class DrawingContext;
class TOLVGraph;

/// What draws the marks of a graph's samples.
class SampleMarks {
public:
    virtual ~SampleMarks();

    /// The marks that follow are those of another series of that many samples, some of which may have none.
    virtual void beginSeries(const Color& color, std::size_t sampleCount) = 0;
    virtual void drawMark(Point position) = 0;
    /// The series has no more marks.
    virtual void endSeries() = 0;
};

/// Clips to the graph's data area and has a mark drawn for each sample of each series, in order, at the sample's position rounded to whole points in single precision. The series' colour is the
/// current one, for strokes and fills, and black stands in for none; the state is as before afterwards. Samples without a finite position are passed over.
void drawSampleMarks(DrawingContext& context, const TOLVGraph& graph, const Rect& inRect, SampleMarks& marks);

} // namespace TOLVGraphing
