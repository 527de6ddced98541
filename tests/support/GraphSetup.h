#pragma once

#include "Json.h"

#include <TOLVGraphing/axes/TOLVAxis.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/graph/TOLVGraph.h>

#include <memory>
#include <string>

namespace TOLVGraphing::testing_support {

/// A class derived from the logarithmic axis, as a host may make one; its copies are of the same class.
class LogarithmicAxisSubclass final : public TOLVLogarithmicAxis {
public:
    using TOLVLogarithmicAxis::TOLVLogarithmicAxis;
    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override;
};

/// A new axis of the kind "linear", "logarithmic" or "logarithmicSubclass"; other kinds throw JsonError.
[[nodiscard]] std::shared_ptr<TOLVAxis> axisOfKind(const std::string& kind);

/// A graph with what the object gives of: x, y (extents), horizontalAxis, verticalAxis (kinds), canZoomX, canZoomY, margin, padding. The rest is as in a new graph.
[[nodiscard]] std::shared_ptr<TOLVGraph> graphOf(const Json& input);

/// A graph and the one of its axes that a test is about. The range of the other axis is unlike every range of a case.
struct AxisSetup {
    std::shared_ptr<TOLVGraph> graph;
    std::shared_ptr<TOLVAxis> axis;
};
[[nodiscard]] AxisSetup axisSetup(const std::string& kind, bool vertical, const std::shared_ptr<const TOLVAxisExtents>& extents);

/// A single-precision text and back: a formatter with it makes texts that tell values apart.
class ExactNumberFormatter final : public NumberFormatter {
public:
    [[nodiscard]] std::optional<std::string> stringFromNumber(double number) const override;
    [[nodiscard]] std::shared_ptr<NumberFormatter> copy() const override;
    /// The number that a text was made from.
    [[nodiscard]] static double numberFromString(const std::string& text);
};

} // namespace TOLVGraphing::testing_support
