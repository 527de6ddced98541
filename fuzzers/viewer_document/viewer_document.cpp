#include "../support/ArchiveRoundTrip.h"
#include "../support/FuzzTarget.h"

#include <TOLVGraphing/platform/foundation/KeyedArchive.h>

#include <apps/viewer/DocumentArchive.h>

#include <cmath>
#include <optional>
#include <string_view>

namespace TOLVGraphing::fuzzing {
namespace {

std::optional<app::DocumentContents> contentsOf(std::span<const std::byte> input)
{
    try {
        return app::documentContents(input);
    } catch (const ArchiveError& error) {
        require(!std::string_view(error.what()).empty(), "a refusal says why");
        require(std::string_view(error.what()).size() < 10'000, "a refusal is short enough to be shown");
        return std::nullopt;
    }
}

bool isOrdered(const TOLVAxisExtents& range)
{
    return std::isfinite(range.min()) && std::isfinite(range.max()) && range.min() <= range.max();
}

} // namespace

/// The bytes are a file of the viewer. What is read keeps the promises of a document, can be stored, and is the same when it is read again.
Verdict tryInput(std::span<const std::byte> input)
{
    const auto contents = contentsOf(input);
    if (!contents)
        return Verdict::refused;
    require(contents->graph != nullptr, "a document has a graph");
    require(isOrdered(*contents->graph->extents()->x()) && isOrdered(*contents->graph->extents()->y()), "the ranges of a document are finite and in order");
    require(contents->sources.size() <= 256, "a document has at most 256 sources");
    const std::vector<std::byte> data = app::documentData(*contents);
    const app::DocumentContents again = app::documentContents(data);
    require(again.sources == contents->sources && again.options == contents->options, "a document is read again as it was stored");
    require(app::documentData(again) == data, "the same document is stored as the same bytes");
    drawOnNothing(*contents->graph);
    return Verdict::accepted;
}

} // namespace TOLVGraphing::fuzzing
