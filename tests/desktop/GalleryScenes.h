#pragma once

#include "../golden/GoldenScenes.h"

#include <vector>

namespace TOLVGraphing::testing_support {

/// What the example programs draw, under the names of their functions. Their images are those of the gallery.
[[nodiscard]] const std::vector<GoldenScene>& galleryScenes();

/// The layout of an example's picture as JSON, with the text system in force.
[[nodiscard]] std::string galleryLayout(const std::string& sceneName);

/// Where the gallery's file of a scene is, for example "docs/gallery/grouped-bars.svg".
[[nodiscard]] std::string galleryPath(const std::string& sceneName, const std::string& suffix);

} // namespace TOLVGraphing::testing_support
