#pragma once

#include "ColorStamp.h"
#include "TOLVGraphing/platform/geometry/AffineTransform.h"
#include "TOLVGraphing/platform/graphics/Path.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace TOLVGraphing::cairo {

enum class StampKind : std::uint8_t { Fill, Stroke };

/// A stamp at its place in the image.
struct PlacedStamp {
    const ColorStamp* stamp = nullptr;
    /// The pixel in the upper left corner of the stamp's range.
    int left = 0;
    int top = 0;
    /// The pixels that painting reads and writes, and those that the outline reaches without covering any of them. Where a clip cuts these, Cairo's coverage may be another in all of the shape. Empty when there is no outline.
    PixelRange reach;
};

/// Remembers what small paths cover, to paint the same path at very many places of an image: Cairo takes some microseconds for the smallest. Cairo rounds points to 256ths of a pixel and paints everything else
/// alike wherever on the image it is, so that its coverage, asked for once, holds for all places whose points have the same 256ths.
///
/// The memory is bounded. One thread at a time may use an object.
class PathStamps {
public:
    /// Places that follow are those of this path, which has to stay meanwhile. It is painted in this colour as the target's settings say: fill rule for fills; line width, ends, corners and the transform, but no dash, for strokes.
    void begin(cairo_t* target, const Path& path, const AffineTransform& toPixels, StampKind kind, const Color& color);
    /// The stamp of the path moved by the place's coordinates, valid until the next call. Nothing where Cairo has to paint: a path that is large or of many points, one of level and
    /// upright lines only, which Cairo paints in another way, one with mitered corners, whose points Cairo rounds by where they are, and one that is not finite or farther than
    /// a million pixels away; all paths under a transform that turns or shears.
    [[nodiscard]] std::optional<PlacedStamp> stampAt(Point place);
    /// The same for the last place that there was a stamp for when the clip, in whole pixels of the image, cuts its reach: what Cairo covers within such a clip. Nothing where painting would write to the right of the clip.
    [[nodiscard]] std::optional<PlacedStamp> clippedStamp(const PixelRange& clip);

private:
    struct Stamp {
        bool isUsable = false;
        ColorStamp colored;
        PixelRange reach;
    };

    template <typename Number>
    struct Hash {
        std::size_t operator()(const std::vector<Number>& numbers) const;
    };

    /// By the points in 256ths of a pixel, counted from the first point's pixel.
    using Shape = std::unordered_map<std::vector<std::int32_t>, Stamp, Hash<std::int32_t>>;

    /// Everything but the points that coverage and colour depend on.
    [[nodiscard]] std::vector<std::uint64_t> description() const;
    /// Puts the points of the path into `m_points`; false when they are too far away.
    [[nodiscard]] bool placePoints(Point place);
    /// The stamp for points, remembered or made now; the clip is counted from the first point's pixel.
    const Stamp& stampFor(const std::vector<std::int32_t>& key, const std::optional<PixelRange>& clip);
    [[nodiscard]] Stamp makeStamp(const std::optional<PixelRange>& clip) const;
    [[nodiscard]] PlacedStamp placed(const Stamp& stamp) const;
    /// The pixels that may be covered, counted from the first point's; nothing when they are too many.
    [[nodiscard]] std::optional<PixelRange> reachOfPoints() const;
    [[nodiscard]] bool hasSlants() const;
    [[nodiscard]] bool hasMiters() const;
    void forgetIfFull();

    std::unordered_map<std::vector<std::uint64_t>, Shape, Hash<std::uint64_t>> m_shapes;
    std::size_t m_bytes = 0;
    // What was begun.
    cairo_t* m_target = nullptr;
    const Path* m_path = nullptr;
    AffineTransform m_toPixels;
    StampKind m_kind = StampKind::Fill;
    std::uint32_t m_color = 0;
    std::vector<std::uint64_t> m_description;
    // Where the path is now: its first point's pixel, and its points counted from there.
    int m_column = 0;
    int m_row = 0;
    std::vector<std::int32_t> m_points;
    std::vector<std::int32_t> m_clippedKey;
    // The last stamp.
    std::vector<std::int32_t> m_knownPoints;
    const Stamp* m_known = nullptr;
};

} // namespace TOLVGraphing::cairo
