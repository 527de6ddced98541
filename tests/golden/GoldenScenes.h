#pragma once

#include <TOLVGraphing/platform/geometry/Rect.h>

#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace TOLVGraphing::testing_support {

/// A drawing whose result is kept in a file. It makes its graph anew each time, because graphs measure fonts when they are made, and it draws into the current context.
struct GoldenScene {
    std::string name;
    /// In points.
    Size size;
    std::function<void(const Rect& rect)> draw;

    friend std::ostream& operator<<(std::ostream& stream, const GoldenScene& scene) { return stream << scene.name; }
};

/// A curve pair with markers and callouts; dots; line styles with a legend; a logarithmic axis; dates; a sheet too small for its labels. Their data are made of whole numbers, so that they are
/// equal on every machine.
[[nodiscard]] const std::vector<GoldenScene>& goldenScenes();
/// Throws std::runtime_error when there is none of this name.
[[nodiscard]] const GoldenScene& goldenScene(const std::string& name);

/// The path of an expectation file.
[[nodiscard]] std::string goldenPath(const std::string& fileName);
/// The environment variable TOLV_REGENERATE_GOLDEN is 1: expectations are to be written instead of compared.
[[nodiscard]] bool regeneratesGolden();

} // namespace TOLVGraphing::testing_support
