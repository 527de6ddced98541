#include "GraphicsOutput.h"

#include "AtomicFile.h"
#include "../cairo/CairoContext.h"
#include "../cairo/CairoPointers.h"
#include "../graphics/OpaqueContext.h"
#include "../svg/SVGContext.h"
#include "../text/ValidUtf8.h"
#include "PixelRows.h"
#include "PostScriptComments.h"
#include "TOLVGraphing/platform/graphics/CurrentContext.h"
#include "TOLVGraphing/platform/text/NumberText.h"

#include <cairo-pdf.h>
#include <cairo-ps.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <new>
#include <span>
#include <string_view>
#include <utility>

namespace TOLVGraphing {

namespace {

constexpr double kLargestPage = 14400.0;
constexpr double kLargestImageSide = 32767.0;
/// Below, products of scales come too near to zero.
constexpr double kSmallestScale = 0.000001;
constexpr double kMostPixels = 268435456.0;

/// Takes the bytes that Cairo writes. Cairo's callbacks must not throw.
cairo_status_t appendBytes(void* closure, const unsigned char* data, unsigned int length)
{
    auto& bytes = *static_cast<std::vector<std::byte>*>(closure);
    try {
        const auto* first = reinterpret_cast<const std::byte*>(data);
        bytes.insert(bytes.end(), first, first + length);
    } catch (const std::bad_alloc&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
    return CAIRO_STATUS_SUCCESS;
}

std::string sizeText(double width, double height)
{
    return shortestText(width) + " x " + shortestText(height);
}

[[noreturn]] void failMaking(OutputKind kind, const std::string& reason)
{
    throw OutputError("cannot make the " + toString(kind) + " output: " + reason);
}

/// Cairo collects the pages of PostScript in a file of its own before it hands them over.
[[noreturn]] void failOnTemporaryFile(OutputKind kind)
{
    failMaking(kind, "its page could not be kept in the folder for temporary files, expected room in " P_tmpdir);
}

void requireSuccess(OutputKind kind, cairo_status_t status)
{
    if (status == CAIRO_STATUS_WRITE_ERROR || status == CAIRO_STATUS_TEMP_FILE_ERROR)
        failOnTemporaryFile(kind);
    if (status != CAIRO_STATUS_SUCCESS)
        failMaking(kind, cairo_status_to_string(status));
}

void requirePageSize(OutputKind kind, Size size)
{
    if (!size.valid() || !(size.width > 0.0) || !(size.height > 0.0))
        failMaking(kind, "the size is " + sizeText(size.width, size.height) + " points; both have to be finite and above 0");
    if (!isImage(kind) && (size.width > kLargestPage || size.height > kLargestPage))
        failMaking(kind, "a page of " + sizeText(size.width, size.height) + " points was asked for; the limit is " + shortestText(kLargestPage) + " points a side");
}

/// Paints the background and runs the drawing with the context as the current one.
void draw(DrawingContext& context, const OutputSettings& settings, const OutputDrawing& drawing)
{
    const CurrentContextScope scope(context);
    const Rect bounds{{}, settings.size};
    if (settings.background) {
        context.saveState();
        context.fill(bounds, settings.background);
        context.restoreState();
    }
    drawing(context, bounds);
}

void drawOnSurface(OutputKind kind, cairo_surface_t* surface, double deviceHeight, double unitsPerPoint, const OutputSettings& settings, const OutputDrawing& drawing)
{
    requireSuccess(kind, cairo_surface_status(surface));
    const cairo::ContextPointer target(cairo_create(surface));
    cairo::setUpwardCoordinates(target.get(), deviceHeight, unitsPerPoint);
    {
        cairo::CairoContext context(target.get());
        draw(context, settings, drawing);
    }
    requireSuccess(kind, cairo_status(target.get()));
}

std::vector<std::byte> renderPDF(const OutputSettings& settings, const OutputDrawing& drawing)
{
    std::vector<std::byte> bytes;
    const cairo::SurfacePointer surface(cairo_pdf_surface_create_for_stream(appendBytes, &bytes, settings.size.width, settings.size.height));
    // Without a date the same drawing gives the same bytes.
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE, nullptr);
    if (!settings.title.empty())
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE, text::validUtf8(settings.title).c_str());
    if (!settings.creator.empty())
        cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATOR, text::validUtf8(settings.creator).c_str());
    drawOnSurface(OutputKind::PDF, surface.get(), settings.size.height, 1.0, settings, drawing);
    cairo_surface_finish(surface.get());
    requireSuccess(OutputKind::PDF, cairo_surface_status(surface.get()));
    return bytes;
}

/// Cairo does not notice when the last part of the page is lost on the way.
bool hasWholePage(std::span<const std::byte> bytes)
{
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    return text.find("%%EndPageSetup\n") != std::string_view::npos && text.rfind("\nshowpage\n%%Trailer\n") != std::string_view::npos;
}

std::vector<std::byte> renderPostScript(OutputKind kind, const OutputSettings& settings, const OutputDrawing& drawing)
{
    std::vector<std::byte> bytes;
    // Cairo rounds the height up where it turns y around: with whole points the page's lower-left corner is PostScript's origin.
    const double height = std::ceil(settings.size.height);
    const cairo::SurfacePointer surface(cairo_ps_surface_create_for_stream(appendBytes, &bytes, std::ceil(settings.size.width), height));
    cairo_ps_surface_set_eps(surface.get(), kind == OutputKind::EPS ? 1 : 0);
    OutputSettings opaque = settings;
    const Color page = paint::blendedColor(settings.background.value_or(Color::whiteColor()), Color::whiteColor());
    if (settings.background)
        opaque.background = page;
    drawOnSurface(kind, surface.get(), height, 1.0, opaque, [&](DrawingContext& context, const Rect& bounds) {
        paint::OpaqueContext opaqueContext(context, page);
        const CurrentContextScope scope(opaqueContext);
        drawing(opaqueContext, bounds);
    });
    cairo_surface_finish(surface.get());
    requireSuccess(kind, cairo_surface_status(surface.get()));
    if (!hasWholePage(bytes))
        failOnTemporaryFile(kind);
    return output::withPageComments(bytes, {settings.size, settings.title, settings.creator});
}

std::vector<std::byte> renderSVG(const OutputSettings& settings, const OutputDrawing& drawing)
{
    svg::SVGContext context(settings.size);
    context.setTitle(settings.title);
    context.setDescription(settings.creator);
    draw(context, settings, drawing);
    const std::string document = context.document();
    const auto* first = reinterpret_cast<const std::byte*>(document.data());
    return {first, first + document.size()};
}

struct PixelSize {
    double width;
    double height;
};

double pixels(OutputKind kind, double points, double scale)
{
    // What is a hair above a whole number of pixels is meant to be that number.
    const double count = std::max(1.0, std::ceil(points * scale - 1e-9));
    if (count > kLargestImageSide)
        failMaking(kind, "an image side of " + shortestText(count) + " pixels was asked for; the limit is " + shortestText(kLargestImageSide) + " pixels a side");
    return count;
}

PixelSize pixelSize(OutputKind kind, const OutputSettings& settings)
{
    if (!std::isfinite(settings.scale) || !(settings.scale > 0.0))
        failMaking(kind, "the scale is " + shortestText(settings.scale) + " pixels per point; it has to be finite and above 0");
    if (settings.scale < kSmallestScale)
        failMaking(kind, "a scale of " + shortestText(settings.scale) + " pixels per point was asked for; the limit is " + shortestText(kSmallestScale) + " or more");
    const PixelSize size{pixels(kind, settings.size.width, settings.scale), pixels(kind, settings.size.height, settings.scale)};
    if (size.width * size.height > kMostPixels)
        failMaking(kind, "an image of " + sizeText(size.width, size.height) + " pixels was asked for; the limit is " + shortestText(kMostPixels) + " pixels in all");
    return size;
}

void paintWhole(cairo_surface_t* surface, const Color& color)
{
    const cairo::ContextPointer target(cairo_create(surface));
    cairo_set_source_rgba(target.get(), color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent());
    cairo_paint(target.get());
}

std::vector<std::byte> renderImage(OutputKind kind, const OutputSettings& settings, const OutputDrawing& drawing)
{
    const auto [width, height] = pixelSize(kind, settings);
    const cairo::SurfacePointer surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, static_cast<int>(width), static_cast<int>(height)));
    requireSuccess(kind, cairo_surface_status(surface.get()));
    // A new image is transparent. The background goes over all of it, with the part of a last pixel that the page does not reach.
    const Color background = settings.background.value_or(Color(0.0, 0.0, 0.0, 0.0)).clamped();
    paintWhole(surface.get(), background);
    OutputSettings painted = settings;
    painted.background.reset();
    drawOnSurface(kind, surface.get(), height, settings.scale, painted, drawing);
    cairo_surface_flush(surface.get());
    output::PixelRows image;
    image.data = cairo_image_surface_get_data(surface.get());
    image.stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    image.width = static_cast<std::uint32_t>(width);
    image.height = static_cast<std::uint32_t>(height);
    image.isOpaque = background.alphaComponent() >= 1.0;
    image.pixelsPerInch = 72.0 * settings.scale;
    image.title = settings.title;
    image.creator = settings.creator;
    return kind == OutputKind::PNG ? output::encodedPNG(image) : output::encodedTIFF(image);
}

} // namespace

std::optional<OutputKind> outputKindForSuffix(const std::string& path)
{
    static constexpr std::array<std::pair<std::string_view, OutputKind>, 7> kSuffixes{{
        {".pdf", OutputKind::PDF},
        {".ps", OutputKind::PostScript},
        {".eps", OutputKind::EPS},
        {".svg", OutputKind::SVG},
        {".png", OutputKind::PNG},
        {".tif", OutputKind::TIFF},
        {".tiff", OutputKind::TIFF},
    }};
    const std::size_t dot = path.find_last_of("./");
    if (dot == std::string::npos)
        return std::nullopt;
    std::string suffix = path.substr(dot);
    for (char& character : suffix) {
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    }
    for (const auto& [known, kind] : kSuffixes) {
        if (suffix == known)
            return kind;
    }
    return std::nullopt;
}

std::string toString(OutputKind kind)
{
    switch (kind) {
    case OutputKind::PDF: return "PDF";
    case OutputKind::PostScript: return "PostScript";
    case OutputKind::EPS: return "EPS";
    case OutputKind::SVG: return "SVG";
    case OutputKind::PNG: return "PNG";
    case OutputKind::TIFF: return "TIFF";
    }
    return {};
}

void requirePossibleSize(OutputKind kind, const OutputSettings& settings)
{
    requirePageSize(kind, settings.size);
    if (isImage(kind))
        static_cast<void>(pixelSize(kind, settings));
}

std::vector<std::byte> renderToBytes(OutputKind kind, const OutputSettings& settings, const OutputDrawing& drawing)
{
    requirePageSize(kind, settings.size);
    switch (kind) {
    case OutputKind::PDF: return renderPDF(settings, drawing);
    case OutputKind::PostScript:
    case OutputKind::EPS: return renderPostScript(kind, settings, drawing);
    case OutputKind::SVG: return renderSVG(settings, drawing);
    case OutputKind::PNG:
    case OutputKind::TIFF: return renderImage(kind, settings, drawing);
    }
    return {};
}

void writeToFile(const std::string& path, OutputKind kind, const OutputSettings& settings, const OutputDrawing& drawing)
{
    writeFileAtomically(path, renderToBytes(kind, settings, drawing));
}

} // namespace TOLVGraphing
