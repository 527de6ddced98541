#include "../support/ArchiveRoundTrip.h"
#include "../support/FuzzTarget.h"
#include "../support/InputReader.h"

#include "ArchiveMaker.h"

#include <TOLVGraphing/data/TOLVAxisExtents.h>
#include <TOLVGraphing/data/TOLVMarker.h>
#include <TOLVGraphing/platform/foundation/KeyedArchive.h>

#include <desktop/archive/PropertyListArchive.h>

#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace TOLVGraphing::fuzzing {
namespace {

bool isSame(double a, double b)
{
    return a == b || (a != a && b != b);
}

bool isSame(const std::shared_ptr<TOLVAxisExtents>& range, const std::optional<MadeRange>& chosen)
{
    if (!range || !chosen)
        return !range && !chosen;
    return isSame(range->min(), chosen->min) && isSame(range->max(), chosen->max);
}

/// The graph holds what was put into the archive, which the maker has noted without reading anything.
void requireChosen(const TOLVGraph& graph, const MadeGraph& chosen)
{
    require(graph.countOfMarkers() == chosen.markers.size(), "every marker with a value is read");
    for (std::size_t i = 0; i < chosen.markers.size(); ++i) {
        require(isSame(graph.markers()[i]->value(), chosen.markers[i].value), "a marker has its value");
        require(graph.markers()[i]->axisIndex() == chosen.markers[i].axisIndex, "a marker has its axis");
    }
    require(isSame(graph.extents()->x(), chosen.x) && isSame(graph.extents()->y(), chosen.y), "the ranges are those of the archive");
    const auto className = [](const std::shared_ptr<TOLVAxis>& axis) { return axis ? axis->archiveClassName() : std::string(); };
    require(className(graph.horizontalAxis()) == chosen.horizontalAxis && className(graph.verticalAxis()) == chosen.verticalAxis, "the axes are those of the archive");
}

} // namespace

/// The bytes choose the objects of a graph's archive and how they refer to one another; the archive itself is always a well-formed property list.
Verdict tryInput(std::span<const std::byte> input)
{
    ArchiveMaker maker{InputReader(input)};
    const std::vector<std::byte> data = maker.make();
    std::shared_ptr<ArchiveObject> object;
    try {
        object = archiveObjectFromPropertyList(data);
    } catch (const ArchiveError& error) {
        require(!maker.isSound(), "an archive with nothing wrong in it is read");
        require(!std::string_view(error.what()).empty() && std::string_view(error.what()).size() < 10'000, "a refusal says why and is short enough to be shown");
        return Verdict::refused;
    }
    requireRoundTrip(object);
    const std::shared_ptr<Codable> made = object ? madeAndMadeAgain(object) : nullptr;
    if (!maker.isSound())
        return made ? Verdict::accepted : Verdict::refused;
    const auto graph = std::dynamic_pointer_cast<TOLVGraph>(made);
    require(graph != nullptr, "a graph with nothing wrong in it is made");
    requireChosen(*graph, maker.graph());
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
