#pragma once

#include "TOLVGraphing/platform/geometry/Point.h"

#include <cstddef>
#include <string>
#include <vector>

namespace TOLVGraphing::output {

/// What the comments at the head of a PostScript file say.
struct PostScriptHead {
    /// The page in points.
    Size size;
    std::string title;
    std::string creator;
};

/// The file with its head made the page's own. Cairo states the box of what is painted, so that a figure would lose its margins, rounds it to whole points, and stores the
/// time: the bounding boxes become the page, the exact one is added, title and creator are set, the time goes. Throws OutputError when the file has no such head.
[[nodiscard]] std::vector<std::byte> withPageComments(const std::vector<std::byte>& file, const PostScriptHead& head);

} // namespace TOLVGraphing::output
