#pragma once

#include "Options.h"

namespace TOLVGraphing::app {

/// A range of values of an axis, both ends included.
struct Range {
    double from;
    double to;

    friend bool operator==(const Range&, const Range&) = default;
};

/// How values spread along an axis: evenly, or evenly by their logarithms. Categories count as evenly spread. Values on a logarithmic scale are greater than zero, and results stay there: within what
/// a float can hold.
class Scale {
public:
    explicit Scale(AxisKind kind) : m_isLogarithmic(kind == AxisKind::Logarithmic) {}

    [[nodiscard]] bool isLogarithmic() const { return m_isLogarithmic; }
    /// Where a value is, in units that are as long everywhere: the value itself or its decimal logarithm.
    [[nodiscard]] double position(double value) const;
    /// The length of a range in those units.
    [[nodiscard]] double length(Range range) const;
    /// The value at a distance behind another one, in those units; before it where the distance is negative.
    [[nodiscard]] double moved(double value, double distance) const;
    /// The range with more on either side, as parts of its length.
    [[nodiscard]] Range extended(Range range, double before, double behind) const;
    /// The range itself, or where it is empty one of some width with its value in the middle, so that something can be seen.
    [[nodiscard]] Range widenedIfEmpty(Range range) const;

private:
    bool m_isLogarithmic;
};

} // namespace TOLVGraphing::app
