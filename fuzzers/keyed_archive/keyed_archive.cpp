#include "../support/ArchiveRoundTrip.h"
#include "../support/FuzzTarget.h"

#include <TOLVGraphing/platform/foundation/KeyedArchive.h>

#include <desktop/archive/PropertyListArchive.h>

#include <memory>
#include <optional>
#include <string_view>

namespace TOLVGraphing::fuzzing {
namespace {

std::optional<std::shared_ptr<ArchiveObject>> objectIn(std::span<const std::byte> input)
{
    try {
        return archiveObjectFromPropertyList(input);
    } catch (const ArchiveError& error) {
        require(!std::string_view(error.what()).empty(), "a refusal says why");
        require(std::string_view(error.what()).size() < 10'000, "a refusal is short enough to be shown");
        return std::nullopt;
    }
}

} // namespace

/// The bytes are a file, binary or XML.
Verdict tryInput(std::span<const std::byte> input)
{
    const auto object = objectIn(input);
    if (!object)
        return Verdict::refused;
    requireRoundTrip(*object);
    if (!*object)
        return Verdict::accepted;
    return madeAndMadeAgain(*object) ? Verdict::accepted : Verdict::refused;
}

} // namespace TOLVGraphing::fuzzing
