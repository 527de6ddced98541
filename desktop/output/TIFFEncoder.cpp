#include "PixelRows.h"

#include "../text/ValidUtf8.h"
#include "OutputError.h"

#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace TOLVGraphing::output {

namespace {

/// Strips hold about this many bytes, so that readers need little memory.
constexpr std::size_t kStripBytes = std::size_t{256} * 1024;

/// A growing file in memory, in the form of the functions that libtiff calls.
struct MemoryFile {
    std::vector<std::byte> bytes;
    std::uint64_t position = 0;

    static MemoryFile& of(thandle_t handle) { return *static_cast<MemoryFile*>(handle); }

    static tmsize_t read(thandle_t handle, void* buffer, tmsize_t length)
    {
        MemoryFile& file = of(handle);
        const std::uint64_t available = file.bytes.size() - std::min<std::uint64_t>(file.position, file.bytes.size());
        const auto count = std::min<std::uint64_t>(available, static_cast<std::uint64_t>(length));
        if (count > 0)
            std::memcpy(buffer, file.bytes.data() + file.position, count);
        file.position += count;
        return static_cast<tmsize_t>(count);
    }

    static tmsize_t write(thandle_t handle, void* buffer, tmsize_t length)
    {
        MemoryFile& file = of(handle);
        const auto count = static_cast<std::uint64_t>(length);
        try {
            if (file.position + count > file.bytes.size())
                file.bytes.resize(file.position + count);
        } catch (const std::bad_alloc&) {
            return 0;
        }
        if (count > 0)
            std::memcpy(file.bytes.data() + file.position, buffer, count);
        file.position += count;
        return length;
    }

    static toff_t seek(thandle_t handle, toff_t offset, int origin)
    {
        MemoryFile& file = of(handle);
        if (origin == SEEK_CUR)
            offset += file.position;
        else if (origin == SEEK_END)
            offset += file.bytes.size();
        file.position = offset;
        return offset;
    }

    static int close(thandle_t) { return 0; }
    static toff_t size(thandle_t handle) { return of(handle).bytes.size(); }
    static int map(thandle_t, void**, toff_t*) { return 0; }
    static void unmap(thandle_t, void*, toff_t) {}
};

struct TIFFDeleter {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};

using TIFFPointer = std::unique_ptr<TIFF, TIFFDeleter>;

void setText(TIFF* tiff, std::uint32_t tag, const std::string& value)
{
    if (!value.empty())
        TIFFSetField(tiff, tag, text::validUtf8(value).c_str());
}

void setTags(TIFF* tiff, const PixelRows& image)
{
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, image.width);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, image.height);
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(image.samplesPerPixel()));
    if (!image.isOpaque) {
        std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
        TIFFSetField(tiff, TIFFTAG_EXTRASAMPLES, 1, &alpha);
    }
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(tiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_ADOBE_DEFLATE);
    TIFFSetField(tiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
    const auto rows = static_cast<std::uint32_t>(std::clamp<std::size_t>(kStripBytes / image.bytesPerRow(), 1, image.height));
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows);
    TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    TIFFSetField(tiff, TIFFTAG_XRESOLUTION, image.pixelsPerInch);
    TIFFSetField(tiff, TIFFTAG_YRESOLUTION, image.pixelsPerInch);
    setText(tiff, TIFFTAG_DOCUMENTNAME, image.title);
    setText(tiff, TIFFTAG_SOFTWARE, image.creator);
}

} // namespace

std::vector<std::byte> encodedTIFF(const PixelRows& image)
{
    if (image.width == 0 || image.height == 0)
        throw OutputError("cannot make the TIFF image: it has no pixels");
    MemoryFile file;
    // Little-endian on every machine; no memory mapping.
    TIFFPointer tiff(
        TIFFClientOpen("memory", "wlm", &file, MemoryFile::read, MemoryFile::write, MemoryFile::seek, MemoryFile::close, MemoryFile::size, MemoryFile::map, MemoryFile::unmap));
    if (!tiff)
        throw OutputError("cannot make the TIFF image: out of memory");
    setTags(tiff.get(), image);
    std::vector<unsigned char> row(image.bytesPerRow());
    for (std::uint32_t i = 0; i < image.height; ++i) {
        image.copyRow(i, row.data());
        if (TIFFWriteScanline(tiff.get(), row.data(), i, 0) < 0)
            throw OutputError("cannot make the TIFF image: row " + std::to_string(i) + " could not be compressed or stored");
    }
    if (TIFFFlush(tiff.get()) == 0)
        throw OutputError("cannot make the TIFF image: its directory could not be stored");
    tiff.reset();
    return std::move(file.bytes);
}

} // namespace TOLVGraphing::output
