#include "GraphicsOutput.h"

#include "TOLVGraphing/platform/graphics/CurrentContext.h"
#include "TOLVGraphing/platform/graphics/DrawingContext.h"
#include "TOLVGraphing/platform/text/AttributedString.h"

#include <tests/support/FileSizeLimit.h>

#include <cairo.h>
#include <gtest/gtest.h>
#include <tiffio.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string_view>

using namespace TOLVGraphing;

namespace {

constexpr OutputKind kAllKinds[] = {OutputKind::PDF, OutputKind::PostScript, OutputKind::EPS, OutputKind::SVG, OutputKind::PNG, OutputKind::TIFF};

std::string_view textOf(const std::vector<std::byte>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

bool contains(const std::vector<std::byte>& bytes, std::string_view text)
{
    return textOf(bytes).find(text) != std::string_view::npos;
}

/// A red square at the lower left, a half-transparent green one at its right, and a text.
void squares(DrawingContext& context, const Rect&)
{
    context.fill(Rect{0.0, 0.0, 2.0, 2.0}, Color(1.0, 0.0, 0.0));
    context.fill(Rect{2.0, 0.0, 1.0, 1.0}, Color(0.0, 1.0, 0.0, 0.5));
}

void squaresAndText(DrawingContext& context, const Rect& bounds)
{
    squares(context, bounds);
    context.drawText(AttributedString("Tj µ∞×10⁻³"), {20.0, 10.0});
}

/// The rows of an image from the top, each pixel 0xAARRGGBB, not premultiplied.
struct Picture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint32_t> pixels;

    /// Counted from the lower-left corner.
    [[nodiscard]] std::uint32_t at(std::uint32_t x, std::uint32_t y) const { return pixels.at((height - 1 - y) * width + x); }
};

Picture readPNG(const std::vector<std::byte>& bytes)
{
    std::string_view rest = textOf(bytes);
    const auto read = [](void* closure, unsigned char* data, unsigned int length) {
        auto& from = *static_cast<std::string_view*>(closure);
        if (from.size() < length)
            return CAIRO_STATUS_READ_ERROR;
        std::memcpy(data, from.data(), length);
        from.remove_prefix(length);
        return CAIRO_STATUS_SUCCESS;
    };
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(cairo_image_surface_create_from_png_stream(read, &rest), &cairo_surface_destroy);
    EXPECT_EQ(cairo_surface_status(surface.get()), CAIRO_STATUS_SUCCESS);
    Picture picture;
    picture.width = static_cast<std::uint32_t>(cairo_image_surface_get_width(surface.get()));
    picture.height = static_cast<std::uint32_t>(cairo_image_surface_get_height(surface.get()));
    const bool isOpaque = cairo_image_surface_get_format(surface.get()) == CAIRO_FORMAT_RGB24;
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        for (std::uint32_t x = 0; x < picture.width; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, cairo_image_surface_get_data(surface.get()) + static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface.get()) + x * 4U, 4);
            const std::uint32_t alpha = isOpaque ? 255U : pixel >> 24U;
            std::uint32_t straight = alpha << 24U;
            for (const unsigned shift : {16U, 8U, 0U})
                straight |= (alpha == 0U ? 0U : (((pixel >> shift) & 255U) * 255U + alpha / 2U) / alpha) << shift;
            picture.pixels.push_back(straight);
        }
    }
    return picture;
}

/// The number in a PNG chunk's first bytes, 0 when there is no such chunk.
std::uint32_t firstNumberOfChunk(const std::vector<std::byte>& png, const char* name)
{
    const std::size_t place = textOf(png).find(name);
    if (place == std::string_view::npos)
        return 0;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8U | std::to_integer<std::uint32_t>(png[place + 4 + i]);
    return number;
}

/// A file in the temporary folder that goes with the scope.
class ScratchFile {
public:
    explicit ScratchFile(const std::vector<std::byte>& bytes)
    {
        char name[] = "/tmp/graphics-output-XXXXXX";
        const int descriptor = ::mkstemp(name);
        m_path = name;
        EXPECT_EQ(::write(descriptor, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        ::close(descriptor);
    }
    ~ScratchFile() { ::unlink(m_path.c_str()); }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;

    [[nodiscard]] const char* path() const { return m_path.c_str(); }

private:
    std::string m_path;
};

struct TIFFFile {
    explicit TIFFFile(const std::vector<std::byte>& bytes) : file(bytes), tiff(TIFFOpen(file.path(), "r"), &TIFFClose) {}

    template <typename Number>
    Number field(std::uint32_t tag) const
    {
        Number value{};
        EXPECT_EQ(TIFFGetField(tiff.get(), tag, &value), 1) << tag;
        return value;
    }

    Picture picture() const
    {
        Picture read;
        read.width = field<std::uint32_t>(TIFFTAG_IMAGEWIDTH);
        read.height = field<std::uint32_t>(TIFFTAG_IMAGELENGTH);
        const auto samples = field<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL);
        std::vector<unsigned char> row(static_cast<std::size_t>(TIFFScanlineSize(tiff.get())));
        EXPECT_EQ(row.size(), std::size_t{samples} * read.width);
        for (std::uint32_t y = 0; y < read.height; ++y) {
            EXPECT_EQ(TIFFReadScanline(tiff.get(), row.data(), y, 0), 1);
            for (std::uint32_t x = 0; x < read.width; ++x) {
                const unsigned char* sample = row.data() + std::size_t{samples} * x;
                const std::uint32_t alpha = samples == 4 ? sample[3] : 255U;
                read.pixels.push_back(alpha << 24U | std::uint32_t{sample[0]} << 16U | std::uint32_t{sample[1]} << 8U | sample[2]);
            }
        }
        return read;
    }

    ScratchFile file;
    std::unique_ptr<TIFF, decltype(&TIFFClose)> tiff;
};

OutputSettings settingsFor(double width, double height, double scale = 1.0)
{
    OutputSettings settings;
    settings.size = {width, height};
    settings.scale = scale;
    return settings;
}

std::string errorOf(OutputKind kind, const OutputSettings& settings)
{
    try {
        (void)renderToBytes(kind, settings, squares);
    } catch (const OutputError& error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(GraphicsOutput, suffixesGiveTheKind)
{
    EXPECT_EQ(outputKindForSuffix("a.pdf"), OutputKind::PDF);
    EXPECT_EQ(outputKindForSuffix("/b.d/a.PS"), OutputKind::PostScript);
    EXPECT_EQ(outputKindForSuffix("a.Eps"), OutputKind::EPS);
    EXPECT_EQ(outputKindForSuffix("a.b.svg"), OutputKind::SVG);
    EXPECT_EQ(outputKindForSuffix(".png"), OutputKind::PNG);
    EXPECT_EQ(outputKindForSuffix("a.tif"), OutputKind::TIFF);
    EXPECT_EQ(outputKindForSuffix("a.TIFF"), OutputKind::TIFF);
    for (const char* path : {"", "pdf", "a.pdfx", "a.jpg", "a.pdf/b", "a.", "/dev/stdout"})
        EXPECT_EQ(outputKindForSuffix(path), std::nullopt) << path;
}

TEST(GraphicsOutput, theContextIsTheCurrentOneAndTheBoundsAreThePage)
{
    for (const OutputKind kind : kAllKinds) {
        int calls = 0;
        (void)renderToBytes(kind, settingsFor(30.0, 20.5), [&](DrawingContext& context, const Rect& bounds) {
            ++calls;
            EXPECT_EQ(currentContext(), &context);
            EXPECT_EQ(bounds, (Rect{0.0, 0.0, 30.0, 20.5}));
        });
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(currentContext(), nullptr);
    }
}

TEST(GraphicsOutput, drawingStartsInTheInitialState)
{
    // The background's colour must not be left behind.
    const auto bytes = renderToBytes(OutputKind::SVG, settingsFor(3.0, 2.0), [](DrawingContext& context, const Rect& bounds) { context.fillRect(bounds); });
    EXPECT_TRUE(contains(bytes, "fill=\"#ffffff\"/>\n<path d=\"M0 2L3 2 3 0 0 0Z\" fill=\"#000000\"/>"));
}

TEST(GraphicsOutput, imagesArePixelExact)
{
    const OutputSettings settings = settingsFor(5.0, 4.0, 2.0);
    const Picture png = readPNG(renderToBytes(OutputKind::PNG, settings, squares));
    EXPECT_EQ(png.width, 10U);
    EXPECT_EQ(png.height, 8U);
    for (std::uint32_t y = 0; y < 8; ++y) {
        for (std::uint32_t x = 0; x < 10; ++x) {
            const bool isRed = x < 4 && y < 4;
            const bool isGreen = x >= 4 && x < 6 && y < 2;
            ASSERT_EQ(png.at(x, y), isRed ? 0xFFFF0000U : isGreen ? 0xFF7FFF7FU : 0xFFFFFFFFU) << x << " " << y;
        }
    }
    const Picture tiff = TIFFFile(renderToBytes(OutputKind::TIFF, settings, squares)).picture();
    EXPECT_EQ(tiff.pixels, png.pixels);
}

TEST(GraphicsOutput, withoutBackgroundAlphaIsKept)
{
    OutputSettings settings = settingsFor(4.0, 2.0);
    settings.background.reset();
    const auto png = renderToBytes(OutputKind::PNG, settings, squares);
    // Colour type 6: red, green, blue and alpha.
    EXPECT_EQ(std::to_integer<int>(png[25]), 6);
    const Picture picture = readPNG(png);
    EXPECT_EQ(picture.at(0, 0), 0xFFFF0000U);
    EXPECT_EQ(picture.at(2, 0), 0x8000FF00U);
    EXPECT_EQ(picture.at(3, 1), 0U);
    const TIFFFile tiff(renderToBytes(OutputKind::TIFF, settings, squares));
    EXPECT_EQ(tiff.picture().pixels, picture.pixels);
    std::uint16_t count = 0;
    std::uint16_t* extra = nullptr;
    ASSERT_EQ(TIFFGetField(tiff.tiff.get(), TIFFTAG_EXTRASAMPLES, &count, &extra), 1);
    ASSERT_EQ(count, 1);
    EXPECT_EQ(extra[0], EXTRASAMPLE_UNASSALPHA);
    settings.background = Color(1.0, 1.0, 1.0, 0.5);
    EXPECT_EQ(readPNG(renderToBytes(OutputKind::PNG, settings, squares)).at(3, 1), 0x80FFFFFFU);
    settings.background = Color::whiteColor();
    EXPECT_EQ(std::to_integer<int>(renderToBytes(OutputKind::PNG, settings, squares)[25]), 2);
}

TEST(GraphicsOutput, imageSizesAreRoundedUpFromTheLowerLeftCorner)
{
    const Picture picture = readPNG(renderToBytes(OutputKind::PNG, settingsFor(3.2, 3.4), squares));
    EXPECT_EQ(picture.width, 4U);
    EXPECT_EQ(picture.height, 4U);
    EXPECT_EQ(picture.at(0, 0), 0xFFFF0000U);
    EXPECT_EQ(picture.at(1, 1), 0xFFFF0000U);
    EXPECT_EQ(picture.at(1, 2), 0xFFFFFFFFU);
    EXPECT_EQ(picture.at(3, 3), 0xFFFFFFFFU);
    // 4.35 x 100 is a hair above 435 in doubles.
    EXPECT_EQ(readPNG(renderToBytes(OutputKind::PNG, settingsFor(4.35, 0.01, 100.0), squares)).width, 435U);
}

TEST(GraphicsOutput, imagesStoreTheirResolution)
{
    const auto png = renderToBytes(OutputKind::PNG, settingsFor(4.0, 2.0, 2.0), squares);
    // 144 pixels per inch are 5,669 per metre.
    EXPECT_EQ(firstNumberOfChunk(png, "pHYs"), 5669U);
    const TIFFFile tiff(renderToBytes(OutputKind::TIFF, settingsFor(4.0, 2.0, 1.5), squares));
    EXPECT_EQ(tiff.field<float>(TIFFTAG_XRESOLUTION), 108.0F);
    EXPECT_EQ(tiff.field<float>(TIFFTAG_YRESOLUTION), 108.0F);
    EXPECT_EQ(tiff.field<std::uint16_t>(TIFFTAG_RESOLUTIONUNIT), RESUNIT_INCH);
    EXPECT_EQ(tiff.field<std::uint16_t>(TIFFTAG_COMPRESSION), COMPRESSION_ADOBE_DEFLATE);
    EXPECT_EQ(tiff.field<std::uint16_t>(TIFFTAG_PREDICTOR), PREDICTOR_HORIZONTAL);
    EXPECT_EQ(tiff.field<std::uint16_t>(TIFFTAG_SAMPLESPERPIXEL), 3);
    EXPECT_EQ(tiff.field<std::uint16_t>(TIFFTAG_PHOTOMETRIC), PHOTOMETRIC_RGB);
}

TEST(GraphicsOutput, tiffOfEverySizeReadsBack)
{
    for (const Size size : {Size{1.0, 1.0}, Size{1.0, 700.0}, Size{701.0, 3.0}, Size{333.0, 1111.0}}) {
        OutputSettings settings = settingsFor(size.width, size.height);
        for (const bool isOpaque : {true, false}) {
            if (!isOpaque)
                settings.background.reset();
            const TIFFFile tiff(renderToBytes(OutputKind::TIFF, settings, squaresAndText));
            EXPECT_EQ(tiff.picture().pixels, readPNG(renderToBytes(OutputKind::PNG, settings, squaresAndText)).pixels) << toString(size);
            const auto rows = tiff.field<std::uint32_t>(TIFFTAG_ROWSPERSTRIP);
            EXPECT_LE(rows * settings.size.width * 4.0, 400000.0);
        }
    }
}

TEST(GraphicsOutput, pdfHasThePageAndTheTitleButNoTime)
{
    OutputSettings settings = settingsFor(320.0, 210.3);
    settings.title = "Level";
    const auto bytes = renderToBytes(OutputKind::PDF, settings, squaresAndText);
    EXPECT_TRUE(textOf(bytes).starts_with("%PDF-1."));
    EXPECT_TRUE(textOf(bytes).ends_with("%%EOF\n"));
    EXPECT_TRUE(contains(bytes, "/MediaBox [ 0 0 320 210.3"));
    EXPECT_TRUE(contains(bytes, "/Title (Level)"));
    EXPECT_TRUE(contains(bytes, "/Creator (TOLVGraphing)"));
    EXPECT_FALSE(contains(bytes, "CreationDate"));
    EXPECT_FALSE(contains(bytes, "/Subtype /Image"));
}

TEST(GraphicsOutput, postScriptStatesThePage)
{
    OutputSettings settings = settingsFor(320.0, 210.25);
    settings.title = "Level (µ)\n%%EOF";
    settings.background.reset();
    for (const OutputKind kind : {OutputKind::PostScript, OutputKind::EPS}) {
        const auto bytes = renderToBytes(kind, settings, squaresAndText);
        EXPECT_TRUE(textOf(bytes).starts_with(kind == OutputKind::EPS ? "%!PS-Adobe-3.0 EPSF-3.0\n" : "%!PS-Adobe-3.0\n"));
        EXPECT_TRUE(contains(bytes, "\n%%BoundingBox: 0 0 320 211\n%%HiResBoundingBox: 0 0 320 210.25\n"));
        EXPECT_TRUE(contains(bytes, "\n%%PageBoundingBox: 0 0 320 211\n"));
        EXPECT_TRUE(contains(bytes, "\n%%Creator: (TOLVGraphing)\n%%Title: (Level \\(?\\)?%%EOF)\n"));
        EXPECT_TRUE(contains(bytes, "\n%%Pages: 1\n"));
        EXPECT_FALSE(contains(bytes, "CreationDate"));
        EXPECT_TRUE(textOf(bytes).ends_with("%%EOF\n"));
        // Translucency would come as a bitmap of the page.
        EXPECT_FALSE(contains(bytes, "/ImageType"));
    }
}

TEST(GraphicsOutput, svgIsTheContextsDocument)
{
    OutputSettings settings = settingsFor(4.0, 2.0);
    settings.title = "a & b";
    const auto bytes = renderToBytes(OutputKind::SVG, settings, squares);
    EXPECT_EQ(textOf(bytes),
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<svg xmlns=\"http://www.w3.org/2000/svg\" version=\"1.1\" width=\"4pt\" height=\"2pt\" viewBox=\"0 0 4 2\">\n"
        "<title>a &amp; b</title>\n"
        "<desc>TOLVGraphing</desc>\n"
        "<path d=\"M0 2L4 2 4 0 0 0Z\" fill=\"#ffffff\"/>\n"
        "<path d=\"M0 2L2 2 2 0 0 0Z\" fill=\"#ff0000\"/>\n"
        "<path d=\"M2 2L3 2 3 1 2 1Z\" fill=\"#00ff00\" fill-opacity=\"0.5\"/>\n"
        "</svg>\n");
}

TEST(GraphicsOutput, theSameDrawingGivesTheSameBytes)
{
    OutputSettings settings = settingsFor(120.0, 60.0);
    settings.title = "µ∞ \xFF";
    for (const OutputKind kind : kAllKinds)
        EXPECT_EQ(renderToBytes(kind, settings, squaresAndText), renderToBytes(kind, settings, squaresAndText)) << toString(kind);
}

TEST(GraphicsOutput, limitsAreNamed)
{
    const double nan = std::nan("");
    EXPECT_EQ(errorOf(OutputKind::PDF, settingsFor(0.0, 5.0)), "cannot make the PDF output: the size is 0 x 5 points; both have to be finite and above 0");
    EXPECT_EQ(errorOf(OutputKind::SVG, settingsFor(5.0, -1.0)), "cannot make the SVG output: the size is 5 x -1 points; both have to be finite and above 0");
    EXPECT_EQ(errorOf(OutputKind::PNG, settingsFor(nan, 5.0)), "cannot make the PNG output: the size is nan x 5 points; both have to be finite and above 0");
    EXPECT_EQ(errorOf(OutputKind::EPS, settingsFor(14401.0, 5.0)), "cannot make the EPS output: a page of 14401 x 5 points was asked for; the limit is 14400 points a side");
    EXPECT_EQ(
        errorOf(OutputKind::PNG, settingsFor(20000.0, 5.0, 2.0)), "cannot make the PNG output: an image side of 40000 pixels was asked for; the limit is 32767 pixels a side");
    EXPECT_EQ(errorOf(OutputKind::TIFF, settingsFor(30000.0, 30000.0)),
        "cannot make the TIFF output: an image of 30000 x 30000 pixels was asked for; the limit is 268435456 pixels in all");
    EXPECT_EQ(
        errorOf(OutputKind::TIFF, settingsFor(1e300, 1.0, 1e300)), "cannot make the TIFF output: an image side of inf pixels was asked for; the limit is 32767 pixels a side");
    EXPECT_EQ(
        errorOf(OutputKind::TIFF, settingsFor(5.0, 5.0, 1e-300)), "cannot make the TIFF output: a scale of 1e-300 pixels per point was asked for; the limit is 1e-06 or more");
    EXPECT_EQ(errorOf(OutputKind::PNG, settingsFor(5.0, 5.0, 1e-6)), "no error");
    for (const double scale : {0.0, -1.0, nan, std::numeric_limits<double>::infinity()})
        EXPECT_NE(errorOf(OutputKind::PNG, settingsFor(5.0, 5.0, scale)).find("has to be finite and above 0"), std::string::npos);
    EXPECT_EQ(errorOf(OutputKind::PDF, settingsFor(14400.0, 14400.0)), "no error");
    EXPECT_EQ(errorOf(OutputKind::PNG, settingsFor(0.001, 0.001)), "no error");
}

TEST(GraphicsOutput, errorsOfTheDrawingPassThrough)
{
    for (const OutputKind kind : kAllKinds) {
        EXPECT_THROW((void)renderToBytes(kind, settingsFor(5.0, 5.0),
                         [](DrawingContext& context, const Rect&) {
                             context.saveState();
                             throw std::logic_error("drawing");
                         }),
            std::logic_error);
        EXPECT_EQ(currentContext(), nullptr);
    }
}

TEST(GraphicsOutput, aPostScriptPageIsWholeOrAnErrorWhateverTheRoomForIt)
{
    OutputSettings settings;
    settings.size = {200.0, 100.0};
    const auto manyLines = [](DrawingContext& context, const Rect&) {
        for (int i = 0; i < 600; ++i)
            context.fill(Rect{static_cast<double>(i % 20) * 10.0, static_cast<double>(i % 9) * 11.0, 3.25, 4.5}, Color(1.0, i / 600.0, 0.0));
    };
    for (const OutputKind kind : {OutputKind::PostScript, OutputKind::EPS}) {
        const auto whole = renderToBytes(kind, settings, manyLines);
        ASSERT_GT(whole.size(), 12000U);
        int failures = 0;
        for (rlim_t room = 500; room < whole.size() + 2000; room += 500) {
            const testing_support::FileSizeLimit limit(room);
            try {
                EXPECT_TRUE(renderToBytes(kind, settings, manyLines) == whole) << room;
            } catch (const OutputError& error) {
                ++failures;
                EXPECT_EQ(error.what(), "cannot make the " + toString(kind) + " output: its page could not be kept in the folder for temporary files, expected room in /tmp");
            }
        }
        EXPECT_GT(failures, 20);
    }
}

TEST(GraphicsOutput, filesHoldTheRenderedBytes)
{
    const OutputSettings settings = settingsFor(30.0, 20.0);
    const ScratchFile file({});
    for (const OutputKind kind : kAllKinds) {
        writeToFile(file.path(), kind, settings, squaresAndText);
        std::ifstream stream(file.path(), std::ios::binary);
        const std::string contents((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
        EXPECT_EQ(contents, textOf(renderToBytes(kind, settings, squaresAndText))) << toString(kind);
    }
}

TEST(GraphicsOutput, aDrawingThatFailsLeavesTheFileAsItWas)
{
    const ScratchFile file({std::byte{'o'}, std::byte{'l'}, std::byte{'d'}});
    EXPECT_THROW(writeToFile(file.path(), OutputKind::PDF, settingsFor(5.0, 5.0), [](DrawingContext&, const Rect&) { throw std::logic_error("drawing"); }), std::logic_error);
    EXPECT_THROW(writeToFile(file.path(), OutputKind::PDF, settingsFor(0.0, 5.0), squares), OutputError);
    std::ifstream stream(file.path());
    EXPECT_EQ(std::string((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>()), "old");
}
