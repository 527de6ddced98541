#include "GraphSetup.h"

#include "JsonValues.h"

#include <TOLVGraphing/axes/TOLVLinearAxis.h>

#include <array>
#include <charconv>

namespace TOLVGraphing::testing_support {

std::shared_ptr<TOLVAxis> LogarithmicAxisSubclass::copy() const
{
    auto axis = std::make_shared<LogarithmicAxisSubclass>(graph());
    copyPropertiesInto(*axis);
    copyDepthInto(*axis);
    return axis;
}

std::shared_ptr<TOLVAxis> axisOfKind(const std::string& kind)
{
    if (kind == "linear")
        return std::make_shared<TOLVLinearAxis>();
    if (kind == "logarithmic")
        return std::make_shared<TOLVLogarithmicAxis>();
    if (kind == "logarithmicSubclass")
        return std::make_shared<LogarithmicAxisSubclass>();
    throw JsonError("there is no axis kind \"" + kind + "\"");
}

std::shared_ptr<TOLVGraph> graphOf(const Json& input)
{
    auto graph = TOLVGraph::graph();
    if (const Json* kind = input.find("horizontalAxis"))
        graph->setHorizontalAxis(axisOfKind(kind->text()));
    if (const Json* kind = input.find("verticalAxis"))
        graph->setVerticalAxis(axisOfKind(kind->text()));
    if (const Json* x = input.find("x"))
        graph->extents()->setX(extentsOf(*x));
    if (const Json* y = input.find("y"))
        graph->extents()->setY(extentsOf(*y));
    if (const Json* canZoom = input.find("canZoomX"))
        graph->setCanZoomX(canZoom->boolean());
    if (const Json* canZoom = input.find("canZoomY"))
        graph->setCanZoomY(canZoom->boolean());
    if (const Json* margin = input.find("margin"))
        graph->setMargin(insetsOf(*margin));
    if (const Json* padding = input.find("padding"))
        graph->setPadding(insetsOf(*padding));
    return graph;
}

AxisSetup axisSetup(const std::string& kind, bool vertical, const std::shared_ptr<const TOLVAxisExtents>& extents)
{
    auto graph = TOLVGraph::graph();
    const auto other = TOLVAxisExtents::extentsWithMin(-123456.0, -123455.0);
    graph->extents()->setX(vertical ? other : extents);
    graph->extents()->setY(vertical ? extents : other);
    if (vertical)
        graph->setVerticalAxis(axisOfKind(kind));
    else
        graph->setHorizontalAxis(axisOfKind(kind));
    return {graph, vertical ? graph->verticalAxis() : graph->horizontalAxis()};
}

std::optional<std::string> ExactNumberFormatter::stringFromNumber(double number) const
{
    std::array<char, 64> buffer{};
    return std::string(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr);
}

std::shared_ptr<NumberFormatter> ExactNumberFormatter::copy() const
{
    return std::make_shared<ExactNumberFormatter>();
}

double ExactNumberFormatter::numberFromString(const std::string& text)
{
    double number = 0.0;
    const char* end = text.data() + text.size();
    if (std::from_chars(text.data(), end, number).ptr != end)
        throw JsonError("\"" + text + "\" is no number");
    return number;
}

} // namespace TOLVGraphing::testing_support
