#include "PixelRows.h"

#include "../text/ValidUtf8.h"
#include "OutputError.h"

#include <png.h>

#include <cmath>
#include <cstring>
#include <new>

namespace TOLVGraphing::output {

namespace {

constexpr double kInchesPerMetre = 1.0 / 0.0254;

/// What libpng's callbacks share. They must not throw through libpng: errors are noted and the library is left by its own jump.
struct Encoding {
    std::vector<std::byte> bytes;
    char message[200] = {};
};

void noteError(png_structp png, png_const_charp message)
{
    auto* encoding = static_cast<Encoding*>(png_get_error_ptr(png));
    std::strncpy(encoding->message, message, sizeof encoding->message - 1);
    png_longjmp(png, 1);
}

void ignoreWarning(png_structp, png_const_charp) {}

// libpng gives the type of this function. NOLINTNEXTLINE(readability-non-const-parameter)
void appendBytes(png_structp png, png_bytep data, png_size_t length)
{
    auto* encoding = static_cast<Encoding*>(png_get_io_ptr(png));
    bool hasRoom = true;
    try {
        const auto* first = reinterpret_cast<const std::byte*>(data);
        encoding->bytes.insert(encoding->bytes.end(), first, first + length);
    } catch (const std::bad_alloc&) {
        hasRoom = false;
    }
    if (!hasRoom)
        png_error(png, "out of memory");
}

void flushNothing(png_structp) {}

void setText(png_structp png, png_infop info, const char* keyword, const std::string& value)
{
    if (value.empty())
        return;
    png_text text{};
    text.compression = PNG_ITXT_COMPRESSION_NONE;
    // libpng copies the strings at once.
    // NOLINTBEGIN(cppcoreguidelines-pro-type-const-cast)
    text.key = const_cast<char*>(keyword);
    text.text = const_cast<char*>(value.c_str());
    // NOLINTEND(cppcoreguidelines-pro-type-const-cast)
    text.itxt_length = value.size();
    png_set_text(png, info, &text, 1);
}

/// Everything between creating and destroying the structures, so that the error jump crosses no object with a destructor.
bool encode(png_structp png, png_infop info, const PixelRows& image, unsigned char* row)
{
    if (setjmp(png_jmpbuf(png)) != 0) // NOLINT(cert-err52-cpp): libpng knows no exceptions.
        return false;
    png_set_IHDR(png, info, image.width, image.height, 8, image.isOpaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
        PNG_FILTER_TYPE_DEFAULT);
    const auto perMetre = static_cast<png_uint_32>(std::lround(image.pixelsPerInch * kInchesPerMetre));
    png_set_pHYs(png, info, perMetre, perMetre, PNG_RESOLUTION_METER);
    setText(png, info, "Title", image.title);
    setText(png, info, "Software", image.creator);
    // Graphs are flat areas and thin lines: a row mostly repeats the one above.
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE | PNG_FILTER_UP);
    png_write_info(png, info);
    for (std::uint32_t i = 0; i < image.height; ++i) {
        image.copyRow(i, row);
        png_write_row(png, row);
    }
    png_write_end(png, nullptr);
    return true;
}

} // namespace

std::vector<std::byte> encodedPNG(const PixelRows& image)
{
    Encoding encoding;
    PixelRows prepared = image;
    prepared.title = text::validUtf8(image.title);
    prepared.creator = text::validUtf8(image.creator);
    std::vector<unsigned char> row(image.bytesPerRow());
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &encoding, noteError, ignoreWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        throw OutputError("cannot make the PNG image: out of memory");
    }
    png_set_write_fn(png, &encoding, appendBytes, flushNothing);
    const bool isDone = encode(png, info, prepared, row.data());
    png_destroy_write_struct(&png, &info);
    if (!isDone)
        throw OutputError(std::string("cannot make the PNG image: ") + encoding.message);
    return std::move(encoding.bytes);
}

} // namespace TOLVGraphing::output
