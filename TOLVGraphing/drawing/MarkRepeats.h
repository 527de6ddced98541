#pragma once

#include "../platform/geometry/Point.h"
#include "../platform/geometry/Rect.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace TOLVGraphing {

/// Counts how often equal marks of one colour are painted over themselves, to tell which of them change nothing any more.
///
/// What a mark makes of one component of a pixel is a function of what was there before: the more there was, the more there is. Such a function, applied to one of 256 values again and again, goes on in one direction and stands still after 255 steps at
/// most, whatever the colour, its alpha, the coverage and the rounding are. A mark that was painted 255 times with nothing else on its pixels in between therefore changes no byte of a picture when it is painted once more.
///
/// A mark nearby begins all counts around it anew: marks that cover a pixel differently may round it to and fro for ever, so that the order of all of them counts.
class MarkRepeats {
public:
    static constexpr std::uint8_t kMostChanges = 255;
    /// Marks that are farther apart than this in either direction, in points, share no pixels: their own size is less than half of it, and the rest is for pixels that are several points wide.
    static constexpr double kNearby = 24.0;

    /// For marks in the area (points, outwards to whole ones). Marks outside it, and all when it is larger than any picture, are not counted.
    explicit MarkRepeats(const Rect& area);

    /// True when a mark at whole points has to be painted, which it then is.
    [[nodiscard]] bool paints(Point place);

private:
    void forgetNearby(std::size_t column, std::size_t row);

    Rect m_area;
    std::size_t m_width = 0;
    std::size_t m_height = 0;
    std::vector<std::uint8_t> m_counts;
    Point m_last;
};

} // namespace TOLVGraphing
