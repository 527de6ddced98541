#include "AxisPositions.h"

#include "../axes/TOLVDateAxis.h"
#include "../axes/TOLVLineAxis.h"
#include "../axes/TOLVLinearAxis.h"
#include "../axes/TOLVLogarithmicAxis.h"
#include "../graph/TOLVGraph.h"
#include "../platform/foundation/Exception.h"

#include <tests/support/Generated.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

namespace TOLVGraphing {
namespace {

/// Positions of its own, whatever its mapping.
class ShiftedAxis final : public TOLVLogarithmicAxis {
public:
    using TOLVLogarithmicAxis::TOLVLogarithmicAxis;
    [[nodiscard]] std::shared_ptr<TOLVAxis> copy() const override
    {
        auto axis = std::make_shared<ShiftedAxis>(graph());
        copyPropertiesInto(*axis);
        return axis;
    }
    [[nodiscard]] float pointForValue(float value, const Rect& inRect) const override { return TOLVLogarithmicAxis::pointForValue(value, inRect) + 1000.0F; }
};

/// Values of all kinds, odd ones first.
std::vector<float> someValues()
{
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    std::vector<float> values
        = {0.0F, -0.0F, -1.0F, kInfinity, -kInfinity, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::max(), std::numeric_limits<float>::min()};
    testing_support::Generated random(2);
    for (int i = 0; i < 2000; ++i)
        values.push_back(static_cast<float>(random.number(-5.0, 200.0)));
    return values;
}

TEST(AxisPositions, AreThoseOfTheGraphToTheLastBit)
{
    const std::vector<std::shared_ptr<TOLVAxis>> axes = {std::make_shared<TOLVLinearAxis>(), std::make_shared<TOLVLogarithmicAxis>(), std::make_shared<TOLVDateAxis>(),
        std::make_shared<ShiftedAxis>(), std::make_shared<TOLVLineAxis>(), nullptr};
    const Rect rect(3.0, 5.0, 612.3, 417.9);
    for (const auto& axis : axes) {
        const auto graph = TOLVGraph::graph();
        graph->setMargin({1.5, 20.25, 30.125, 4.0});
        graph->setVerticalAxis(axis);
        graph->zoomYToFixedMin(0.3, 171.7);
        const AxisPositions positions(graph->verticalAxis().get(), graph->dataRectInRect(rect));
        for (const float value : someValues())
            EXPECT_EQ(std::bit_cast<std::uint32_t>(positions.pointForValue(value)), std::bit_cast<std::uint32_t>(graph->YForValue(value, rect))) << value;
    }
}

TEST(AxisPositions, OfAnAxisWithoutPositionsThrow)
{
    const TOLVAxis axis;
    const AxisPositions positions(&axis, {0.0, 0.0, 10.0, 10.0});
    EXPECT_THROW((void)positions.pointForValue(1.0F), UnrecognizedOperation);
}

} // namespace
} // namespace TOLVGraphing
