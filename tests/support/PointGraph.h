#pragma once

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A graph without margins whose ranges are 0 to 100, so that in a rectangle of 100 by 100 points its values are its points.
class PointGraphTest : public testing::Test {
protected:
    PointGraphTest()
    {
        graph->setMargin({});
        graph->zoomXToFixedMin(0.0F, 100.0F);
        graph->zoomYToFixedMin(0.0, 100.0);
    }

    std::shared_ptr<TOLVGraphData> add(std::vector<float> x, std::vector<float> y, const std::optional<Color>& color = Color(1.0, 0.0, 0.0))
    {
        auto series = TOLVGraphData::graphDataWithX(TOLVRealVector::vectorWithComponents(std::move(x)), TOLVRealVector::vectorWithComponents(std::move(y)), color);
        graph->addGraphData(series);
        return series;
    }

    std::shared_ptr<TOLVGraph> graph = TOLVGraph::graph();
};

} // namespace TOLVGraphing::testing_support
