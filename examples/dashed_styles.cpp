// Decays of five materials told apart by dash patterns, widths and colours, on a logarithmic level axis.
#include "Picture.h"

#include <TOLVGraphing/axes/ScientificNumberFormatter.h>
#include <TOLVGraphing/axes/TOLVLogarithmicAxis.h>
#include <TOLVGraphing/drawing/TOLVCurveGraphDrawing.h>
#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVMath/TOLVRealVector.h>

#include <cmath>

using namespace TOLVGraphing;

Picture dashedStyles()
{
    std::vector<float> seconds;
    for (int i = 0; i <= 501; ++i)
        seconds.push_back(static_cast<float>(i) * 0.01F);
    const auto x = TOLVRealVector::vectorWithComponents(seconds);

    struct Material {
        const char* name;
        double halfLife;
        std::shared_ptr<TOLVLineStyle> pattern;
        double thickness;
        Color color;
    };
    const auto ownPattern = std::make_shared<TOLVLineStyle>();
    ownPattern->setPatternValues({{12.0F, 3.0F, 2.0F, 3.0F, 2.0F, 3.0F}});
    const Material materials[] = {
        {"solid", 1.6, std::make_shared<TOLVLineStyle>(), 1.0, Color(0.0, 0.45, 0.7)},
        {"dashed", 0.9, TOLVLineStyle::dashedLineStyle(), 1.5, Color(0.84, 0.37, 0.0)},
        {"dash-dot", 0.6, TOLVLineStyle::dashDotLineStyle(), 1.5, Color(0.0, 0.62, 0.45)},
        {"dotted", 0.4, TOLVLineStyle::dottedLineStyle(), 2.0, Color(0.8, 0.47, 0.65)},
        {"a pattern of one's own", 0.28, ownPattern, 1.5, Color(0.0, 0.0, 0.0)},
    };

    const auto graph = TOLVGraph::graph();
    std::vector<LegendEntry> legend;
    for (const Material& material : materials) {
        std::vector<float> counts;
        for (const float t : seconds)
            counts.push_back(static_cast<float>(20000.0 * std::exp2(-static_cast<double>(t) / material.halfLife)));
        const auto style = material.pattern->styleWithColor(material.color);
        style->setThickness(material.thickness);
        graph->addGraphData(TOLVGraphData::graphDataWithX(x, TOLVRealVector::vectorWithComponents(std::move(counts)), style));
        legend.push_back({material.name, style});
    }
    graph->setVerticalAxis(std::make_shared<TOLVLogarithmicAxis>());
    graph->setDrawingStrategy(std::make_shared<TOLVCurveGraphDrawing>());
    graph->zoomXToFixedMin(0.0F, 5.0F);
    graph->zoomYToFixedMin(1.0, 100000.0);
    graph->horizontalAxis()->setLabel("Time (s)");
    graph->verticalAxis()->setLabel("Counts per second");
    graph->verticalAxis()->setTickLabelFormatter(std::make_shared<ScientificNumberFormatter>(graph->verticalAxis()));

    Picture picture{"dashed-styles", {480.0, 320.0}, GraphSheet(graph)};
    picture.sheet.setLegendEntries(legend);
    return picture;
}

int main(int argumentCount, char** arguments)
{
    return writePicture(argumentCount, arguments, dashedStyles);
}
