#pragma once

#include "Json.h"

#include <TOLVGraphing/data/TOLVAxisExtents.h>
#include <TOLVGraphing/data/TOLVGraphData.h>
#include <TOLVGraphing/data/TOLVLineStyle.h>
#include <TOLVGraphing/platform/geometry/AffineTransform.h>
#include <TOLVGraphing/platform/geometry/EdgeInsets.h>
#include <TOLVGraphing/platform/geometry/Rect.h>
#include <TOLVGraphing/platform/graphics/Color.h>

#include <TOLVMath/TOLVRealVector.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

namespace TOLVGraphing::testing_support {

// The library's values as files of expected values write them: lists of numbers. A list of another length throws JsonError.

/// [x, y].
[[nodiscard]] Point pointOf(const Json& json);
/// [width, height].
[[nodiscard]] Size sizeOf(const Json& json);
/// [x, y, width, height].
[[nodiscard]] Rect rectOf(const Json& json);
/// [top, left, bottom, right].
[[nodiscard]] EdgeInsets insetsOf(const Json& json);
/// [a, b, c, d, tx, ty].
[[nodiscard]] AffineTransform transformOf(const Json& json);
/// [red, green, blue, alpha], or null for no colour.
[[nodiscard]] std::optional<Color> colorOf(const Json& json);
/// [min, max].
[[nodiscard]] std::shared_ptr<TOLVAxisExtents> extentsOf(const Json& json);

[[nodiscard]] std::vector<double> doublesOf(const Json& json);
[[nodiscard]] std::vector<float> floatsOf(const Json& json);
[[nodiscard]] std::vector<std::size_t> indexesOf(const Json& json);
[[nodiscard]] std::vector<Point> pointsOf(const Json& json);
[[nodiscard]] std::vector<Rect> rectsOf(const Json& json);

/// Single-precision numbers as a vector, null as none.
[[nodiscard]] std::shared_ptr<const TOLVRealVector> vectorOf(const Json& json);
/// {x, y}, each a list or null, in a style of the series' own.
[[nodiscard]] std::shared_ptr<TOLVGraphData> seriesOf(const Json& json);
/// Numbers or null.
[[nodiscard]] std::optional<std::vector<float>> patternOf(const Json& json);
/// {patternValues, thickness, color}; other members are not looked at.
[[nodiscard]] std::shared_ptr<TOLVLineStyle> lineStyleOf(const Json& json);

/// The samples of one coordinate; an absent one has none.
[[nodiscard]] std::vector<float> samplesOf(const TOLVGraphData::Samples& samples);

} // namespace TOLVGraphing::testing_support
