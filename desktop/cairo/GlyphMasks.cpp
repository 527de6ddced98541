#include "GlyphMasks.h"

#include <pango/pangocairo.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace TOLVGraphing::cairo {

namespace {

constexpr int kPhases = 4;
/// Larger glyphs are rare and cost memory; they are filled.
constexpr double kLargestGlyph = 128.0;
constexpr int kLargestLineWidth = 8192;
constexpr int kLargestLineHeight = 1024;
constexpr std::size_t kMostBytes = std::size_t{8} << 20U;
constexpr std::size_t kMostMasks = 16384;

/// The nearest quarter of a pixel as whole pixels and remaining quarters.
struct Placement {
    int pixel = 0;
    int phase = 0;
};

Placement placementOf(double position)
{
    const double quarters = std::floor(position * kPhases + 0.5);
    const double pixel = std::floor(quarters / kPhases);
    return {static_cast<int>(pixel), static_cast<int>(quarters - pixel * kPhases)};
}

/// Adds a mask's rows to those of a larger one. Glyphs seldom touch; where they do, coverage ends at full.
void addCoverage(const std::uint8_t* from, int width, int height, std::uint8_t* to, std::ptrdiff_t stride)
{
    for (int row = 0; row < height; ++row, from += width, to += stride) {
        for (int column = 0; column < width; ++column)
            to[column] = static_cast<std::uint8_t>(std::min(255, to[column] + from[column]));
    }
}

/// The coverage of the target's path, which is in pixels, inside a box: rows of `width` bytes.
std::vector<std::uint8_t> coverageOfPath(cairo_t* target, int left, int top, int width, int height)
{
    const SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
    {
        const ContextPointer filler(cairo_create(surface.get()));
        const std::unique_ptr<cairo_path_t, decltype(&cairo_path_destroy)> outline(cairo_copy_path(target), &cairo_path_destroy);
        cairo_translate(filler.get(), -left, -top);
        cairo_append_path(filler.get(), outline.get());
        cairo_fill(filler.get());
    }
    cairo_surface_flush(surface.get());
    std::vector<std::uint8_t> coverage(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    const std::uint8_t* row = cairo_image_surface_get_data(surface.get());
    for (int y = 0; y < height && row; ++y, row += cairo_image_surface_get_stride(surface.get()))
        std::copy_n(row, width, coverage.begin() + static_cast<std::ptrdiff_t>(y) * width);
    return coverage;
}

} // namespace

std::size_t GlyphMasks::KeyHash::operator()(const Key& key) const
{
    std::size_t hash = std::hash<PangoFont*>()(key.font);
    const auto mix = [&hash](std::uint64_t value) { hash = (hash ^ value) * 0x9E3779B97F4A7C15U; };
    mix(key.glyph);
    mix(static_cast<std::uint64_t>(key.phaseX) * kPhases + static_cast<std::uint64_t>(key.phaseY));
    for (const double entry : {key.a, key.b, key.c, key.d})
        mix(std::bit_cast<std::uint64_t>(entry) >> 12U);
    return hash ^ (hash >> 29U);
}

std::optional<CoverageMask> GlyphMasks::maskOfLine(PangoLayoutLine* line, const AffineTransform& toPixels)
{
    forgetIfFull();
    if (!place(line, toPixels))
        return std::nullopt;
    if (m_placed.empty())
        return CoverageMask();
    const PixelRange range = placedRange();
    const int width = range.right - range.left;
    const int height = range.bottom - range.top;
    if (width > kLargestLineWidth || height > kLargestLineHeight)
        return std::nullopt;
    const std::ptrdiff_t stride = cairo_format_stride_for_width(CAIRO_FORMAT_A8, width);
    m_coverage.assign(static_cast<std::size_t>(stride) * static_cast<std::size_t>(height), 0);
    for (const PlacedMask& placed : m_placed) {
        const Mask& mask = *placed.mask;
        std::uint8_t* corner = m_coverage.data() + (placed.y + mask.top - range.top) * stride + (placed.x + mask.left - range.left);
        addCoverage(mask.coverage.data(), mask.width, mask.height, corner, stride);
    }
    return CoverageMask{range, m_coverage.data(), stride};
}

bool GlyphMasks::drawLine(cairo_t* target, PangoLayoutLine* line, const AffineTransform& toPixels)
{
    const auto mask = maskOfLine(line, toPixels);
    if (!mask)
        return false;
    if (mask->range.isEmpty())
        return true;
    const PixelRange& range = mask->range;
    const SurfacePointer coverage(
        cairo_image_surface_create_for_data(m_coverage.data(), CAIRO_FORMAT_A8, range.right - range.left, range.bottom - range.top, static_cast<int>(mask->stride)));
    cairo_save(target);
    cairo_identity_matrix(target);
    cairo_mask_surface(target, coverage.get(), range.left, range.top);
    cairo_restore(target);
    return true;
}

PixelRange GlyphMasks::placedRange() const
{
    PixelRange range{std::numeric_limits<int>::max(), std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), std::numeric_limits<int>::min()};
    for (const PlacedMask& placed : m_placed) {
        range.left = std::min(range.left, placed.x + placed.mask->left);
        range.top = std::min(range.top, placed.y + placed.mask->top);
        range.right = std::max(range.right, placed.x + placed.mask->left + placed.mask->width);
        range.bottom = std::max(range.bottom, placed.y + placed.mask->top + placed.mask->height);
    }
    return range;
}

bool GlyphMasks::place(PangoLayoutLine* line, const AffineTransform& toPixels)
{
    m_placed.clear();
    double pen = 0.0;
    for (const GSList* link = line->runs; link; link = link->next) {
        const auto* run = static_cast<const PangoGlyphItem*>(link->data);
        if (run->y_offset != 0 || run->start_x_offset != 0 || run->end_x_offset != 0)
            return false;
        PangoFont* font = run->item->analysis.font;
        for (int i = 0; i < run->glyphs->num_glyphs; ++i) {
            const PangoGlyphInfo& glyph = run->glyphs->glyphs[i];
            const Point place{(pen + glyph.geometry.x_offset) / PANGO_SCALE, static_cast<double>(glyph.geometry.y_offset) / PANGO_SCALE};
            pen += glyph.geometry.width;
            if (glyph.glyph == PANGO_GLYPH_EMPTY)
                continue;
            const Point position = toPixels.apply(place);
            const bool isInReach = std::abs(position.x) < 1e6 && std::abs(position.y) < 1e6;
            if ((glyph.glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0 || !font || !isInReach)
                return false;
            const Placement x = placementOf(position.x);
            const Placement y = placementOf(position.y);
            const Mask& mask = maskFor({font, glyph.glyph, x.phase, y.phase, toPixels.a, toPixels.b, toPixels.c, toPixels.d});
            if (mask.width > static_cast<int>(kLargestGlyph))
                return false;
            if (mask.width > 0)
                m_placed.push_back({&mask, x.pixel, y.pixel});
        }
    }
    return true;
}

const GlyphMasks::Mask& GlyphMasks::maskFor(const Key& key)
{
    if (const auto known = m_masks.find(key); known != m_masks.end())
        return known->second;
    if (!m_fonts.contains(key.font))
        m_fonts.emplace(key.font, text::PangoPointer<PangoFont>(static_cast<PangoFont*>(g_object_ref(key.font))));
    Mask& mask = m_masks[key];
    cairo_scaled_font_t* scaled = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(key.font));
    const SurfacePointer nothing(cairo_image_surface_create(CAIRO_FORMAT_A8, 1, 1));
    const ContextPointer pen(cairo_create(nothing.get()));
    const cairo_matrix_t matrix{key.a, key.b, key.c, key.d, static_cast<double>(key.phaseX) / kPhases, static_cast<double>(key.phaseY) / kPhases};
    cairo_set_matrix(pen.get(), &matrix);
    cairo_set_scaled_font(pen.get(), scaled);
    const cairo_glyph_t glyph{key.glyph, 0.0, 0.0};
    cairo_glyph_path(pen.get(), &glyph, 1);
    cairo_identity_matrix(pen.get());
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    cairo_path_extents(pen.get(), &left, &top, &right, &bottom);
    if (!(right > left) || !(bottom > top))
        return mask;
    mask.left = static_cast<int>(std::floor(left));
    mask.top = static_cast<int>(std::floor(top));
    mask.width = static_cast<int>(std::ceil(right)) - mask.left;
    mask.height = static_cast<int>(std::ceil(bottom)) - mask.top;
    if (std::max(mask.width, mask.height) > static_cast<int>(kLargestGlyph)) {
        mask.width = static_cast<int>(kLargestGlyph) + 1;
        return mask;
    }
    mask.coverage = coverageOfPath(pen.get(), mask.left, mask.top, mask.width, mask.height);
    m_bytes += mask.coverage.size();
    return mask;
}

void GlyphMasks::forgetIfFull()
{
    if (m_masks.size() <= kMostMasks && m_bytes <= kMostBytes)
        return;
    m_masks.clear();
    m_fonts.clear();
    m_bytes = 0;
}

} // namespace TOLVGraphing::cairo
