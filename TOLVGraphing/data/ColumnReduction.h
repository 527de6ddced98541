#pragma once

#include "../platform/geometry/Rect.h"
#include "ReducibleSeries.h"
#include "TOLVCurve.h"

namespace TOLVGraphing {

/// Turns the samples of a series into the vertices of a curve: at most two for each pixel column (one point wide), the smallest and the largest position in their order
/// of occurrence. Nothing is allocated per sample.
///
/// The vertices are defined by one pass over all samples in range. Where the abscissae ascend, both ranges are finite and positions are below 2^22, the same vertices, to the last bit, come from looking only at the columns' edges and at the
/// extremes between them, or at those of their blocks where they are known; the time then depends on the columns and not on the samples.
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

    /// Adds the vertices to the curve. Samples beyond the shorter vector are left out. The first abscissa above the range ends the curve.
    void reduce(const TOLVRealVector& x, const TOLVRealVector& y, TOLVCurve& curve) const;
    /// The same with what is known of the samples.
    void reduce(const ReducibleSeries& series, TOLVCurve& curve) const;
    /// True when the vertices come from the columns' edges and extremes; otherwise each sample in range is mapped, of which there are few or which do not meet the conditions.
    [[nodiscard]] bool goesByColumns(const ReducibleSeries& series) const;
};

} // namespace TOLVGraphing
