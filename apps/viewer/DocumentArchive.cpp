#include "DocumentArchive.h"

#include "ArchivedValues.h"
#include "PathText.h"

#include <apps/plotting/OptionRules.h>
#include <apps/plotting/OptionValues.h>
#include <desktop/archive/PropertyListArchive.h>
#include <desktop/input/ReadSettings.h>

#include <TOLVGraphing/graph/TOLVGraph.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <limits>
#include <string_view>
#include <utility>

namespace TOLVGraphing::app {

namespace {

/// The first days of the years 0 and 10000, since 1970.
constexpr double kFirstDay = -719528.0;
constexpr double kLastDay = 2932897.0;
constexpr const char* kDocumentClass = "TOLVGraphDocument";
constexpr const char* kSourceClass = "TOLVDocumentSource";
constexpr const char* kOptionsClass = "TOLVDocumentOptions";
constexpr std::int64_t kVersion = 1;
constexpr std::size_t kMostSources = 256;
constexpr std::size_t kMostMarkers = 10'000;
constexpr double kSmallestSide = 1.0;
constexpr double kSmallestPositive = std::numeric_limits<double>::min();
constexpr std::size_t kColorComponents = 4;
/// Bytes of a text, and of a whole sentence about one, in an error text.
constexpr std::size_t kLongestShown = 120;
constexpr std::size_t kLongestProblem = 500;

// Writing.

std::shared_ptr<ArchiveObject> newObject(const char* className)
{
    auto object = std::make_shared<ArchiveObject>();
    object->className = className;
    return object;
}

void put(ArchiveObject& object, const char* key, ArchiveValue value)
{
    object.values.emplace_back(key, std::move(value));
}

void putIfAny(ArchiveObject& object, const char* key, const std::optional<std::string>& text)
{
    if (text)
        put(object, key, *text);
}

template <typename Values, typename Convert>
void putList(ArchiveObject& object, const char* key, const Values& values, Convert convert)
{
    auto list = std::make_shared<ArchiveArray>();
    for (const auto& value : values)
        list->elements.emplace_back(convert(value));
    put(object, key, std::move(list));
}

template <typename Value>
Value itself(const Value& value)
{
    return value;
}

std::shared_ptr<ArchiveObject> archived(const SourceReference& source)
{
    auto object = newObject(kSourceClass);
    put(*object, "path", textOfPath(source.path));
    if (source.relativePath)
        put(*object, "relativePath", textOfPath(*source.relativePath));
    if (source.stamp) {
        put(*object, "size", static_cast<std::int64_t>(source.stamp->size));
        put(*object, "modified", source.stamp->modified);
    }
    return object;
}

void putColors(ArchiveObject& object, const std::vector<Color>& colors)
{
    std::vector<double> components;
    for (const Color& color : colors) {
        const Color painted = color.clamped();
        components.insert(components.end(), {painted.redComponent(), painted.greenComponent(), painted.blueComponent(), painted.alphaComponent()});
    }
    putList(object, "colors", components, itself<double>);
}

void putRange(ArchiveObject& object, const char* key, const std::optional<RangeText>& range)
{
    if (range)
        putList(object, key, std::array{range->from, range->to}, itself<std::string>);
}

std::shared_ptr<ArchiveObject> archived(const Options& options)
{
    auto object = newObject(kOptionsClass);
    put(*object, "drawing", wordFor(options.drawing));
    put(*object, "xAxis", wordFor(options.xAxis));
    put(*object, "yAxis", wordFor(options.yAxis));
    if (options.xFormat)
        put(*object, "xFormat", wordFor(*options.xFormat));
    if (options.yFormat)
        put(*object, "yFormat", wordFor(*options.yFormat));
    putIfAny(*object, "x", options.x);
    putList(*object, "y", options.y, itself<std::string>);
    putIfAny(*object, "categoryColumn", options.categoryColumn);
    if (options.channels != 1)
        put(*object, "channels", static_cast<std::int64_t>(options.channels));
    if (options.dateOrigin)
        put(*object, "dateOrigin", *options.dateOrigin);
    putRange(*object, "xRange", options.xRange);
    putRange(*object, "yRange", options.yRange);
    putIfAny(*object, "title", options.title);
    putIfAny(*object, "xLabel", options.xLabel);
    putIfAny(*object, "yLabel", options.yLabel);
    putColors(*object, options.colors);
    putList(*object, "patterns", options.patterns, [](LinePattern pattern) { return wordFor(pattern); });
    putList(*object, "thicknesses", options.thicknesses, itself<double>);
    if (options.margin)
        putList(*object, "margin", std::array{options.margin->top, options.margin->left, options.margin->bottom, options.margin->right}, itself<double>);
    put(*object, "legend", options.legend);
    put(*object, "width", options.size.width);
    put(*object, "height", options.size.height);
    put(*object, "scale", options.scale);
    return object;
}

bool canBeStored(const std::shared_ptr<TOLVAxisExtents>& range)
{
    return range && std::isfinite(range->min()) && std::isfinite(range->max()) && range->min() <= range->max();
}

/// A graph of the same axes with what can be read again.
std::shared_ptr<ArchiveObject> archived(const TOLVGraph& graph)
{
    const auto copy = graph.copy();
    auto extents = copy->extents() ? copy->extents() : std::make_shared<TOLVGraphExtents>();
    extents->setX(canBeStored(extents->x()) ? extents->x() : std::make_shared<TOLVAxisExtents>());
    extents->setY(canBeStored(extents->y()) ? extents->y() : std::make_shared<TOLVAxisExtents>());
    copy->setExtents(extents);
    TOLVGraph::Markers markers = graph.markers();
    std::erase_if(markers, [](const auto& marker) { return !std::isfinite(marker->value()); });
    copy->setMarkers(std::move(markers));
    return KeyedArchiver::archivedObject(*copy);
}

// Reading.

/// What is found goes into error texts, and those into windows: a text in a document may be far longer than fits.
std::string shown(std::string_view text, std::size_t longest)
{
    if (text.size() <= longest)
        return std::string(text);
    std::size_t end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return std::string(text.substr(0, end)) + "…";
}

SourceReference sourceFrom(const ArchivedValues& values)
{
    SourceReference source;
    source.path = pathOfText(values.text("path"));
    if (!std::filesystem::path(source.path).is_absolute() || source.path.find('\0') != std::string::npos)
        values.fail("path", "'" + shown(values.text("path"), kLongestShown) + "'", "the absolute path of a file");
    if (const auto text = values.optionalText("relativePath")) {
        source.relativePath = pathOfText(*text);
        if (text->empty() || std::filesystem::path(*source.relativePath).is_absolute() || source.relativePath->find('\0') != std::string::npos)
            values.fail("relativePath", "'" + shown(*text, kLongestShown) + "'", "a path without a slash at its beginning");
    }
    if (values.has("size") || values.has("modified")) {
        const std::int64_t size = values.wholeNumber("size", 0);
        source.stamp = FileStamp{static_cast<std::uint64_t>(size), values.wholeNumber("modified", std::numeric_limits<std::int64_t>::min())};
    }
    return source;
}

std::vector<Color> colorsFrom(const ArchivedValues& values)
{
    const std::vector<double> components = values.numbers("colors", 0.0, 1.0);
    if (components.size() % kColorComponents != 0)
        values.fail("colors", std::to_string(components.size()) + " numbers", "four for each colour");
    std::vector<Color> colors;
    for (std::size_t i = 0; i < components.size(); i += kColorComponents)
        colors.emplace_back(components[i], components[i + 1], components[i + 2], components[i + 3]);
    return colors;
}

std::optional<EdgeInsets> marginFrom(const ArchivedValues& values)
{
    if (!values.has("margin"))
        return std::nullopt;
    const std::vector<double> sides = values.numbers("margin", 0.0, kLargestSide);
    if (sides.size() != 4)
        values.fail("margin", std::to_string(sides.size()) + " numbers", "four, for top, left, bottom and right");
    return EdgeInsets{sides[0], sides[1], sides[2], sides[3]};
}

std::optional<RangeText> rangeFrom(const ArchivedValues& values, const char* key, bool mayBeDates)
{
    if (!values.has(key))
        return std::nullopt;
    const std::vector<std::string> ends = values.texts(key);
    if (ends.size() != 2)
        values.fail(key, std::to_string(ends.size()) + " texts", "two, for the ends of a range");
    for (const std::string& end : ends) {
        if (!end.empty())
            static_cast<void>(parseNumberOrDate(values.wayTo(key), end, mayBeDates ? std::optional(0.0) : std::nullopt));
    }
    return RangeText{ends[0], ends[1]};
}

std::optional<NumberStyle> numberStyleFrom(const ArchivedValues& values, const char* key)
{
    const auto word = values.optionalText(key);
    return word ? std::optional(parseNumberStyle(values.wayTo(key), *word)) : std::nullopt;
}

/// Older documents have none.
std::size_t channelsFrom(const ArchivedValues& values)
{
    const auto count = values.has("channels") ? static_cast<std::uint64_t>(values.wholeNumber("channels", 1)) : 1;
    if (count > input::kMaximumChannelCount)
        values.fail("channels", std::to_string(count), "at most " + std::to_string(input::kMaximumChannelCount));
    return static_cast<std::size_t>(count);
}

Options optionsFrom(const ArchivedValues& values)
{
    Options options;
    options.drawing = parseDrawing(values.wayTo("drawing"), values.text("drawing"));
    options.xAxis = parseXAxis(values.wayTo("xAxis"), values.text("xAxis"));
    options.yAxis = parseYAxis(values.wayTo("yAxis"), values.text("yAxis"));
    if (!canDrawOnAxis(options.drawing, options.xAxis))
        values.fail("drawing", "'" + wordFor(options.drawing) + "'", "one that goes with the x axis '" + wordFor(options.xAxis) + "'");
    options.xFormat = numberStyleFrom(values, "xFormat");
    options.yFormat = numberStyleFrom(values, "yFormat");
    options.x = values.optionalText("x");
    options.y = values.texts("y");
    options.categoryColumn = values.optionalText("categoryColumn");
    options.channels = channelsFrom(values);
    if (values.has("dateOrigin"))
        options.dateOrigin = values.number("dateOrigin", kFirstDay, kLastDay);
    options.xRange = rangeFrom(values, "xRange", true);
    options.yRange = rangeFrom(values, "yRange", false);
    options.title = values.optionalText("title");
    options.xLabel = values.optionalText("xLabel");
    options.yLabel = values.optionalText("yLabel");
    options.colors = colorsFrom(values);
    for (const std::string& word : values.texts("patterns"))
        options.patterns.push_back(parsePattern(values.wayTo("patterns"), word));
    options.thicknesses = values.numbers("thicknesses", kSmallestPositive, kLargestThickness);
    options.margin = marginFrom(values);
    options.legend = values.flag("legend");
    options.size = {values.number("width", kSmallestSide, kLargestSide), values.number("height", kSmallestSide, kLargestSide)};
    options.scale = values.number("scale", kSmallestPositive, kLargestScale);
    return options;
}

void requireRange(const ArchivedValues& document, const std::shared_ptr<TOLVAxisExtents>& range, const char* name)
{
    if (!canBeStored(range))
        document.fail("graph", (range ? "the range " + toString(*range) : std::string("no range")) + " of " + name, "finite ends, the first not greater than the second");
}

/// The axes are drawn before any data are there, so each has to be one that can be drawn.
void requireAxis(const ArchivedValues& document, const std::shared_ptr<TOLVAxis>& axis, std::initializer_list<std::string_view> classes, const char* name)
{
    const std::string found = axis ? axis->archiveClassName() : "none";
    if (std::find(classes.begin(), classes.end(), found) == classes.end())
        document.fail(
            "graph", "an axis of class " + found + " for " + name, "a linear or logarithmic one" + std::string(classes.size() > 2 ? " or one of dates or categories" : ""));
}

std::shared_ptr<TOLVGraph> graphFrom(const ArchivedValues& document)
{
    auto graph = std::dynamic_pointer_cast<TOLVGraph>(KeyedUnarchiver::unarchivedObject(document.anyObject("graph")));
    if (!graph)
        document.fail("graph", "an object of class " + document.anyObject("graph")->className, "one of class TOLVGraph");
    requireAxis(document, graph->horizontalAxis(), {"TOLVLinearAxis", "TOLVLogarithmicAxis", "TOLVBarAxis", "TOLVLineAxis", "TOLVDateAxis"}, "x");
    requireAxis(document, graph->verticalAxis(), {"TOLVLinearAxis", "TOLVLogarithmicAxis"}, "y");
    requireRange(document, graph->extents()->x(), "x");
    requireRange(document, graph->extents()->y(), "y");
    if (graph->countOfMarkers() > kMostMarkers)
        document.fail("graph", std::to_string(graph->countOfMarkers()) + " markers", "at most " + std::to_string(kMostMarkers));
    for (const auto& marker : graph->markers()) {
        if (!marker || !std::isfinite(marker->value()))
            document.fail("graph", "a marker that is no finite number", "numbers");
    }
    return graph;
}

DocumentContents contentsFrom(const std::shared_ptr<ArchiveObject>& root)
{
    if (!root)
        throw ArchiveError("the archive: found nothing, expected an object of class " + std::string(kDocumentClass));
    const ArchivedValues document(root, "", kDocumentClass);
    if (const std::int64_t version = document.wholeNumber("version", 1); version != kVersion)
        document.fail("version", std::to_string(version), std::to_string(kVersion) + ", the version that this program can read");
    DocumentContents contents;
    try {
        for (const ArchivedValues& source : document.objects("sources", kSourceClass, kMostSources))
            contents.sources.push_back(sourceFrom(source));
        contents.options = optionsFrom(document.object("options", kOptionsClass));
    } catch (const UsageError& problem) {
        throw ArchiveError(shown(problem.what(), kLongestProblem));
    }
    contents.graph = graphFrom(document);
    return contents;
}

} // namespace

std::vector<std::byte> documentData(const DocumentContents& contents)
{
    const auto root = newObject(kDocumentClass);
    put(*root, "version", kVersion);
    putList(*root, "sources", contents.sources, [](const SourceReference& source) { return archived(source); });
    put(*root, "options", archived(contents.options));
    put(*root, "graph", archived(*contents.graph));
    // What could not be read again is refused now and not when it is needed.
    static_cast<void>(contentsFrom(root));
    return propertyListData(root);
}

DocumentContents documentContents(std::span<const std::byte> data)
{
    return contentsFrom(archiveObjectFromPropertyList(data));
}

} // namespace TOLVGraphing::app
