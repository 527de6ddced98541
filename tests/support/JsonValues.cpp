#include "JsonValues.h"

#include <string>

namespace TOLVGraphing::testing_support {

namespace {

const Json& requireLength(const Json& json, std::size_t length)
{
    if (json.size() != length)
        throw JsonError("found a list of " + std::to_string(json.size()) + " where " + std::to_string(length) + " numbers were expected");
    return json;
}

template <typename Value, typename Read>
std::vector<Value> listOf(const Json& json, Read read)
{
    std::vector<Value> values;
    values.reserve(json.size());
    for (const Json& element : json.elements())
        values.push_back(read(element));
    return values;
}

} // namespace

Point pointOf(const Json& json)
{
    requireLength(json, 2);
    return {json[0].number(), json[1].number()};
}

Size sizeOf(const Json& json)
{
    requireLength(json, 2);
    return {json[0].number(), json[1].number()};
}

Rect rectOf(const Json& json)
{
    requireLength(json, 4);
    return {json[0].number(), json[1].number(), json[2].number(), json[3].number()};
}

EdgeInsets insetsOf(const Json& json)
{
    requireLength(json, 4);
    return {json[0].number(), json[1].number(), json[2].number(), json[3].number()};
}

AffineTransform transformOf(const Json& json)
{
    requireLength(json, 6);
    return {json[0].number(), json[1].number(), json[2].number(), json[3].number(), json[4].number(), json[5].number()};
}

std::optional<Color> colorOf(const Json& json)
{
    if (json.isNull())
        return std::nullopt;
    requireLength(json, 4);
    return Color(json[0].number(), json[1].number(), json[2].number(), json[3].number());
}

std::shared_ptr<TOLVAxisExtents> extentsOf(const Json& json)
{
    requireLength(json, 2);
    return TOLVAxisExtents::extentsWithMin(json[0].number(), json[1].number());
}

std::vector<double> doublesOf(const Json& json)
{
    return listOf<double>(json, [](const Json& element) { return element.number(); });
}

std::vector<float> floatsOf(const Json& json)
{
    return listOf<float>(json, [](const Json& element) { return element.singleNumber(); });
}

std::vector<std::size_t> indexesOf(const Json& json)
{
    return listOf<std::size_t>(json, [](const Json& element) { return static_cast<std::size_t>(element.unsignedInteger()); });
}

std::vector<Point> pointsOf(const Json& json)
{
    return listOf<Point>(json, pointOf);
}

std::vector<Rect> rectsOf(const Json& json)
{
    return listOf<Rect>(json, rectOf);
}

std::shared_ptr<const TOLVRealVector> vectorOf(const Json& json)
{
    return json.isNull() ? nullptr : TOLVRealVector::vectorWithComponents(floatsOf(json));
}

std::shared_ptr<TOLVGraphData> seriesOf(const Json& json)
{
    return TOLVGraphData::graphDataWithX(vectorOf(json["x"]), vectorOf(json["y"]), Color::blackColor());
}

std::optional<std::vector<float>> patternOf(const Json& json)
{
    if (json.isNull())
        return std::nullopt;
    return floatsOf(json);
}

std::shared_ptr<TOLVLineStyle> lineStyleOf(const Json& json)
{
    auto style = TOLVLineStyle::solidLineWithColor(colorOf(json["color"]), json["thickness"].number());
    style->setPatternValues(patternOf(json["patternValues"]));
    return style;
}

std::vector<float> samplesOf(const TOLVGraphData::Samples& samples)
{
    if (!samples)
        return {};
    return {samples->components(), samples->components() + samples->length()};
}

} // namespace TOLVGraphing::testing_support
