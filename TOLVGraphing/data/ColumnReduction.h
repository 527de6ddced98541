#pragma once

#include "../platform/geometry/Rect.h"
#include "TOLVCurve.h"

#include <span>

namespace TOLVGraphing {

/// Turns the samples of a series into the vertices of a curve: at most two for each pixel column (one point wide), the smallest and the largest position in their order
/// of occurrence. One pass over the samples in range, nothing allocated per sample.
struct ColumnReduction {
    /// The visible ranges in data units.
    float xMinimum = 0.0F;
    float xMaximum = 0.0F;
    float yMinimum = 0.0F;
    float yMaximum = 0.0F;
    /// Where the ranges are mapped to, in points.
    Rect rect;
    /// Start and end on the rectangle's lower edge.
    bool closed = false;
    bool xIsLog = false;
    bool yIsLog = false;

    /// Adds the vertices to the curve. Samples beyond the shorter vector are left out. The abscissae have to be ascending.
    void reduce(std::span<const float> xs, std::span<const float> ys, TOLVCurve& curve) const;
};

} // namespace TOLVGraphing
