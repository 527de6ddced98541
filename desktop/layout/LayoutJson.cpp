#include "LayoutJson.h"

#include <TOLVGraphing/graph/TOLVGraph.h>
#include <TOLVGraphing/views/GraphSheet.h>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace TOLVGraphing {

namespace {

using Json = nlohmann::ordered_json;

/// Values with no more levels than this are written on one line.
constexpr int kLevelsOnOneLine = 2;
constexpr std::size_t kIndent = 2;

Json jsonOf(const Rect& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

Json jsonOf(const EdgeInsets& insets)
{
    return {{"top", insets.top}, {"left", insets.left}, {"bottom", insets.bottom}, {"right", insets.right}};
}

Json jsonOf(const TextLayout& text)
{
    return {{"text", text.text}, {"rect", jsonOf(text.rect)}};
}

Json jsonOf(const TickLayout& tick)
{
    return {{"value", tick.value}, {"position", tick.position}};
}

Json jsonOf(const LabelLayout& label)
{
    Json json{{"value", label.value}, {"text", label.text}, {"rect", jsonOf(label.rect)}, {"isMajor", label.isMajor}, {"fate", nameOfFate(label.fate)}};
    if (label.collidesWith)
        json["collidesWith"] = *label.collidesWith;
    if (label.badge)
        json["badge"] = jsonOf(*label.badge);
    return json;
}

Json jsonOf(const CalloutPlacement& callout)
{
    Json json{{"text", callout.text}, {"textRect", jsonOf(callout.textRect)}, {"bounds", jsonOf(callout.bounds)}, {"series", callout.series}, {"position", callout.position},
        {"fate", nameOfFate(callout.fate)}};
    if (callout.collidesWith)
        json["collidesWith"] = *callout.collidesWith;
    return json;
}

Json jsonOf(double number)
{
    return number;
}

Json jsonOf(const AxisLayout& axis);

template <typename Value>
Json listOf(const std::vector<Value>& values)
{
    Json list = Json::array();
    for (const Value& value : values)
        list.push_back(jsonOf(value));
    return list;
}

template <typename Value>
Json jsonOrNull(const std::optional<Value>& value)
{
    return value ? jsonOf(*value) : Json();
}

Json jsonOf(const AxisLayout& axis)
{
    Json json{{"kind", axis.kind}, {"range", {axis.min, axis.max}}, {"rect", jsonOf(axis.rect)}, {"tickLabelRect", jsonOf(axis.tickLabelRect)},
        {"labelRect", jsonOf(axis.labelRect)}, {"majorTicks", listOf(axis.majorTicks)}, {"minorTicks", listOf(axis.minorTicks)}, {"drawsMajorLines", axis.drawsMajorLines},
        {"drawsMinorLines", axis.drawsMinorLines}, {"slots", listOf(axis.slotCenters)}, {"labels", listOf(axis.labels)}, {"markerLabels", listOf(axis.markerLabels)},
        {"title", jsonOrNull(axis.title)}};
    if (axis.origin)
        json["origin"] = *axis.origin;
    return json;
}

Json jsonOf(const GraphLayout& layout)
{
    return {{"rect", jsonOf(layout.rect)}, {"dataRect", jsonOf(layout.dataRect)}, {"titleBand", jsonOf(layout.titleBand)}, {"margin", jsonOf(layout.margin)},
        {"padding", jsonOf(layout.padding)}, {"title", jsonOrNull(layout.title)}, {"horizontalAxis", jsonOrNull(layout.horizontalAxis)},
        {"verticalAxis", jsonOrNull(layout.verticalAxis)}, {"callouts", listOf(layout.callouts)}};
}

int levelsOf(const Json& json)
{
    int deepest = 0;
    if (json.is_structured()) {
        for (const Json& element : json)
            deepest = std::max(deepest, levelsOf(element));
        ++deepest;
    }
    return deepest;
}

std::string oneLine(const Json& json)
{
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// One line for each tick, label and rectangle: neither a single line nor a line for each number could be read.
void append(std::string& text, const Json& json, std::size_t depth)
{
    const bool isObject = json.is_object();
    // A list of objects has a line for each, however short they are.
    const bool isListOfObjects = json.is_array() && !json.empty() && json.front().is_object();
    if (json.empty() || (levelsOf(json) <= kLevelsOnOneLine && !isListOfObjects)) {
        text += oneLine(json);
        return;
    }
    text += isObject ? "{\n" : "[\n";
    bool isFirst = true;
    for (const auto& [key, value] : json.items()) {
        text += isFirst ? "" : ",\n";
        text.append((depth + 1) * kIndent, ' ');
        if (isObject)
            text += oneLine(key) + ": ";
        append(text, value, depth + 1);
        isFirst = false;
    }
    text += '\n';
    text.append(depth * kIndent, ' ');
    text += isObject ? '}' : ']';
}

std::string textOf(const Json& json)
{
    std::string text;
    append(text, json, 0);
    return text + '\n';
}

} // namespace

std::string layoutJson(const GraphLayout& layout)
{
    return textOf(jsonOf(layout));
}

std::string layoutJson(GraphSheet& sheet, const Size& size)
{
    sheet.layoutInRect({{}, size});
    return textOf({{"size", {size.width, size.height}}, {"legendRect", sheet.legendRect().isEmpty() ? Json() : jsonOf(sheet.legendRect())},
        {"graph", jsonOf(sheet.graph()->layoutInRect(sheet.graphRect()))}});
}

} // namespace TOLVGraphing
