#include "ImagePixels.h"

#include "ColorStamp.h"
#include "PixelBytes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>

namespace TOLVGraphing::cairo {

namespace {

constexpr int kFixedOne = 256;
constexpr std::uint32_t kOpaque = 255;

struct ClipListDeleter {
    void operator()(cairo_rectangle_list_t* list) const { cairo_rectangle_list_destroy(list); }
};

using ClipListPointer = std::unique_ptr<cairo_rectangle_list_t, ClipListDeleter>;

int floorOfFixed(int fixed)
{
    return fixed >> 8;
}

int ceilingOfFixed(int fixed)
{
    return (fixed + kFixedOne - 1) >> 8;
}

bool isWhole(int fixed)
{
    return (fixed & (kFixedOne - 1)) == 0;
}

/// Pixels in a row or a column that are covered alike.
struct Stretch {
    int begin = 0;
    int end = 0;
    /// The part of each pixel, in 256ths.
    int covered = 0;
};

/// The pixels between two coordinates: the first, those between, which are covered wholly, and the last.
std::array<Stretch, 3> stretchesBetween(int low, int high)
{
    const int first = floorOfFixed(low);
    const int last = floorOfFixed(high - 1);
    if (first == last)
        return {{{first, first + 1, high - low}, {}, {}}};
    return {{{first, first + 1, (first + 1) * kFixedOne - low}, {first + 1, last, kFixedOne}, {last, last + 1, high - last * kFixedOne}}};
}

/// The opacity of a part of a pixel; the area is in 65,536ths. Cairo rounds down, and a whole pixel is 255.
std::uint32_t opacityOfArea(int area)
{
    const auto covered = static_cast<std::uint32_t>(area) >> 8U;
    return covered - (covered >> 8U);
}

void fillPixels(std::uint32_t* pixels, int count, std::uint32_t value)
{
    if (count == 1) {
        *pixels = value;
        return;
    }
    const std::uint32_t byte = value & 255U;
    // White and black, which most backgrounds are, are filled a quarter quicker byte by byte.
    if (value == byte * 0x01010101U)
        std::memset(pixels, static_cast<int>(byte), static_cast<std::size_t>(count) * sizeof *pixels);
    else
        std::fill_n(pixels, count, value);
}

/// What becomes of a pixel: a part of it is kept, in 255ths, and a premultiplied colour added.
struct Blend {
    std::uint32_t added = 0;
    std::uint32_t kept = 0;
    std::uint32_t half = kHalvesDown;

    [[nodiscard]] std::uint32_t of(std::uint32_t pixel) const { return pixelPlus(added, pixelTimes(pixel, kept, half)); }
};

/// An opaque colour on pixels that are covered in part.
Blend partBlend(std::uint32_t color, std::uint32_t opacity)
{
    return {pixelTimes(color, opacity, kHalvesDown), kOpaque - opacity, kHalvesDown};
}

/// Any colour on whole pixels.
Blend wholeBlend(std::uint32_t color)
{
    return {color, kOpaque - (color >> 24U), kHalvesUp};
}

/// `pixels` is the range's first row, counted from the left edge of the image.
void blendRange(unsigned char* pixels, std::ptrdiff_t stride, const PixelRange& range, const Blend& blend)
{
    // Most neighbours on a line are alike: what a pixel becomes is worked out where it differs from the one before.
    std::uint32_t known = 0;
    std::uint32_t blended = blend.of(known);
    for (int y = range.top; y < range.bottom; ++y, pixels += stride) {
        auto* row = reinterpret_cast<std::uint32_t*>(pixels);
        if (blend.kept == 0) {
            fillPixels(row + range.left, range.right - range.left, blend.added);
            continue;
        }
        for (int x = range.left; x < range.right; ++x) {
            if (row[x] != known) {
                known = row[x];
                blended = blend.of(known);
            }
            row[x] = blended;
        }
    }
}

FixedBox limitedTo(const FixedBox& box, const PixelRange& clip)
{
    return {std::max(box.left, clip.left * kFixedOne), std::max(box.top, clip.top * kFixedOne), std::min(box.right, clip.right * kFixedOne),
        std::min(box.bottom, clip.bottom * kFixedOne)};
}

} // namespace

PixelRange intersectionRange(const PixelRange& one, const PixelRange& other)
{
    return {std::max(one.left, other.left), std::max(one.top, other.top), std::min(one.right, other.right), std::min(one.bottom, other.bottom)};
}

bool FixedBox::isWholePixels() const
{
    return isWhole(left) && isWhole(top) && isWhole(right) && isWhole(bottom);
}

PixelRange FixedBox::pixels() const
{
    return {floorOfFixed(left), floorOfFixed(top), ceilingOfFixed(right), ceilingOfFixed(bottom)};
}

int fixedFromPixels(double coordinate)
{
    return static_cast<int>(std::nearbyint(coordinate * kFixedOne));
}

std::optional<PixelRange> clipOfWholePixels(cairo_t* target)
{
    cairo_matrix_t matrix;
    cairo_get_matrix(target, &matrix);
    cairo_identity_matrix(target);
    // Cairo lists rectangles only of a clip that is made of whole pixels.
    const ClipListPointer list(cairo_copy_clip_rectangle_list(target));
    cairo_set_matrix(target, &matrix);
    if (list->status != CAIRO_STATUS_SUCCESS || list->num_rectangles != 1)
        return std::nullopt;
    const cairo_rectangle_t& box = list->rectangles[0];
    return PixelRange{static_cast<int>(box.x), static_cast<int>(box.y), static_cast<int>(box.x + box.width), static_cast<int>(box.y + box.height)};
}

bool ImagePixels::canChange(cairo_surface_t* surface)
{
    if (cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_IMAGE || cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS)
        return false;
    const cairo_format_t format = cairo_image_surface_get_format(surface);
    return (format == CAIRO_FORMAT_RGB24 || format == CAIRO_FORMAT_ARGB32) && cairo_image_surface_get_data(surface);
}

ImagePixels::ImagePixels(cairo_surface_t* surface) : m_surface(surface), m_stride(cairo_image_surface_get_stride(surface))
{
    cairo_surface_flush(m_surface);
    // A surface may have been finished, of which only this tells.
    cairo_surface_mark_dirty(m_surface);
    if (cairo_surface_status(m_surface) == CAIRO_STATUS_SUCCESS)
        m_data = cairo_image_surface_get_data(m_surface);
}

ImagePixels::~ImagePixels()
{
    cairo_surface_mark_dirty(m_surface);
}

void ImagePixels::fillBox(const FixedBox& box, const Color& color, const PixelRange& clip)
{
    const FixedBox visible = limitedTo(box, intersectionRange(clip, bounds()));
    if (visible.left >= visible.right || visible.top >= visible.bottom)
        return;
    const std::uint32_t pixel = pixelOfColor(color);
    if (visible.isWholePixels()) {
        const PixelRange range = visible.pixels();
        blendRange(row(range.top), m_stride, range, wholeBlend(pixel));
        return;
    }
    const auto columns = stretchesBetween(visible.left, visible.right);
    for (const Stretch& rows : stretchesBetween(visible.top, visible.bottom)) {
        for (const Stretch& part : columns) {
            const std::uint32_t opacity = opacityOfArea(part.covered * rows.covered);
            if (opacity > 0)
                blendRange(row(rows.begin), m_stride, {part.begin, rows.begin, part.end, rows.end}, partBlend(pixel, opacity));
        }
    }
}

void ImagePixels::drawMask(const CoverageMask& mask, const Color& color, const PixelRange& clip)
{
    const PixelRange visible = intersectionRange(mask.range, intersectionRange(clip, bounds()));
    const std::uint32_t pixel = pixelOfColor(color);
    for (int y = visible.top; y < visible.bottom; ++y) {
        const std::uint8_t* coverage = mask.coverage + (y - mask.range.top) * mask.stride - mask.range.left;
        auto* pixels = reinterpret_cast<std::uint32_t*>(row(y));
        for (int x = visible.left; x < visible.right; ++x) {
            if (coverage[x] == 0)
                continue;
            const std::uint32_t added = pixelTimes(pixel, coverage[x], kHalvesUp);
            pixels[x] = pixelPlus(added, pixelTimes(pixels[x], kOpaque - (added >> 24U), kHalvesUp));
        }
    }
}

void ImagePixels::drawStamp(const ColorStamp& stamp, int left, int top)
{
    if (m_data && !stamp.range().isEmpty())
        stamp.paint(row(top) + left * static_cast<std::ptrdiff_t>(sizeof(std::uint32_t)), m_stride);
}

unsigned char* ImagePixels::row(int y) const
{
    return m_data + y * m_stride;
}

PixelRange ImagePixels::bounds() const
{
    return m_data ? PixelRange{0, 0, cairo_image_surface_get_width(m_surface), cairo_image_surface_get_height(m_surface)} : PixelRange();
}

} // namespace TOLVGraphing::cairo
