#pragma once

#include "../platform/geometry/Rect.h"
#include "../platform/graphics/Color.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace TOLVGraphing {

class DrawingContext;

/// Fills many upright rectangles at the cost of the pixels that they cover together: the picture is, bit for bit, that of one fill after the other in the same order.
///
/// Opaque fills of whole pixels (DrawingContext::wholePixelsOfFill) are kept back. Of those that lie on top of one another only what is seen in the end reaches the context, as upright rectangles of whole pixels that do not overlap; a pixel that such
/// a fill covers has the fill's colour whatever was there before, so that this is exact for any colours in any order.
///
/// Of very many translucent fills of whole pixels in one colour it is only counted how many cover a pixel: so many reach the context, as other rectangles, until one more would change no byte (`mostBlends`). They are painted before a fill of another colour comes.
///
/// All other fills, those whose edges cut pixels and those of contexts that do not know, go to the context one by one, after what was kept back before them, because each of them changes the picture.
///
/// The memory is a byte for each pixel of the area and nothing for each fill.
class PixelFills {
public:
    /// For fills inside of `clip` (points), which is the context's clip: what lies farther outside than two pixels may be left out. With fewer fills to come than are worth it, or without whole pixels, all fills pass at once. The context has to
    /// outlive this object and to keep its transform and clip meanwhile.
    PixelFills(DrawingContext& context, const Rect& clip, std::size_t expectedFills);

    /// Fills the rectangle, now or later, with this colour, which has to be the context's fill colour.
    void fill(const Rect& rect, const Color& color);
    /// Paints what was kept back; the context's state is as before afterwards.
    void flush();

    /// The number of translucent fills of a pixel after which one more changes nothing in eight bits to a component, at least; 255 is always enough. With each fill a component goes towards where it stands still by the alpha's part of the distance,
    /// but for two roundings: first by half that at least, and where they could outweigh it by a step of one at least.
    [[nodiscard]] static std::uint8_t mostBlends(double alpha);

private:
    /// The rows of a column that were touched since the last time, `low` up to below `high`.
    struct Rows {
        std::int32_t low = 0;
        std::int32_t high = 0;
    };
    /// Pixels of one colour that are painted as one rectangle.
    struct Run {
        std::int32_t column = 0;
        Rows rows;
        std::uint8_t color = 0;
    };

    [[nodiscard]] std::uint8_t* column(std::int32_t index) { return m_pixels.data() + static_cast<std::size_t>(index) * static_cast<std::size_t>(m_height); }
    std::uint8_t numberOfColor(const Color& color);
    void cover(const Rect& pixels, std::uint8_t color);
    void count(const Rect& pixels);
    [[nodiscard]] bool mayWait(const Color& color) const;
    template <typename Change>
    void change(const Rect& pixels, Change change);
    void flushColors();
    void flushCounts();
    [[nodiscard]] bool areEqualColumns(std::int32_t one, std::int32_t other);
    void paintCounts(std::int32_t firstColumn, std::int32_t endColumn);
    void emptyColumn(std::int32_t columnIndex);
    void collectRuns(std::int32_t columnIndex);
    void joinRuns(std::int32_t columnIndex);
    void paintRun(const Run& run, std::int32_t endColumn);

    DrawingContext& m_context;
    std::size_t m_expectedFills;
    /// The area in pixels; the first pixel's place.
    double m_left = 0.0;
    double m_bottom = 0.0;
    std::int32_t m_width = 0;
    std::int32_t m_height = 0;
    /// For each pixel, column by column, the number of its colour, or of its fills when there is a translucent colour; 0 where nothing was filled.
    std::vector<std::uint8_t> m_pixels;
    std::vector<Rows> m_touched;
    std::int32_t m_firstColumn = 0;
    std::int32_t m_endColumn = 0;
    std::vector<Color> m_colors;
    std::size_t m_lastColor = 0;
    std::optional<Color> m_translucentColor;
    std::uint8_t m_mostBlends = 0;
    /// Those of the column at hand, and those of the columns before it that may go on.
    std::vector<Run> m_runs;
    std::vector<Run> m_open;
    std::vector<Run> m_joined;
};

} // namespace TOLVGraphing
